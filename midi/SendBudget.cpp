#include "midi/SendBudget.h"

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
