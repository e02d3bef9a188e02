#include "engine/platform/windows/win32/Win32MouseHook.h"

#include <utility>

namespace
{

// The hook procedure gets no context argument.
std::atomic<Win32MouseHook *> instance{nullptr};

} // namespace

LRESULT CALLBACK Win32MouseHook::procedure(int code, WPARAM message, LPARAM event)
{
    Win32MouseHook *const hook = instance;
    if (code == HC_ACTION && message == WM_MOUSEMOVE && hook != nullptr) {
        hook->m_called = true;
        hook->m_moved();
    }
    return CallNextHookEx(nullptr, code, message, event);
}

Win32MouseHook::Win32MouseHook(std::function<void()> moved)
    : m_moved(std::move(moved))
{
    Win32MouseHook *none = nullptr;
    if (!instance.compare_exchange_strong(none, this)) {
        return;
    }
    const HANDLE ready = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    m_thread = std::thread(&Win32MouseHook::run, this, ready);
    WaitForSingleObject(ready, INFINITE);
    CloseHandle(ready);
}

Win32MouseHook::~Win32MouseHook()
{
    if (!m_thread.joinable()) {
        return;
    }
    PostThreadMessageW(m_threadId, WM_QUIT, 0, 0);
    m_thread.join();
    instance = nullptr;
}

void Win32MouseHook::run(HANDLE ready)
{
    // Before anybody can post to it, the thread needs a queue.
    MSG message{};
    PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);
    m_threadId = GetCurrentThreadId();
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_TIME_CRITICAL); // the mouse waits for it
    install();
    SetEvent(ready);
    if (!isInstalled()) {
        return;
    }
    const UINT_PTR timer = SetTimer(nullptr, 0, lookInterval, nullptr);
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_TIMER) {
            putBackIfRemoved();
        }
    }
    KillTimer(nullptr, timer);
    UnhookWindowsHookEx(m_handle.exchange(nullptr));
}

void Win32MouseHook::install()
{
    GetCursorPos(&m_lastPlace);
    m_called = false;
    m_handle = SetWindowsHookExW(WH_MOUSE_LL, procedure, GetModuleHandleW(nullptr), 0);
}

void Win32MouseHook::putBackIfRemoved()
{
    POINT place{};
    if (!GetCursorPos(&place)) {
        return; // the desktop is not ours at the moment, and its mouse not our business
    }
    const bool moved = place.x != m_lastPlace.x || place.y != m_lastPlace.y;
    if (moved && !m_called) {
        // By a program, which does no harm here, or the hook is gone.
        UnhookWindowsHookEx(m_handle);
        install();
    }
    m_lastPlace = place;
    m_called = false;
}
