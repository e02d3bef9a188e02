// Prints "moved" for the movements of the real mouse that the hook tells of, while this program's main thread
// is busy; ends with status 0 after five, with status 1 when there is no hook or not enough movement within
// ten seconds. With the argument "removed" the system, so to speak, removes the hook first.
#include "engine/platform/windows/win32/Win32MouseHook.h"

#include <cstdio>
#include <cstring>
#include <windows.h>

namespace
{

// The X server's pointer is followed over windows only, and by the thread that dispatches their messages.
DWORD WINAPI runWindow(void *)
{
    CreateWindowExW(WS_EX_TOPMOST, L"Static", L"mouse", WS_POPUP | WS_VISIBLE, 0, 0, 600, 500, nullptr,
                    nullptr, GetModuleHandleW(nullptr), nullptr);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    CloseHandle(CreateThread(nullptr, 0, runWindow, nullptr, 0, nullptr));
    std::atomic<int> movements{0};
    std::atomic<DWORD> thread{0};
    const Win32MouseHook hook([&] {
        std::puts("moved");
        thread = GetCurrentThreadId();
        ++movements;
    });
    if (!hook.isInstalled()) {
        std::puts("no hook");
        return 1;
    }
    if (argc > 1 && std::strcmp(argv[1], "removed") == 0) {
        const HHOOK before = hook.handle();
        UnhookWindowsHookEx(before);
        std::puts("ready");
        for (int i = 0; i < 1000 && hook.handle() == before; ++i) {
            Sleep(10);
        }
        std::puts(hook.handle() != before && hook.isInstalled() ? "put back" : "not put back");
    } else {
        std::puts("ready");
    }
    for (int i = 0; i < 1000 && movements < 5; ++i) {
        Sleep(10);
    }
    return movements >= 5 && thread != GetCurrentThreadId() ? 0 : 1;
}
