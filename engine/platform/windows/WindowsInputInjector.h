#pragma once

#include "engine/platform/InputInjector.h"

/// Injects with SendInput. Every virtual-key code is the system's own and is sent as it stands.
class WindowsInputInjector final : public InputInjector
{
    Q_DISABLE_COPY_MOVE(WindowsInputInjector)

public:
    WindowsInputInjector() = default;

    void sendKey(quint16 virtualKey, bool down) override;
    void sendLeftButton(bool down) override;
};
