#pragma once

#include "engine/platform/windows/win32/Win32Registry.h"

#include <string>

/// The arrow of the user's pointer scheme: the system's own or a transparent one.
///
/// The choice lives in the user's registry and so outlives the program, crashes included.
class Win32CursorScheme
{
public:
    /// What a fresh Windows names as the arrow, with its variable.
    static const std::wstring systemArrow;

    /// @p transparentArrow is the full path of a cursor file, with "\" as separator.
    explicit Win32CursorScheme(std::wstring transparentArrow);

    /// Makes the arrow transparent, or puts the system's arrow back, and has the system reload the scheme.
    /// Returns ERROR_SUCCESS or the error number of the registry; whether the reload worked is not asked.
    LSTATUS setTransparent(bool transparent) const;

    /// True when the scheme names our transparent arrow.
    bool isTransparent() const;

    /// Puts the system's arrow back if the scheme still names ours, as after a crash. Any other arrow, such
    /// as one that the user chose, stays. Returns whether it was ours.
    bool restoreIfTransparent() const;

private:
    std::wstring m_transparentArrow;
    Win32RegistryText m_arrow;
};
