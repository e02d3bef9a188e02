#include "tests/support/listener/Output.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <unistd.h>

namespace listener
{

std::int64_t monotonicNow()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

void Output::line(std::int64_t now, const char *text) const
{
    char buffer[256];
    const int length = m_timestamps ? std::snprintf(buffer, sizeof buffer, "%" PRId64 " %s\n", now, text)
                                    : std::snprintf(buffer, sizeof buffer, "%s\n", text);
    // One write a line: lines of two threads do not mix.
    if (write(STDOUT_FILENO, buffer, static_cast<std::size_t>(length)) != length) {
        std::_Exit(1); // nobody reads any more
    }
}

} // namespace listener
