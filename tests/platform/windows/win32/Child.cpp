#include "Child.h"

#include "Check.h"

#include <chrono>

namespace
{

constexpr std::chrono::seconds patience(3);

} // namespace

Child::Child(const wchar_t *program, const wchar_t *argument)
{
    const std::wstring path = Check::programFolder() + program;
    std::wstring command = std::wstring(program) + L' ' + argument;

    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE childsEnd = nullptr;
    CHECK(CreatePipe(&m_output, &childsEnd, &inherited, 0));
    SetHandleInformation(m_output, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = childsEnd;
    start.hStdError = childsEnd;
    const BOOL started = CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                        nullptr, &start, &m_process);
    CloseHandle(childsEnd);
    CHECK(started);
    m_reader = std::thread(&Child::readLines, this);
    waitForLines("ready", 1);
}

Child::~Child()
{
    TerminateProcess(m_process.hProcess, 9);
    m_reader.join();
    CloseHandle(m_output);
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
}

std::vector<std::string> Child::waitForLines(const std::string &prefix, std::size_t count)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, patience, [&] { return matching(prefix).size() >= count; });
    return matching(prefix);
}

std::vector<std::string> Child::lines(const std::string &prefix)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return matching(prefix);
}

void Child::forgetLines()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_lines.clear();
}

bool Child::waitForEndOfOutput()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, patience, [this] { return m_ended; });
}

DWORD Child::exitCode() const
{
    WaitForSingleObject(m_process.hProcess, static_cast<DWORD>(std::chrono::milliseconds(patience).count()));
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(m_process.hProcess, &code);
    return code;
}

void Child::readLines()
{
    std::string line;
    char byte = 0;
    DWORD count = 0;
    while (ReadFile(m_output, &byte, 1, &count, nullptr) && count == 1) {
        if (byte == '\r') {
            continue;
        }
        if (byte != '\n') {
            line += byte;
            continue;
        }
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_lines.push_back(line);
        }
        line.clear();
        m_changed.notify_all();
    }
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ended = true;
    }
    m_changed.notify_all();
}

std::vector<std::string> Child::matching(const std::string &prefix) const
{
    std::vector<std::string> found;
    for (const std::string &line : m_lines) {
        if (line.compare(0, prefix.size(), prefix) == 0) {
            found.push_back(line);
        }
    }
    return found;
}
