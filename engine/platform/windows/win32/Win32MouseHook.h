#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <windows.h>

/// A low-level mouse hook for the whole desktop that tells of every mouse movement.
///
/// The system calls such a hook for every mouse event, before the event takes effect, waits for the answer,
/// and drops a hook that keeps it waiting, without notice. So the hook has a thread of its own, which does
/// nothing else, and looks from time to time whether the pointer has moved without the hook being called:
/// then the hook is put back.
class Win32MouseHook
{
public:
    /// How often the thread looks whether the hook is still there.
    static constexpr unsigned lookInterval = 2000; // ms

    /// @p moved is called on the hook's thread, while the system waits: it must return at once. Movement by
    /// programs counts like the user's where the system shows it to the hook; this is deliberate. One hook
    /// exists at a time; a second one made meanwhile stays uninstalled.
    explicit Win32MouseHook(std::function<void()> moved);
    ~Win32MouseHook();

    Win32MouseHook(const Win32MouseHook &) = delete;
    Win32MouseHook &operator=(const Win32MouseHook &) = delete;

    /// False when the system refused the hook; nothing is ever reported then.
    bool isInstalled() const { return m_handle != nullptr; }

    /// The system's name for the hook; it changes when the hook is put back.
    HHOOK handle() const { return m_handle; }

private:
    static LRESULT CALLBACK procedure(int code, WPARAM message, LPARAM event);
    void run(HANDLE ready);
    void install();
    void putBackIfRemoved();

    std::function<void()> m_moved;
    std::atomic<HHOOK> m_handle{nullptr};
    bool m_called = false; // since the last look; only on the thread
    POINT m_lastPlace{};   // of the pointer, at the last look; only on the thread
    DWORD m_threadId = 0;
    std::thread m_thread;
};
