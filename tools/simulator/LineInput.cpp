#include "tools/simulator/LineInput.h"

#include <utility>

namespace simulator
{

void LineInput::take(const QByteArray &bytes)
{
    m_buffer.append(bytes);
    for (int end = 0; (end = m_buffer.indexOf('\n')) >= 0;) {
        const QByteArray text = m_buffer.left(end);
        m_buffer.remove(0, end + 1);
        Q_EMIT line(text, ++m_number);
    }
}

void LineInput::end()
{
    if (!m_buffer.isEmpty()) {
        Q_EMIT line(std::exchange(m_buffer, QByteArray()), ++m_number);
    }
    Q_EMIT ended();
}

} // namespace simulator
