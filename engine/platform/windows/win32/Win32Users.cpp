#include "engine/platform/windows/win32/Win32Users.h"

#include <sddl.h>
#include <vector>

namespace Win32Users
{

std::wstring currentUser()
{
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) {
        return {};
    }
    DWORD size = 0;
    GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    std::vector<BYTE> memory(size);
    std::wstring name;
    LPWSTR text = nullptr;
    if (size > 0 && GetTokenInformation(token, TokenUser, memory.data(), size, &size) &&
        ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER *>(memory.data())->User.Sid, &text)) {
        name = text;
        LocalFree(text);
    }
    CloseHandle(token);
    return name;
}

void letOthersComeToFront()
{
    AllowSetForegroundWindow(ASFW_ANY);
}

void bringToFront(HWND window)
{
    SetForegroundWindow(window);
}

} // namespace Win32Users
