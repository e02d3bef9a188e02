#pragma once

#include "engine/platform/InputInjector.h"
#include "engine/platform/x11/HeldInput.h"
#include "engine/platform/x11/X11Keyboard.h"
#include "engine/platform/xkb/KeyPresser.h"

/// Injects keys and the left button through XTEST.
class X11InputInjector final : public InputInjector, private KeycodeSink
{
    Q_DISABLE_COPY_MOVE(X11InputInjector)

public:
    /// @p held is told, before each press and after each release, what the server holds; it must outlive this
    /// object.
    X11InputInjector(std::shared_ptr<X11Connection> connection, HeldInput &held);

    /// Takes our symbols from the keycodes that were free before.
    ~X11InputInjector() override;

    void sendKey(quint16 virtualKey, bool down) override;
    void sendLeftButton(bool down) override;
    void prepareKeys(const QVector<quint16> &virtualKeys) override;

private:
    void sendKeycode(quint8 keycode, bool down) override;
    void latchModifiers(quint8 modifiers) override;
    void assign(quint8 keycode, quint32 keysym, quint32 shifted) override;
    void takeMap();

    HeldInput &m_held;
    KeyPresser m_presser;
    X11Keyboard m_keyboard;
};
