#include "engine/platform/windows/win32/Win32Terminal.h"

#include <windows.h>

namespace
{

void writeBytes(HANDLE file, const std::wstring &text)
{
    const int length = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.c_str(), length, nullptr,
                                                                   0, nullptr, nullptr)),
                      '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), length, bytes.data(), static_cast<int>(bytes.size()),
                        nullptr, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

void writeToConsole(const std::wstring &text)
{
    const HANDLE console =
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, 0, nullptr);
    if (console == INVALID_HANDLE_VALUE) {
        return;
    }
    DWORD written = 0;
    WriteConsoleW(console, text.c_str(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(console);
}

} // namespace

void Win32Terminal::print(const std::wstring &text, bool toError)
{
    const HANDLE file = GetStdHandle(toError ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    const DWORD type =
        file != nullptr && file != INVALID_HANDLE_VALUE ? GetFileType(file) : DWORD(FILE_TYPE_UNKNOWN);
    if (type == FILE_TYPE_DISK || type == FILE_TYPE_PIPE) {
        writeBytes(file, text);
        return;
    }
    const bool attached = AttachConsole(ATTACH_PARENT_PROCESS) != 0;
    const bool hasConsole = attached || GetLastError() == ERROR_ACCESS_DENIED; // denied: there is one already
    // A console tells its mode to programs that are attached to it; NUL and other devices have none.
    DWORD mode = 0;
    if (type == FILE_TYPE_CHAR && GetConsoleMode(file, &mode) == 0) {
        writeBytes(file, text);
    } else if (hasConsole) {
        // The shell does not wait for a program without a console: its prompt stands there already.
        writeToConsole(attached ? L"\n" + text : text);
    }
    if (attached) {
        FreeConsole();
    }
}
