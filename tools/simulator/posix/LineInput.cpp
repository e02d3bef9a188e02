#include "tools/simulator/LineInput.h"

#include <QSocketNotifier>

#include <cerrno>
#include <unistd.h>

namespace simulator
{

class LineInput::Source
{
public:
    explicit Source(int readFrom)
        : descriptor(readFrom)
        , notifier(readFrom, QSocketNotifier::Read)
    {
    }

    int descriptor;
    QSocketNotifier notifier;
};

LineInput::LineInput(int descriptor, QObject *parent)
    : QObject(parent)
    , m_source(std::make_unique<Source>(descriptor))
{
    connect(&m_source->notifier, &QSocketNotifier::activated, this, [this] {
        char bytes[4096];
        // One read each time the notifier fires cannot block, whatever the descriptor's mode, which is shared
        // with others.
        const ssize_t length = ::read(m_source->descriptor, bytes, sizeof bytes);
        if (length > 0) {
            take(QByteArray(bytes, static_cast<int>(length)));
        } else if (length == 0 || (errno != EINTR && errno != EAGAIN)) {
            m_source->notifier.setEnabled(false);
            end();
        }
    });
}

LineInput::~LineInput() = default;

bool LineInput::isTerminal() const
{
    return ::isatty(m_source->descriptor) != 0;
}

} // namespace simulator
