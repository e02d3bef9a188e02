#include "tools/simulator/LineInput.h"

#include <QSocketNotifier>

#include <cerrno>
#include <unistd.h>

namespace simulator
{

LineInput::LineInput(int descriptor, QObject *parent)
    : QObject(parent)
    , m_descriptor(descriptor)
    , m_notifier(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read))
{
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &LineInput::read);
}

LineInput::~LineInput() = default;

void LineInput::read()
{
    char bytes[4096];
    // One read each time the notifier fires cannot block, whatever the descriptor's mode, which is shared
    // with others.
    const ssize_t length = ::read(m_descriptor, bytes, sizeof bytes);
    if (length < 0 && (errno == EINTR || errno == EAGAIN)) {
        return;
    }
    if (length <= 0) {
        m_notifier->setEnabled(false);
        if (!m_buffer.isEmpty()) {
            tell(m_buffer);
        }
        m_buffer.clear();
        Q_EMIT ended();
        return;
    }
    m_buffer.append(bytes, static_cast<int>(length));
    for (int end = 0; (end = m_buffer.indexOf('\n')) >= 0;) {
        const QByteArray text = m_buffer.left(end);
        m_buffer.remove(0, end + 1);
        tell(text);
    }
}

void LineInput::tell(const QByteArray &text)
{
    Q_EMIT line(text, ++m_number);
}

} // namespace simulator
