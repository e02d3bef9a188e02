#include "engine/KeySynthesis.h"

#include "engine/platform/InputInjector.h"
#include "mapping/ShortCut.h"

KeySynthesis::KeySynthesis(InputInjector &injector)
    : m_injector(injector)
{
}

void KeySynthesis::sendKey(qint32 code, bool down)
{
    if (code == noKey) {
        return;
    }
    const auto virtualKey = static_cast<quint16>(code & 0xFFFF);
    if (virtualKey != 0) {
        m_injector.sendKey(virtualKey, down);
    }
}

void KeySynthesis::sendShortcut(const shortCut &shortcut, bool down)
{
    sendKey(shortcut.key1, down);
    sendKey(shortcut.key2, down);
    sendKey(shortcut.key3, down);
}

void KeySynthesis::tapArrow(ArrowKey key)
{
    m_injector.sendKey(static_cast<quint16>(key), true);
    m_injector.sendKey(static_cast<quint16>(key), false);
}

void KeySynthesis::leftButton(bool down)
{
    m_injector.sendLeftButton(down);
}
