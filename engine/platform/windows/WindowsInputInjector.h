#pragma once

#include "engine/platform/InputInjector.h"
#include "engine/platform/RefusedInput.h"

#include <memory>

/// Injects with SendInput. Every virtual-key code is the system's own and is sent as it stands.
class WindowsInputInjector final : public InputInjector
{
    Q_DISABLE_COPY_MOVE(WindowsInputInjector)

public:
    /// @p refused is told of every event whether the system took it.
    explicit WindowsInputInjector(std::shared_ptr<RefusedInput> refused);

    void sendKey(quint16 virtualKey, bool down) override;
    void sendLeftButton(bool down) override;

private:
    std::shared_ptr<RefusedInput> m_refused;
};
