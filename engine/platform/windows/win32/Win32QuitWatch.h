#pragma once

#include <functional>
#include <thread>

/// Tells when the system asks the program to end: the end of the session, a close request to the process
/// (what taskkill and installers send), Ctrl+C or Ctrl+Break, a closed console window.
///
/// When a session or console ends, Windows kills the program as soon as its answer is in. So the answer is
/// withheld until the program has ended by itself; Windows waits a few seconds for it. This takes a thread,
/// which sleeps until then, and a window, which is never shown.
class Win32QuitWatch
{
public:
    /// @p requested is called on another thread, possibly more than once, and must return at once. One watch
    /// exists at a time.
    explicit Win32QuitWatch(std::function<void()> requested);

    /// Nothing is called any more afterwards. An answer that is being withheld stays so until the process
    /// ends.
    ~Win32QuitWatch();

    Win32QuitWatch(const Win32QuitWatch &) = delete;
    Win32QuitWatch &operator=(const Win32QuitWatch &) = delete;

    /// The hidden window's class, by which another program finds it.
    static const wchar_t windowClass[];

private:
    std::thread m_thread;
};
