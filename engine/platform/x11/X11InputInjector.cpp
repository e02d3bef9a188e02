#include "engine/platform/x11/X11InputInjector.h"

X11InputInjector::X11InputInjector(std::shared_ptr<X11Connection> connection, HeldInput &held)
    : m_held(held)
    , m_presser(*this)
    , m_keyboard(std::move(connection), [this] { takeMap(); })
{
    takeMap();
}

X11InputInjector::~X11InputInjector()
{
    QVector<X11Keyboard::Borrowed> borrowed;
    for (int keycode = 0; keycode < 256; ++keycode) {
        if (const quint32 keysym = m_held.spare(quint8(keycode))) {
            borrowed.append({quint8(keycode), keysym});
        }
    }
    m_keyboard.giveBack(borrowed);
    for (const X11Keyboard::Borrowed &each : qAsConst(borrowed)) {
        m_held.setSpare(each.keycode, 0);
    }
}

void X11InputInjector::prepareKeys(const QVector<quint16> &virtualKeys)
{
    m_keyboard.notice();
    m_presser.want(virtualKeys);
}

void X11InputInjector::sendKey(quint16 virtualKey, bool down)
{
    if (down) {
        m_keyboard.notice();
    }
    m_presser.sendKey(virtualKey, down);
}

void X11InputInjector::takeMap()
{
    const std::optional<KeyboardMap> map = m_keyboard.readMap();
    if (!map) {
        return; // what is known is more than nothing
    }
    m_presser.setMap(*map);
}

void X11InputInjector::sendKeycode(quint8 keycode, bool down)
{
    if (down) {
        m_held.setKey(keycode, true);
    }
    m_keyboard.sendKey(keycode, down);
    if (!down) {
        m_held.setKey(keycode, false);
    }
}

void X11InputInjector::latchModifiers(quint8 modifiers)
{
    m_keyboard.latchModifiers(modifiers);
}

// A keycode that was ever borrowed stays noted, whatever a map says meanwhile: maps are read while others
// replace them. Giving it back looks at what it carries then.
void X11InputInjector::assign(quint8 keycode, quint32 keysym, quint32 shifted)
{
    const quint32 before = m_held.spare(keycode);
    if (before != 0 && before != keysym) {
        m_keyboard.assign(keycode, 0, 0); // at no moment does it carry what is not noted
    }
    m_held.setSpare(keycode, keysym);
    m_keyboard.assign(keycode, keysym, shifted);
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
