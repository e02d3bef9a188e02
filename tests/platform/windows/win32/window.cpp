// A program whose window comes to the foreground. Prints "ready" then.
#include <cstdio>
#include <windows.h>

int main()
{
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    WNDCLASSW kind{};
    kind.lpfnWndProc = DefWindowProcW;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = L"win32_window";
    RegisterClassW(&kind);
    const HWND window = CreateWindowW(L"win32_window", L"A program", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100,
                                      100, 200, 150, nullptr, nullptr, kind.hInstance, nullptr);
    SetForegroundWindow(window);
    MSG message{};
    bool said = false;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
        if (!said && GetForegroundWindow() == window) {
            said = true;
            // As the system does; Wine 8 does not.
            NotifyWinEvent(EVENT_SYSTEM_FOREGROUND, window, OBJID_WINDOW, CHILDID_SELF);
            std::puts("ready");
        }
    }
    return 0;
}
