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
    /// After so many steps of the count what was written before is gone. The clients of one cycle run in no
    /// certain order: at the beginning the one that empties the queue may already have had its turn in the
    /// cycle that the count reaches next. The cycle after that empties the queue, and it is over for all
    /// clients when the count has gone one further.
    static constexpr quint32 cyclesUntilGone = 3;

    explicit SendBudget(std::size_t limit);

    /// True when @p bytes more cannot exceed the limit. @p cycles is the count at this moment.
    bool allows(std::size_t bytes, quint32 cycles);
    void spend(std::size_t bytes) { m_recent += bytes; }

private:
    std::size_t m_limit;
    std::size_t m_older = 0;
    std::size_t m_recent = 0;
    quint32 m_mark = 0;
};
