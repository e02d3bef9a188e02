#pragma once

#include <functional>
#include <string>
#include <windows.h>

/// Tells which program's window comes to the foreground.
///
/// The system posts the news to the thread that made this object, which has to handle its messages; this
/// process' own windows are left out.
class Win32ForegroundWatch
{
public:
    /// The full path of an executable file; never empty.
    using Told = std::function<void(const std::wstring &executable)>;

    /// @p told is called on the thread that makes this object, from its message loop. One watch exists at a
    /// time; a second one made meanwhile stays uninstalled.
    explicit Win32ForegroundWatch(Told told);
    ~Win32ForegroundWatch();

    Win32ForegroundWatch(const Win32ForegroundWatch &) = delete;
    Win32ForegroundWatch &operator=(const Win32ForegroundWatch &) = delete;

    /// False when the system refused; nothing is ever told then.
    bool isInstalled() const { return m_hook != nullptr; }

    /// The executable of the program in the foreground now; when that is this process, of the highest window
    /// of another. Empty when there is none, or the system does not tell.
    static std::wstring current();

    /// The executable of the process that @p window belongs to. Empty for this process' own, the task bar and
    /// the desktop, a window that is gone, and when the system does not tell.
    static std::wstring executableOf(HWND window);

private:
    static void CALLBACK procedure(HWINEVENTHOOK hook, DWORD event, HWND window, LONG object, LONG child,
                                   DWORD thread, DWORD time);

    Told m_told;
    HWINEVENTHOOK m_hook = nullptr;
};
