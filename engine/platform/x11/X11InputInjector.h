#pragma once

#include "engine/platform/InputInjector.h"
#include "engine/platform/x11/HeldInput.h"
#include "engine/platform/x11/KeyTranslator.h"
#include "engine/platform/x11/X11Keyboard.h"

#include <QSet>

/// Injects keys and the left button through XTEST.
class X11InputInjector final : public InputInjector
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
    /// A modifier that strokes need besides their key.
    struct HeldModifier {
        quint8 keycode = 0; // 0: not ours to let go
        int strokes = 0;
    };

    void takeMap();
    bool isPressed(quint16 virtualKey) const;
    void press(quint16 virtualKey);
    void release(quint16 virtualKey);
    void keycodeDown(quint8 keycode);
    void keycodeUp(quint8 keycode);
    void holdModifiers(quint8 modifiers);
    void letModifiersGo(quint8 modifiers);
    void logUntranslatable(quint16 virtualKey);

    HeldInput &m_held;
    KeyTranslator::Held m_heldKeycodes;
    KeyTranslator m_translator;
    X11Keyboard m_keyboard;
    std::array<KeyTranslator::Stroke, KeysymTable::codes>
        m_pressed{};                           // by virtual-key code; keycode 0: not pressed
    std::array<HeldModifier, 8> m_modifiers{}; // by modifier bit
    QSet<quint16> m_logged;
};
