#pragma once

#include <QByteArray>
#include <QPoint>
#include <QVector>
#include <QtGlobal>

struct _XDisplay; // NOLINT(bugprone-reserved-identifier): Xlib names it so

/// Looks at, and plays, the input devices of an X server from outside: what the XTEST devices hold, what the
/// user's own mouse and keyboard do.
class XTestDevices
{
    Q_DISABLE_COPY_MOVE(XTestDevices)

public:
    explicit XTestDevices(const QByteArray &display);
    ~XTestDevices();

    bool isReady() const { return m_display != nullptr; }

    /// The keycodes that the XTEST keyboard holds down, ascending.
    QVector<int> heldKeycodes() const;

    /// True while the XTEST pointer holds its left button.
    bool leftButtonHeld() const;

    /// True when nothing at all is held.
    bool nothingHeld() const { return heldKeycodes().isEmpty() && !leftButtonHeld(); }

    /// Waits until nothing is held; false when @p timeoutMs passed.
    bool waitNothingHeld(int timeoutMs = 2000) const;

    /// Moves the server's own mouse by a distance, as the user's hand would.
    void moveMouseBy(int dx, int dy);

    /// Moves any pointing device, named as the server lists it.
    void moveDeviceBy(const char *device, int dx, int dy);

    /// Adds a second pointer and keyboard to the server, as if another seat were plugged in; their XTEST
    /// devices are named "NAME XTEST pointer" and "NAME XTEST keyboard".
    void addMaster(const char *name);

    /// Moves the pointer through XTEST, as another program would.
    void moveXTestPointerTo(int x, int y);

    /// Puts the pointer somewhere, also onto another monitor, as no device would.
    void warpPointerTo(int x, int y);

    QPoint pointerPosition() const;

    /// Grabs the pointer, as a program with an open menu does, until this object goes.
    bool grabPointer();

    /// Locks or unlocks NumLock.
    void setNumLock(bool on);

    /// Locks a group of the layout (0 is the first).
    void lockGroup(int group);

    /// The first keysym of a keycode, 0 for a keycode without any.
    quint32 keysymAt(int keycode) const;

    /// Puts a symbol on a keycode.
    void assign(int keycode, quint32 keysym);

    /// Puts a symbol on every keycode that carries none, as another program might.
    void occupySpareKeycodes(quint32 keysym);

    /// The keycodes that carry the keysym in any place; for 0 those that carry none at all.
    QVector<int> keycodesOf(quint32 keysym) const;

private:
    unsigned long deviceId(const char *name) const;

    _XDisplay *m_display = nullptr;
};
