#pragma once

#include <QtGlobal>

#include <cstddef>

/// Bounds what can be waiting in a queue that somebody else empties once in each cycle of a server.
///
/// The queue itself cannot be looked into, but the cycles can be counted, and what was written before a whole
/// cycle began is gone when that cycle is over. So the bytes are kept in two heaps: those since a mark, and
/// those before it. When enough cycles have passed since the mark, the older heap is certainly gone, the
/// other becomes the older one and the mark moves on. Together they are never less than what really waits.
class SendBudget
{
public:
    explicit SendBudget(std::size_t limit);

    /// True when @p bytes more cannot exceed the limit. @p cycles is the count at this moment.
    bool allows(std::size_t bytes, quint32 cycles);
    void spend(std::size_t bytes) { m_recent += bytes; }

    /// True when all that was spent is certainly gone.
    bool isAllGone(quint32 cycles);

private:
    std::size_t m_limit;
    std::size_t m_older = 0;
    std::size_t m_recent = 0;
    quint32 m_mark = 0;
};
