#include "engine/platform/windows/win32/Win32ForegroundWatch.h"

#include <iterator>
#include <utility>
#include <vector>

namespace
{

// The hook procedure gets no context argument.
Win32ForegroundWatch *instance = nullptr;

// What a user could work in: on the screen, with a title, and no part of another window.
bool isAProgramsWindow(HWND window)
{
    const LONG style = GetWindowLongW(window, GWL_EXSTYLE);
    return IsWindowVisible(window) && !IsIconic(window) && GetWindow(window, GW_OWNER) == nullptr &&
           (style & WS_EX_TOOLWINDOW) == 0 && GetWindowTextLengthW(window) > 0;
}

// The shell's task bar, what opens from it, and the desktop are on the way from one program to another. Its
// windows of files are a program's.
bool isOfTheShell(HWND window, DWORD process)
{
    DWORD shell = 0;
    GetWindowThreadProcessId(GetShellWindow(), &shell);
    if (process != shell) {
        return window == GetDesktopWindow();
    }
    wchar_t name[32] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return std::wstring(name) != L"CabinetWClass";
}

} // namespace

void CALLBACK Win32ForegroundWatch::procedure(HWINEVENTHOOK, DWORD, HWND window, LONG, LONG, DWORD, DWORD)
{
    const std::wstring executable = executableOf(window);
    if (instance != nullptr && !executable.empty()) {
        instance->m_told(executable);
    }
}

Win32ForegroundWatch::Win32ForegroundWatch(Told told)
    : m_told(std::move(told))
{
    if (instance != nullptr) {
        return;
    }
    instance = this;
    m_hook = SetWinEventHook(EVENT_SYSTEM_FOREGROUND, EVENT_SYSTEM_FOREGROUND, nullptr, procedure, 0, 0,
                             WINEVENT_OUTOFCONTEXT | WINEVENT_SKIPOWNPROCESS);
}

Win32ForegroundWatch::~Win32ForegroundWatch()
{
    if (instance != this) {
        return;
    }
    instance = nullptr;
    if (m_hook != nullptr) {
        UnhookWinEvent(m_hook);
    }
}

std::wstring Win32ForegroundWatch::current()
{
    std::wstring found = executableOf(GetForegroundWindow());
    for (HWND window = GetTopWindow(nullptr); found.empty() && window != nullptr;
         window = GetWindow(window, GW_HWNDNEXT)) {
        if (isAProgramsWindow(window)) {
            found = executableOf(window);
        }
    }
    return found;
}

std::wstring Win32ForegroundWatch::executableOf(HWND window)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == 0 || process == GetCurrentProcessId() || isOfTheShell(window, process)) {
        return {};
    }
    const HANDLE handle = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
    if (handle == nullptr) {
        return {};
    }
    constexpr DWORD longestPath = 32768;
    std::vector<wchar_t> path(longestPath);
    DWORD length = longestPath;
    const bool told = QueryFullProcessImageNameW(handle, 0, path.data(), &length) != FALSE;
    CloseHandle(handle);
    return told ? std::wstring(path.data(), length) : std::wstring();
}
