#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>
#include <QtGlobal>

struct _XDisplay; // NOLINT(bugprone-reserved-identifier): Xlib names it so

/// A focused window of another X client, which records what arrives there: what "the application in the
/// foreground" sees of an injected event.
class KeyWindow
{
    Q_DISABLE_COPY_MOVE(KeyWindow)

public:
    enum class Kind { Key, Button };

    struct Event {
        Kind kind = Kind::Key;
        bool down = false;
        quint32 keysym = 0;   ///< as the client understands it: layout, group and modifiers applied
        QString text;         ///< what would be typed; empty for a release
        uint code = 0;        ///< keycode or number of the button
        uint state = 0;       ///< modifiers and buttons just before the event
        QString name() const; ///< the keysym's name and "down" or "up", for example "Control_L down"
    };

    /// Connects to @p display, shows a window at the top left corner and gives it the focus.
    explicit KeyWindow(const QByteArray &display, int width = 200, int height = 200);
    ~KeyWindow();

    /// True when the window is shown and has the focus.
    bool isReady() const { return m_window != 0; }

    /// Waits until @p count events have arrived or @p timeoutMs is over, and takes what there is. Auto-repeat
    /// of the server is switched off for the window's display.
    QVector<Event> take(int count, int timeoutMs = 2000);

    /// Takes the next event only; a default-made one (keysym 0, code 0) when none comes in time.
    Event next(int timeoutMs = 2000);

    /// Takes everything that the server has sent until now (a round trip makes sure).
    QVector<Event> takeAll();

    /// The events' names in order, for a comparison that reads well when it fails.
    static QStringList names(const QVector<Event> &events);

    /// Gives the window a solid white pointer of 16 by 16 pixels; the window itself is black.
    void useWhitePointer();

    _XDisplay *display() const { return m_display; }

private:
    bool readOne(Event *event);

    _XDisplay *m_display = nullptr;
    unsigned long m_window = 0;
};
