// Prints "moved" for each of the first five movements of the real mouse that the hook tells of, then ends
// with status 0; with status 1 when there is no hook or not enough movement within ten seconds.
#include "engine/platform/windows/win32/Win32MouseHook.h"

#include <cstdio>
#include <windows.h>

int main()
{
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    // The X server's pointer is followed over windows only.
    CreateWindowExW(WS_EX_TOPMOST, L"Static", L"mouse", WS_POPUP | WS_VISIBLE, 0, 0, 600, 500, nullptr,
                    nullptr, GetModuleHandleW(nullptr), nullptr);
    int movements = 0;
    const Win32MouseHook hook([&movements] {
        std::puts("moved");
        if (++movements == 5) {
            PostQuitMessage(0);
        }
    });
    if (!hook.isInstalled()) {
        std::puts("no hook");
        return 1;
    }
    SetTimer(nullptr, 0, 10000, [](HWND, UINT, UINT_PTR, DWORD) { PostQuitMessage(1); });
    std::puts("ready");
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}
