#pragma once

#include "engine/platform/x11/X11Connection.h"
#include "engine/platform/xkb/KeyboardMap.h"

#include <QSocketNotifier>
#include <QVector>

#include <functional>
#include <memory>
#include <optional>

/// The X server's keyboard and mouse button as XTEST, XKB and the core protocol offer them. One request per
/// call; what to press is decided elsewhere.
class X11Keyboard
{
    Q_DISABLE_COPY_MOVE(X11Keyboard)

public:
    /// Needs XTEST and XKB on the connection's server. @p changed is called on the GUI thread, from the event
    /// loop or from notice(), whenever what keys type may have changed.
    X11Keyboard(std::shared_ptr<X11Connection> connection, std::function<void()> changed);
    ~X11Keyboard();

    /// Sends one key event on its way.
    void sendKey(quint8 keycode, bool down);
    void sendLeftButton(bool down);

    /// Applies modifier bits to the next key only, when it goes down.
    void latchModifiers(quint8 modifiers);

    /// Puts symbols on a keycode, without and with Shift; both 0 empties it.
    void assign(quint8 keycode, quint32 keysym, quint32 shifted);

    /// A keycode that was free, and the symbol that was put on it.
    struct Borrowed {
        quint8 keycode;
        quint32 keysym;
    };

    /// Empties those keycodes that still carry the symbol, and waits until that is done. Nobody can change
    /// the layout in between.
    void giveBack(const QVector<Borrowed> &borrowed);

    /// Looks for news of the layout that have arrived; no round trip to the server.
    void notice();

    /// Reads the layout in the active group and with NumLock as it is (several round trips). Nothing when
    /// that fails, which the log says.
    std::optional<KeyboardMap> readMap() const;

private:
    void watch();
    bool takeNews();
    void fake(quint8 event, quint8 detail);

    std::shared_ptr<X11Connection> m_connection;
    std::function<void()> m_changed;
    std::unique_ptr<QSocketNotifier> m_notifier;
    unsigned m_device = 0;
    int m_eventBase = 0;
};
