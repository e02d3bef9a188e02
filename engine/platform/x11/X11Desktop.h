#pragma once

#include "engine/platform/Desktop.h"

/// The X server as a window system, XWayland too. A connection for each question costs less than keeping one
/// that has to be looked after.
class X11Desktop final : public Desktop
{
    Q_DISABLE_COPY_MOVE(X11Desktop)

public:
    X11Desktop() = default;

    int virtualKeyFromNative(quint32 nativeVirtualKey, quint32 nativeScanCode) const override;
    bool isComposited() const override;
};
