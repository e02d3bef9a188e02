#pragma once

#include <QByteArray>
#include <QPoint>
#include <QtGlobal>

struct _XDisplay;

/// The user at an X server's keyboard and mouse, and at the same time another program there: events through
/// XTEST, and grabs of its own.
class XClient
{
    Q_DISABLE_COPY_MOVE(XClient)

public:
    explicit XClient(const QByteArray &display);
    ~XClient();

    void key(int keycode, bool down);
    void tap(int keycode);
    void moveMouse(const QPoint &pixel);
    void mouseButton(bool down);
    /// One notch.
    void wheel(bool down);

    /// True while another client holds the mouse or the keyboard.
    bool mouseIsTaken();
    bool keyboardIsTaken();

    /// Takes and gives back both.
    bool takeAll();
    void giveBack();

    /// Unmaps a window behind its owner's back, as a window manager does that iconifies it, and maps it
    /// again.
    void unmap(quint64 window);
    void map(quint64 window);

    void lockGroup(int group);
    void setNumLock(bool on);
    void unlockAll();

private:
    void sync();

    _XDisplay *m_display;
    unsigned m_keyboard = 0;
};
