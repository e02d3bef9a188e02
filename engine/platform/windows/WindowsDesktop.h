#pragma once

#include "engine/platform/Desktop.h"

/// The window system of Windows, which speaks in virtual-key codes and always composes.
class WindowsDesktop final : public Desktop
{
    Q_DISABLE_COPY_MOVE(WindowsDesktop)

public:
    WindowsDesktop() = default;

    int virtualKeyFromNative(quint32 nativeVirtualKey, quint32) const override
    {
        return static_cast<int>(nativeVirtualKey);
    }
    bool isComposited() const override { return true; }
    bool printsToFiles() const override { return false; }
};
