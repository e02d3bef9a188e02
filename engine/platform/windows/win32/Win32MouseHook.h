#pragma once

#include <functional>

/// A low-level mouse hook for the whole desktop that tells of every mouse movement.
///
/// The thread that makes it must run a message loop: the system calls the hook there, for every mouse event
/// and before the event takes effect, and waits for the answer. What is called must therefore return at once;
/// a hook that keeps the system waiting is dropped by it without notice.
class Win32MouseHook
{
public:
    /// Movement by programs counts like the user's where the system shows it to the hook; this is deliberate.
    /// One hook exists at a time; a second one made meanwhile stays uninstalled.
    explicit Win32MouseHook(std::function<void()> moved);
    ~Win32MouseHook();

    Win32MouseHook(const Win32MouseHook &) = delete;
    Win32MouseHook &operator=(const Win32MouseHook &) = delete;

    /// False when the system refused the hook; nothing is ever reported then.
    bool isInstalled() const;

    /// Called by the hook procedure.
    void report() const { m_moved(); }

private:
    std::function<void()> m_moved;
};
