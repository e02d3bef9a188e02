#pragma once

#include "engine/platform/xkb/KeyTranslator.h"

#include <QHash>
#include <QSet>

#include <array>

/// Where key events go: keycodes as XKB numbers them. One request per call, no logic in it.
class KeycodeSink
{
    Q_DISABLE_COPY_MOVE(KeycodeSink)

public:
    KeycodeSink() = default;
    virtual ~KeycodeSink() = default;

    virtual void sendKeycode(quint8 keycode, bool down) = 0;

    /// Applies modifier bits to the next key only, when it goes down. Asked for NumLock alone.
    virtual void latchModifiers(quint8 modifiers) = 0;

    /// Puts symbols on a keycode, without and with Shift; both 0 empties it. Asked for spare keycodes of the
    /// map only, so a sink that cannot do it leaves those out of its map.
    virtual void assign(quint8 keycode, quint32 keysym, quint32 shifted) = 0;
};

/// Presses and releases keys by virtual-key code on a layout that may change in between: a key that is down
/// is released where it was pressed, and keeps its meaning until then.
class KeyPresser
{
    Q_DISABLE_COPY_MOVE(KeyPresser)

public:
    /// @p sink must outlive this object.
    explicit KeyPresser(KeycodeSink &sink);

    /// Takes over a layout that was read anew.
    void setMap(const KeyboardMap &map) { m_translator.setMap(map); }

    /// Takes over which codes will be pressed from now on.
    void want(const QVector<quint16> &virtualKeys) { m_translator.want(virtualKeys); }

    /// Presses or releases a key. A code that the layout has no key for is logged once and skipped.
    void sendKey(quint16 virtualKey, bool down);

private:
    /// A modifier that strokes need besides their key.
    struct HeldModifier {
        quint8 keycode = 0; // 0: not ours to let go
        int strokes = 0;
    };

    void press(quint16 virtualKey);
    void release(quint16 virtualKey);
    void keycodeDown(quint8 keycode);
    void keycodeUp(quint8 keycode);
    void holdModifiers(quint8 modifiers);
    void letModifiersGo(quint8 modifiers);
    void logUntranslatable(quint16 virtualKey);

    KeycodeSink &m_sink;
    KeyTranslator::Held m_held;
    KeyTranslator m_translator;
    QHash<quint16, KeyTranslator::Stroke> m_pressed; // by virtual-key code
    std::array<HeldModifier, 8> m_modifiers{};       // by modifier bit
    QSet<quint16> m_logged;
};
