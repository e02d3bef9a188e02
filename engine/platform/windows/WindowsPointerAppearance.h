#pragma once

#include "engine/platform/PointerAppearance.h"
#include "engine/platform/windows/win32/Win32CursorScheme.h"

#include <QString>

/// Hides the pointer by making the arrow of the user's pointer scheme transparent.
///
/// The scheme outlives the program: an arrow that a crash left transparent is put back when the next object
/// is made. A refused write is logged and otherwise silent.
class WindowsPointerAppearance final : public PointerAppearance
{
    Q_DISABLE_COPY_MOVE(WindowsPointerAppearance)

public:
    /// @p transparentArrow is the path of the transparent cursor file.
    explicit WindowsPointerAppearance(const QString &transparentArrow);

    void setHidden(bool hidden) override;
    void restore() override;

private:
    Win32CursorScheme m_scheme;
};
