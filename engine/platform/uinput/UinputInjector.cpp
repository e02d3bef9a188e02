#include "engine/platform/uinput/UinputInjector.h"

#include <linux/input-event-codes.h>

namespace
{

constexpr quint8 firstKeycode = 8; // XKB's number for the kernel's 0

} // namespace

UinputInjector::UinputInjector(std::shared_ptr<UinputDevices> devices, std::shared_ptr<SessionKeymap> keymap)
    : m_devices(std::move(devices))
    , m_keymap(std::move(keymap))
    , m_presser(*this)
{
    QObject::connect(m_keymap.get(), &SessionKeymap::changed, &m_context, [this] { m_mapIsOld = true; });
    QObject::connect(m_devices.get(), &UinputDevices::numLockChanged, &m_context,
                     [this] { m_mapIsOld = true; });
}

void UinputInjector::sendKey(quint16 virtualKey, bool down)
{
    // Only now: until the compositor's keymap is here the system's would have to be read, for nothing.
    if (down && m_mapIsOld) {
        m_presser.setMap(m_keymap->map(m_devices->isNumLockOn()));
        m_mapIsOld = false;
    }
    m_presser.sendKey(virtualKey, down);
}

void UinputInjector::sendLeftButton(bool down)
{
    m_devices->sendLeftButton(down);
}

void UinputInjector::sendKeycode(quint8 keycode, bool down)
{
    const auto tapNumLock = [this] {
        m_devices->sendKey(KEY_NUMLOCK, true);
        m_devices->sendKey(KEY_NUMLOCK, false);
    };
    const bool withNumLock = down && m_numLockForNextKey;
    m_numLockForNextKey = m_numLockForNextKey && !down;
    if (withNumLock) {
        tapNumLock();
    }
    m_devices->sendKey(quint16(keycode - firstKeycode), down);
    if (withNumLock) {
        tapNumLock();
    }
}

// The kernel has no latch: NumLock is switched on for the press and off again.
void UinputInjector::latchModifiers(quint8)
{
    m_numLockForNextKey = true;
}

void UinputInjector::assign(quint8, quint32, quint32)
{
    Q_UNREACHABLE(); // the map names no spare keycodes
}
