#include "engine/platform/x11/X11InputInjector.h"

#include "engine/platform/PlatformLog.h"

X11InputInjector::X11InputInjector(std::shared_ptr<X11Connection> connection, HeldInput &held)
    : m_held(held)
    , m_translator(
          [this](quint8 keycode, quint32 keysym, quint32 shifted) {
              if (keysym != 0) {
                  m_held.setSpare(keycode, keysym);
              }
              m_keyboard.assign(keycode, keysym, shifted);
              if (keysym == 0) {
                  m_held.setSpare(keycode, 0);
              }
          },
          m_heldKeycodes)
    , m_keyboard(std::move(connection), [this] { takeMap(); })
{
    takeMap();
}

X11InputInjector::~X11InputInjector()
{
    // Not what somebody else has put there since.
    m_translator.want({});
    m_keyboard.notice();
    m_translator.restore();
}

void X11InputInjector::prepareKeys(const QVector<quint16> &virtualKeys)
{
    m_keyboard.notice();
    m_translator.want(virtualKeys);
}

void X11InputInjector::sendKey(quint16 virtualKey, bool down)
{
    if (down) {
        press(virtualKey);
    } else {
        release(virtualKey);
    }
}

void X11InputInjector::takeMap()
{
    const KeyboardMap map = m_keyboard.readMap();
    // What has been thrown out with the old layout needs no tidying up any more.
    for (unsigned keycode = 0; keycode < m_heldKeycodes.size(); ++keycode) {
        const quint32 keysym = m_held.spare(quint8(keycode));
        if (keysym != 0 && !map.types(quint8(keycode), keysym)) {
            m_held.setSpare(quint8(keycode), 0);
        }
    }
    m_translator.setMap(map);
}

bool X11InputInjector::isPressed(quint16 virtualKey) const
{
    return virtualKey < m_pressed.size() && m_pressed[virtualKey].keycode != 0;
}

void X11InputInjector::press(quint16 virtualKey)
{
    m_keyboard.notice();
    // A key that is down stays the key that it is, whatever the layout has become.
    if (isPressed(virtualKey)) {
        keycodeDown(m_pressed[virtualKey].keycode);
        return;
    }
    const KeyTranslator::Stroke stroke = m_translator.strokeFor(virtualKey);
    if (stroke.keycode == 0) {
        logUntranslatable(virtualKey);
        return;
    }
    m_pressed[virtualKey] = stroke;
    if (stroke.modifiers != 0) {
        holdModifiers(stroke.modifiers);
    }
    keycodeDown(stroke.keycode);
}

void X11InputInjector::release(quint16 virtualKey)
{
    if (isPressed(virtualKey)) {
        const KeyTranslator::Stroke stroke = m_pressed[virtualKey];
        m_pressed[virtualKey] = {};
        keycodeUp(stroke.keycode);
        letModifiersGo(stroke.modifiers);
        return;
    }
    const KeyTranslator::Stroke stroke = m_translator.strokeFor(virtualKey);
    if (stroke.keycode == 0) {
        logUntranslatable(virtualKey);
        return;
    }
    keycodeUp(stroke.keycode);
}

void X11InputInjector::keycodeDown(quint8 keycode)
{
    m_heldKeycodes.set(keycode);
    m_held.setKey(keycode, true);
    m_keyboard.sendKey(keycode, true);
}

void X11InputInjector::keycodeUp(quint8 keycode)
{
    m_keyboard.sendKey(keycode, false);
    m_held.setKey(keycode, false);
    m_heldKeycodes.reset(keycode);
}

void X11InputInjector::holdModifiers(quint8 modifiers)
{
    if (modifiers & m_translator.numLockMask()) {
        m_keyboard.latchModifiers(m_translator.numLockMask());
    }
    for (int bit = 0; bit < 8; ++bit) {
        const quint8 keycode = m_translator.modifierKey(bit);
        HeldModifier &modifier = m_modifiers[size_t(bit)];
        if ((modifiers & (1U << bit)) != 0 && modifier.strokes++ == 0) {
            const bool needed = keycode != 0 && !m_heldKeycodes.test(keycode);
            modifier.keycode = needed ? keycode : quint8(0);
            if (needed) {
                keycodeDown(keycode);
            }
        }
    }
}

void X11InputInjector::letModifiersGo(quint8 modifiers)
{
    for (int bit = 0; bit < 8; ++bit) {
        HeldModifier &modifier = m_modifiers[size_t(bit)];
        if ((modifiers & (1U << bit)) != 0 && --modifier.strokes == 0 && modifier.keycode != 0) {
            keycodeUp(modifier.keycode);
        }
    }
}

void X11InputInjector::sendLeftButton(bool down)
{
    if (down) {
        m_held.setLeftButton(true);
    }
    m_keyboard.sendLeftButton(down);
    if (!down) {
        m_held.setLeftButton(false);
    }
}

void X11InputInjector::logUntranslatable(quint16 virtualKey)
{
    // 0 is what an entry holds that no mapping sets.
    if (virtualKey != 0 && !m_logged.contains(virtualKey)) {
        m_logged.insert(virtualKey);
        qCWarning(lcPlatform, "no key of this keyboard layout stands for key code %d", virtualKey);
    }
}
