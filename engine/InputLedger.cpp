#include "engine/InputLedger.h"

InputLedger::InputLedger(InputInjector &injector, PointerAppearance &appearance)
    : m_injector(injector)
    , m_appearance(appearance)
{
}

void InputLedger::sendKey(quint16 virtualKey, bool down)
{
    if (!down) {
        m_keys.removeOne(virtualKey);
    } else if (!m_keys.contains(virtualKey)) {
        m_keys.append(virtualKey);
    }
    m_injector.sendKey(virtualKey, down);
}

void InputLedger::sendLeftButton(bool down)
{
    m_leftButton = down;
    m_injector.sendLeftButton(down);
}

void InputLedger::prepareKeys(const QVector<quint16> &virtualKeys)
{
    m_injector.prepareKeys(virtualKeys);
}

void InputLedger::setHidden(bool hidden)
{
    m_hidden = hidden;
    m_appearance.setHidden(hidden);
}

void InputLedger::restore()
{
    m_hidden = false;
    m_appearance.restore();
}

void InputLedger::endDrag()
{
    if (m_leftButton) {
        sendLeftButton(false);
    }
    if (m_hidden) {
        setHidden(false);
    }
}

void InputLedger::releaseAll()
{
    while (!m_keys.isEmpty()) {
        const quint16 oldest = m_keys.first();
        sendKey(oldest, false);
    }
    endDrag();
}
