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
    // Not what somebody else has put there since.
    m_presser.want({});
    m_keyboard.notice();
    m_presser.restore();
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
    // What has been thrown out with the old layout needs no tidying up any more.
    for (int keycode = 0; keycode < 256; ++keycode) {
        const quint32 keysym = m_held.spare(quint8(keycode));
        if (keysym != 0 && !map->types(quint8(keycode), keysym)) {
            m_held.setSpare(quint8(keycode), 0);
        }
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

void X11InputInjector::assign(quint8 keycode, quint32 keysym, quint32 shifted)
{
    if (keysym != 0) {
        m_held.setSpare(keycode, keysym);
    }
    m_keyboard.assign(keycode, keysym, shifted);
    if (keysym == 0) {
        m_held.setSpare(keycode, 0);
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
