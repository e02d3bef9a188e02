#pragma once

#include "engine/platform/windows/win32/Win32HeldInput.h"

#include <string>
#include <windows.h>

/// The process that releases held input when the program was ended by force: the system itself never does. It
/// waits for the program's end, so it costs nothing until then, and is gone a moment after the program.
class Win32CrashRelease
{
public:
    /// The file beside the program that start() runs.
    static const wchar_t helperName[];

    Win32CrashRelease() = default;
    /// Ends the helper, which releases what is still noted, and waits for its end.
    ~Win32CrashRelease();

    Win32CrashRelease(const Win32CrashRelease &) = delete;
    Win32CrashRelease &operator=(const Win32CrashRelease &) = delete;

    /// Starts the helper. It inherits nothing but what it waits for and the page with what is held: no file,
    /// no folder, no console. Returns ERROR_SUCCESS or the system's error number; nothing is released after a
    /// crash then.
    DWORD start();

    /// What the helper will release; before start(), and without a helper, what nobody will.
    Win32HeldInput &held() { return m_shared != nullptr ? *m_shared : m_own; }

    /// The helper's side: @p commandLine is that of its process. Returns when there is no more to be done.
    static int watch(const std::wstring &commandLine);

private:
    Win32HeldInput m_own;
    Win32HeldInput *m_shared = nullptr; // never unmapped: other objects may go later than this one
    HANDLE m_over = nullptr;
    HANDLE m_helper = nullptr;
};
