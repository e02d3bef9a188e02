// A program with the focus, and with low-level hooks, that prints the input that reaches it, one line each:
//   hook key CODE down|up scan N injected|real extra N        window key CODE down|up
//   hook left down|up injected|real                           window left down|up
#include <cstdio>
#include <windows.h>

namespace
{

const char *injected(bool is)
{
    return is ? "injected" : "real";
}

LRESULT CALLBACK onKey(int code, WPARAM message, LPARAM event)
{
    if (code == HC_ACTION) {
        const auto &key = *reinterpret_cast<const KBDLLHOOKSTRUCT *>(event);
        std::printf("hook key %lu %s scan %lu %s extra %llu\n", key.vkCode,
                    (key.flags & LLKHF_UP) != 0 ? "up" : "down", key.scanCode,
                    injected((key.flags & LLKHF_INJECTED) != 0),
                    static_cast<unsigned long long>(key.dwExtraInfo));
    }
    return CallNextHookEx(nullptr, code, message, event);
}

LRESULT CALLBACK onMouse(int code, WPARAM message, LPARAM event)
{
    if (code == HC_ACTION && (message == WM_LBUTTONDOWN || message == WM_LBUTTONUP)) {
        const auto &mouse = *reinterpret_cast<const MSLLHOOKSTRUCT *>(event);
        std::printf("hook left %s %s\n", message == WM_LBUTTONDOWN ? "down" : "up",
                    injected((mouse.flags & LLMHF_INJECTED) != 0));
    }
    return CallNextHookEx(nullptr, code, message, event);
}

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE) {
            // As the system does; Wine 8 does not.
            NotifyWinEvent(EVENT_SYSTEM_FOREGROUND, window, OBJID_WINDOW, CHILDID_SELF);
        }
        return DefWindowProcW(window, message, wParam, lParam);
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        std::printf("window key %u down\n", static_cast<unsigned>(wParam));
        return 0;
    case WM_KEYUP:
    case WM_SYSKEYUP:
        std::printf("window key %u up\n", static_cast<unsigned>(wParam));
        return 0;
    case WM_LBUTTONDOWN:
        std::printf("window left down\n");
        return 0;
    case WM_LBUTTONUP:
        std::printf("window left up\n");
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

} // namespace

int main()
{
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    WNDCLASSW description{};
    description.lpfnWndProc = windowProcedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = L"Watcher";
    RegisterClassW(&description);
    const HWND window = CreateWindowExW(WS_EX_TOPMOST, L"Watcher", L"watcher", WS_POPUP | WS_VISIBLE, 0, 0,
                                        400, 300, nullptr, nullptr, description.hInstance, nullptr);
    SetForegroundWindow(window);
    SetFocus(window);
    if (SetWindowsHookExW(WH_KEYBOARD_LL, onKey, nullptr, 0) == nullptr ||
        SetWindowsHookExW(WH_MOUSE_LL, onMouse, nullptr, 0) == nullptr) {
        return 1;
    }
    std::puts("ready");
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}
