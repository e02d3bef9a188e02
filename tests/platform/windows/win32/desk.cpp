// Tells and does, for the tests of the whole program, what only a program for Windows can:
//   desk windows PROGRAM         a line for each window: X Y WIDTH HEIGHT shown|hidden front|back CLASS|TITLE
//   desk cursor                  where the pointer is: X Y
//   desk tray PROGRAM menu|open  what the task bar tells a program when its tray icon is clicked right, left
//   desk close PROGRAM           asks each shown window to close, as Alt+F4 does
//   desk processes PROGRAM       the ids of the processes
//   desk console COMMAND         runs the command in a console of its own and prints what the console then
//   shows
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>
#include <windows.h>
// clang-format off: it needs the one above
#include <tlhelp32.h>
// clang-format on

namespace
{

constexpr UINT trayMessage = WM_APP + 101; // the toolkit's own

std::string narrow(const wchar_t *text)
{
    char bytes[1024] = "";
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes, nullptr, nullptr);
    return bytes;
}

std::vector<DWORD> processes(const std::wstring &program)
{
    std::vector<DWORD> found;
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(all, &entry); more; more = Process32NextW(all, &entry)) {
        if (program == entry.szExeFile) {
            found.push_back(entry.th32ProcessID);
        }
    }
    CloseHandle(all);
    return found;
}

struct Search {
    std::vector<DWORD> processes;
    std::vector<HWND> windows;
};

std::vector<HWND> windowsOf(const std::wstring &program)
{
    Search search{processes(program), {}};
    EnumWindows(
        [](HWND window, LPARAM data) -> BOOL {
            auto &found = *reinterpret_cast<Search *>(data);
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            for (const DWORD process : found.processes) {
                if (process == owner) {
                    found.windows.push_back(window);
                }
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.windows;
}

std::wstring className(HWND window)
{
    wchar_t name[256] = L"";
    GetClassNameW(window, name, 256);
    return name;
}

void listWindows(const std::wstring &program)
{
    for (const HWND window : windowsOf(program)) {
        RECT place{};
        GetWindowRect(window, &place);
        wchar_t title[256] = L"";
        GetWindowTextW(window, title, 256);
        std::printf("%ld %ld %ld %ld %s %s %s|%s\n", place.left, place.top, place.right - place.left,
                    place.bottom - place.top, IsWindowVisible(window) ? "shown" : "hidden",
                    GetForegroundWindow() == window ? "front" : "back",
                    narrow(className(window).c_str()).c_str(), narrow(title).c_str());
    }
}

int clickTray(const std::wstring &program, bool menu)
{
    for (const HWND window : windowsOf(program)) {
        if (className(window).find(L"TrayIconMessageWindowClass") != std::wstring::npos) {
            PostMessageW(window, trayMessage, MAKEWPARAM(200, 200),
                         MAKELPARAM(menu ? WM_CONTEXTMENU : WM_USER, 0));
            return 0;
        }
    }
    return 1;
}

/// What the console's screen shows, without the blanks at the ends of its lines.
std::string screenText()
{
    const HANDLE screen = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    CONSOLE_SCREEN_BUFFER_INFO info{};
    GetConsoleScreenBufferInfo(screen, &info);
    std::string text;
    for (SHORT row = 0; row <= info.dwCursorPosition.Y; ++row) {
        std::wstring line(static_cast<std::size_t>(info.dwSize.X), L' ');
        DWORD count = 0;
        ReadConsoleOutputCharacterW(screen, line.data(), static_cast<DWORD>(line.size()), COORD{0, row},
                                    &count);
        line.resize(line.find_last_not_of(L' ') + 1);
        text += narrow(line.c_str()) + '\n';
    }
    CloseHandle(screen);
    return text;
}

int runInConsole(std::wstring command)
{
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    FreeConsole();
    AllocConsole();
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process)) {
        return 1;
    }
    WaitForSingleObject(process.hProcess, 20000);
    DWORD code = 1;
    GetExitCodeProcess(process.hProcess, &code);
    const std::string text = screenText();
    DWORD written = 0;
    WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    return static_cast<int>(code);
}

} // namespace

int wmain(int argc, wchar_t *argv[])
{
    const std::wstring task = argc > 1 ? argv[1] : L"";
    const std::wstring what = argc > 2 ? argv[2] : L"";
    if (task == L"windows") {
        listWindows(what);
    } else if (task == L"cursor") {
        POINT place{};
        GetCursorPos(&place);
        std::printf("%ld %ld\n", place.x, place.y);
    } else if (task == L"tray") {
        return clickTray(what, argc > 3 && std::wcscmp(argv[3], L"menu") == 0);
    } else if (task == L"close") {
        for (const HWND window : windowsOf(what)) {
            if (IsWindowVisible(window)) {
                PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
            }
        }
    } else if (task == L"processes") {
        for (const DWORD process : processes(what)) {
            std::printf("%lu\n", process);
        }
    } else if (task == L"console") {
        return runInConsole(what);
    } else {
        return 2;
    }
    return 0;
}
