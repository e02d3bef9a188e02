#include "engine/platform/xkb/KeyPresser.h"

#include "engine/platform/PlatformLog.h"

KeyPresser::KeyPresser(KeycodeSink &sink)
    : m_sink(sink)
    , m_translator(
          [&sink](quint8 keycode, quint32 keysym, quint32 shifted) { sink.assign(keycode, keysym, shifted); },
          m_held)
{
}

void KeyPresser::sendKey(quint16 virtualKey, bool down)
{
    if (down) {
        press(virtualKey);
    } else {
        release(virtualKey);
    }
}

void KeyPresser::press(quint16 virtualKey)
{
    // A key that is down stays the key that it is, whatever the layout has become.
    const auto pressed = m_pressed.constFind(virtualKey);
    if (pressed != m_pressed.constEnd()) {
        keycodeDown(pressed->keycode);
        return;
    }
    const KeyTranslator::Stroke stroke = m_translator.strokeFor(virtualKey);
    if (stroke.keycode == 0) {
        logUntranslatable(virtualKey);
        return;
    }
    m_pressed.insert(virtualKey, stroke);
    if (stroke.modifiers != 0) {
        holdModifiers(stroke.modifiers);
    }
    keycodeDown(stroke.keycode);
}

void KeyPresser::release(quint16 virtualKey)
{
    const auto pressed = m_pressed.constFind(virtualKey);
    if (pressed != m_pressed.constEnd()) {
        const KeyTranslator::Stroke stroke = *pressed;
        m_pressed.erase(pressed);
        keycodeUp(stroke.keycode);
        letModifiersGo(stroke.modifiers);
        return;
    }
    // What cannot be translated was said when it was pressed, or there is no map yet.
    if (const KeyTranslator::Stroke stroke = m_translator.strokeFor(virtualKey); stroke.keycode != 0) {
        keycodeUp(stroke.keycode);
    }
}

void KeyPresser::keycodeDown(quint8 keycode)
{
    m_held.set(keycode);
    m_sink.sendKeycode(keycode, true);
}

void KeyPresser::keycodeUp(quint8 keycode)
{
    m_sink.sendKeycode(keycode, false);
    m_held.reset(keycode);
}

void KeyPresser::holdModifiers(quint8 modifiers)
{
    for (int bit = 0; bit < 8; ++bit) {
        const quint8 keycode = m_translator.modifierKey(bit);
        HeldModifier &modifier = m_modifiers[size_t(bit)];
        if ((modifiers & (1U << bit)) != 0 && modifier.strokes++ == 0) {
            const bool needed = keycode != 0 && !m_held.test(keycode);
            modifier.keycode = needed ? keycode : quint8(0);
            if (needed) {
                keycodeDown(keycode);
            }
        }
    }
    // Last: the next key that goes down uses the latch up.
    if (modifiers & m_translator.numLockMask()) {
        m_sink.latchModifiers(m_translator.numLockMask());
    }
}

void KeyPresser::letModifiersGo(quint8 modifiers)
{
    for (int bit = 0; bit < 8; ++bit) {
        HeldModifier &modifier = m_modifiers[size_t(bit)];
        if ((modifiers & (1U << bit)) != 0 && --modifier.strokes == 0 && modifier.keycode != 0) {
            keycodeUp(modifier.keycode);
        }
    }
}

void KeyPresser::logUntranslatable(quint16 virtualKey)
{
    // 0 is what an entry holds that no mapping sets.
    if (virtualKey != 0 && !m_logged.contains(virtualKey)) {
        m_logged.insert(virtualKey);
        qCWarning(lcPlatform, "no key of this keyboard layout stands for key code %d", virtualKey);
    }
}
