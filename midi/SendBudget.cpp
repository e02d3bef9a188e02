#include "midi/SendBudget.h"

namespace
{

// The clients of one cycle run in no certain order: at the mark the one that empties the queue may already
// have had its turn in the cycle that the count reaches next. The cycle after that empties the queue, and it
// is over for all clients when the count has gone one further.
constexpr quint32 cyclesUntilGone = 3;

} // namespace

SendBudget::SendBudget(std::size_t limit)
    : m_limit(limit)
{
}

bool SendBudget::allows(std::size_t bytes, quint32 cycles)
{
    if (cycles - m_mark >= cyclesUntilGone) {
        m_older = m_recent;
        m_recent = 0;
        m_mark = cycles;
    }
    return m_older + m_recent + bytes <= m_limit;
}

bool SendBudget::isAllGone(quint32 cycles)
{
    return allows(0, cycles) && m_older + m_recent == 0;
}
