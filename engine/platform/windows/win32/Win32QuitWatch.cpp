#include "engine/platform/windows/win32/Win32QuitWatch.h"

#include <future>
#include <mutex>
#include <utility>
#include <windows.h>

const wchar_t Win32QuitWatch::windowClass[] = L"VeltrixQuitWatch";

namespace
{

// Process-wide, because the console's handler gets no context argument, and never destroyed, because a thread
// that withholds its answer lives on until the process is gone.
struct Watch {
    std::mutex mutex;
    std::function<void()> requested;
    HWND window = nullptr;
    bool withholding = false;
};

Watch &watch()
{
    static auto *const instance = new Watch;
    return *instance;
}

/// Returns false when nobody listens any more. @p withhold says that the caller will not answer the system.
bool request(bool withhold)
{
    Watch &state = watch();
    const std::lock_guard<std::mutex> lock(state.mutex);
    if (!state.requested) {
        return false;
    }
    state.withholding = state.withholding || withhold;
    state.requested();
    return true;
}

BOOL WINAPI onConsoleEvent(DWORD event)
{
    const bool endsProcess = event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT;
    if (!request(endsProcess)) {
        return FALSE;
    }
    if (endsProcess) {
        Sleep(INFINITE);
    }
    return TRUE;
}

void dispatchMessages()
{
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
}

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CLOSE:
        request(false);
        return 0;
    case WM_ENDSESSION:
        if (wParam != FALSE && request(true)) {
            // Other windows' broadcasts, such as the one that reloads the pointer scheme while the program
            // quits, must not wait for this thread.
            dispatchMessages();
        }
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    case WM_APP:
        DestroyWindow(window);
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

void runWindow(std::promise<void> created)
{
    const HINSTANCE module = GetModuleHandleW(nullptr);
    WNDCLASSW description{};
    description.lpfnWndProc = windowProcedure;
    description.hInstance = module;
    description.lpszClassName = Win32QuitWatch::windowClass;
    RegisterClassW(&description);
    // Top-level, though never shown: a message-only window is not asked when the session ends.
    watch().window = CreateWindowExW(0, Win32QuitWatch::windowClass, L"", WS_POPUP, 0, 0, 0, 0, nullptr,
                                     nullptr, module, nullptr);
    const bool ok = watch().window != nullptr;
    created.set_value();
    if (ok) {
        dispatchMessages();
    }
}

} // namespace

Win32QuitWatch::Win32QuitWatch(std::function<void()> requested)
{
    {
        const std::lock_guard<std::mutex> lock(watch().mutex);
        watch().requested = std::move(requested);
    }
    std::promise<void> created;
    const std::future<void> ready = created.get_future();
    m_thread = std::thread(runWindow, std::move(created));
    ready.wait();
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}

Win32QuitWatch::~Win32QuitWatch()
{
    bool withholding = false;
    {
        const std::lock_guard<std::mutex> lock(watch().mutex);
        watch().requested = nullptr;
        withholding = watch().withholding;
    }
    if (withholding) {
        m_thread.detach();
        return;
    }
    SetConsoleCtrlHandler(onConsoleEvent, FALSE);
    if (watch().window != nullptr) {
        PostMessageW(watch().window, WM_APP, 0, 0);
    }
    m_thread.join();
}
