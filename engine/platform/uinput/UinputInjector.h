#pragma once

#include "engine/platform/InputInjector.h"
#include "engine/platform/uinput/SessionKeymap.h"
#include "engine/platform/uinput/UinputDevices.h"
#include "engine/platform/xkb/KeyPresser.h"

/// Injects keys and the left button through the kernel.
///
/// Keys are looked up in the session's keymap, in its first group: which group is active a compositor tells
/// only who has the focus. There are no spare keycodes to put symbols on, so a symbol that needs modifiers is
/// pressed with them.
class UinputInjector final : public InputInjector, private KeycodeSink
{
    Q_DISABLE_COPY_MOVE(UinputInjector)

public:
    UinputInjector(std::shared_ptr<UinputDevices> devices, std::shared_ptr<SessionKeymap> keymap);

    void sendKey(quint16 virtualKey, bool down) override;
    void sendLeftButton(bool down) override;

private:
    void sendKeycode(quint8 keycode, bool down) override;
    void latchModifiers(quint8 modifiers) override;
    void assign(quint8 keycode, quint32 keysym, quint32 shifted) override;

    std::shared_ptr<UinputDevices> m_devices;
    std::shared_ptr<SessionKeymap> m_keymap;
    KeyPresser m_presser;
    QObject m_context; // ends the connections below with this object
    bool m_mapIsOld = true;
    bool m_numLockForNextKey = false;
};
