#pragma once

#include "engine/platform/FocusedProgram.h"

#include <QSocketNotifier>
#include <QTimer>
#include <QVector>

#include <memory>

struct xcb_connection_t;

/// The program of the window that the window manager says is active. Its name is the window's class.
///
/// On a connection of its own, which is there only while watched and is read when something arrives. The
/// window manager is asked for one kind of event: its own properties change. What other programs' windows say
/// is read within bounds; a window that is gone by then says nothing. The active window is looked at as soon
/// as it changes, but at most once per frame: whoever changes it without end does not keep the program from
/// its work.
class X11FocusedProgram final : public FocusedProgram
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(X11FocusedProgram)

public:
    X11FocusedProgram();
    ~X11FocusedProgram() override;

    bool isTold() const override { return true; }
    void setWatched(bool watched) override;

private:
    struct Closer {
        void operator()(xcb_connection_t *connection) const;
    };
    using Window = quint32;

    QString open();
    void close();
    quint32 atom(const char *name) const;
    void readEvents();
    bool takeEvents() const;
    void look();
    bool tellOf(Window window);
    void tellOfTheOneBefore();
    bool isOwn(Window window) const;
    bool isOfTheDesktop(Window window) const;
    Window activeWindow() const;
    QVector<quint32> ids(Window window, quint32 property, int most) const;
    QByteArray property(Window window, quint32 property, int bits, unsigned words) const;

    std::unique_ptr<xcb_connection_t, Closer> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_rest;          // after a look
    bool m_changed = false; // since the last look, as far as read
    Window m_root = 0;
    Window m_active = 0; // as told last by the window manager
    quint32 m_activeProperty = 0;
    quint32 m_stackProperty = 0;
    quint32 m_processProperty = 0;
    quint32 m_kindProperty = 0;
    QVector<quint32> m_frameKinds;
};
