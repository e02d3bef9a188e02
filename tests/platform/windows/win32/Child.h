#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>
#include <windows.h>

/// Another program of this folder, whose standard output is read line by line. Ended with the object.
class Child
{
public:
    /// Starts @p program ("win32_watcher.exe") from this program's own folder with one argument and waits for
    /// its line "ready".
    explicit Child(const wchar_t *program, const wchar_t *argument = L"");
    ~Child();

    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    /// Waits until @p count lines that begin with @p prefix have come and returns those that came. Fewer
    /// after three seconds.
    std::vector<std::string> waitForLines(const std::string &prefix, std::size_t count);

    /// The lines that begin with @p prefix and have come so far.
    std::vector<std::string> lines(const std::string &prefix);

    void forgetLines();

    /// Waits at most three seconds until nobody has the program's output open any more.
    bool waitForEndOfOutput();

    /// Waits at most three seconds for the program's end; STILL_ACTIVE when it runs on.
    DWORD exitCode() const;

    DWORD processId() const { return m_process.dwProcessId; }

private:
    void readLines();
    std::vector<std::string> matching(const std::string &prefix) const;

    PROCESS_INFORMATION m_process{};
    HANDLE m_output = nullptr;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<std::string> m_lines;
    bool m_ended = false;
    std::thread m_reader;
};
