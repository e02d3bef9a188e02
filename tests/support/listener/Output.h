#pragma once

#include <cstdint>

namespace listener
{

/// The monotonic clock, in nanoseconds.
std::int64_t monotonicNow();

/// Writes one line to standard output, at once; safe from several threads.
class Output
{
public:
    explicit Output(bool timestamps)
        : m_timestamps(timestamps)
    {
    }

    /// @p now is when the event was seen.
    void line(std::int64_t now, const char *text) const;

private:
    bool m_timestamps;
};

} // namespace listener
