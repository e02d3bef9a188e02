#include "tools/simulator/LineInput.h"

#include <QPointer>

#include <mutex>
#include <thread>
#include <windows.h>

namespace simulator
{

/// Nothing here tells when a console or a pipe has input: a thread waits for it, and is left waiting when the
/// object goes.
class LineInput::Source
{
public:
    struct Receiver {
        std::mutex mutex;
        LineInput *input = nullptr;
    };

    explicit Source(LineInput *input)
        : m_receiver(std::make_shared<Receiver>())
    {
        m_receiver->input = input;
        std::thread(read, m_receiver).detach();
    }

    ~Source()
    {
        const std::lock_guard<std::mutex> lock(m_receiver->mutex);
        m_receiver->input = nullptr;
    }

private:
    static void read(const std::shared_ptr<Receiver> &receiver)
    {
        const HANDLE handle = GetStdHandle(STD_INPUT_HANDLE);
        char bytes[4096];
        for (;;) {
            DWORD length = 0;
            const bool more = ReadFile(handle, bytes, sizeof bytes, &length, nullptr) != 0 && length > 0;
            const QByteArray text = QByteArray(bytes, static_cast<int>(length)).replace('\r', QByteArray());
            const std::lock_guard<std::mutex> lock(receiver->mutex);
            LineInput *const input = receiver->input;
            if (input == nullptr) {
                return;
            }
            QMetaObject::invokeMethod(
                input, [input, more, text] { more ? input->take(text) : input->end(); },
                Qt::QueuedConnection);
            if (!more) {
                return;
            }
        }
    }

    std::shared_ptr<Receiver> m_receiver;
};

LineInput::LineInput(int, QObject *parent)
    : QObject(parent)
    , m_source(std::make_unique<Source>(this))
{
}

LineInput::~LineInput() = default;

bool LineInput::isTerminal() const
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

} // namespace simulator
