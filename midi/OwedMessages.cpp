#include "midi/OwedMessages.h"

#include "midi/MidiOutPort.h"
#include "midi/MidiSystem.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <future>
#include <string>
#include <thread>
#include <utility>

namespace
{

// A system whose cycles nobody counts needs a moment for a new connection, and one that does not keep up is
// given a little time.
constexpr std::chrono::milliseconds afterConnecting(200);
constexpr std::chrono::milliseconds betweenTries(20);
constexpr int triesAtMost = 100;
constexpr int untilFetched = 500;
constexpr std::chrono::milliseconds betweenConnections(500);

constexpr quint32 present = 1U << 24U;

quint32 packed(const OwedMessages::Message &message)
{
    return present | quint32(message[0]) << 16U | quint32(message[1]) << 8U | message[2];
}

std::vector<unsigned char> unpacked(quint32 word)
{
    return {static_cast<unsigned char>(word >> 16U), static_cast<unsigned char>(word >> 8U),
            static_cast<unsigned char>(word)};
}

// As much of @p name as @p size bytes of UTF-8 hold, to the last whole character.
QByteArray whatFits(const QString &name, std::size_t size)
{
    QByteArray bytes = name.toUtf8();
    auto end = std::min(static_cast<std::size_t>(bytes.size()), size);
    const auto continues = [&bytes](std::size_t at) {
        return (static_cast<unsigned char>(bytes.at(static_cast<int>(at))) & 0xC0U) == 0x80U;
    };
    while (end > 0 && end < static_cast<std::size_t>(bytes.size()) && continues(end)) {
        --end;
    }
    bytes.truncate(static_cast<int>(end));
    return bytes;
}

// Nobody else's: a program that was started anew plays under the ordinary one.
std::string ownName()
{
    return "RtMidi " + std::to_string(QCoreApplication::applicationPid());
}

void awaitFetched(const MidiOutPort &port)
{
    for (int tries = 0; !port.isAllSent() && port.mayAcceptLater() && tries < untilFetched; ++tries) {
        std::this_thread::sleep_for(betweenTries);
    }
}

} // namespace

void OwedMessages::setPort(const QString &name)
{
    const QByteArray kept = whatFits(name, m_port.size() - 1);
    std::copy(kept.begin(), kept.end(), m_port.begin());
}

// A list that shrinks from the front, one that grows from the back: a message that moves stands at its new
// place before its old one is overwritten.
void OwedMessages::set(const std::vector<Message> &messages)
{
    const std::size_t count = std::min(messages.size(), capacity);
    const std::size_t before = this->count();
    if (count > before) {
        for (std::size_t index = count; index-- > 0;) {
            m_messages[index] = packed(messages[index]);
        }
        return;
    }
    for (std::size_t index = 0; index < before; ++index) {
        m_messages[index] = index < count ? packed(messages[index]) : 0;
    }
}

std::size_t OwedMessages::count() const
{
    return static_cast<std::size_t>(std::find(m_messages.begin(), m_messages.end(), 0U) - m_messages.begin());
}

bool OwedMessages::contains(const Message &message) const
{
    const auto end = m_messages.begin() + static_cast<std::ptrdiff_t>(count());
    return std::find(m_messages.begin(), end, packed(message)) != end;
}

bool OwedMessages::isPort(const QString &name) const
{
    return whatFits(name, m_port.size() - 1) == m_port.data();
}

// One time for all of it: each of the many answers may be waited for in vain.
void OwedMessages::send(std::chrono::milliseconds altogether) const
{
    std::packaged_task<void()> task([this, altogether] { keepSending(altogether); });
    const std::future<void> end = task.get_future();
    std::thread(std::move(task)).detach();
    end.wait_for(altogether);
}

// A server can need five seconds to notice that a client died, and answers nobody meanwhile. Nobody waits
// for this process, so it waits for the answer: connections that were given up would all be made when the
// server goes on, and what they do to its cycles can cost the message. What may have got lost all the same is
// sent again, through another connection: ending twice what sounds once does no harm. A connection that is
// lost says nothing about the server, which may have closed only that one; the next one tells.
void OwedMessages::keepSending(std::chrono::milliseconds altogether) const
{
    const auto end = std::chrono::steady_clock::now() + altogether;
    bool unseen = true;
    while (std::chrono::steady_clock::now() < end) {
        bool allAbsent = false;
        MidiOutPort port(openMidiOutput(altogether, &allAbsent));
        if (allAbsent) {
            return;
        }
        const QStringList names = port.portNames();
        const auto found =
            std::find_if(names.begin(), names.end(), [this](const QString &name) { return isPort(name); });
        if (found != names.end() && port.openPort(static_cast<int>(found - names.begin()), ownName()) == 0) {
            if (sendThrough(port, unseen)) {
                return;
            }
            unseen = false;
        }
        std::this_thread::sleep_for(betweenConnections);
    }
}

// Whether they have arrived: what is fetched from a port goes where it is connected at that moment, so it
// has to be seen connected before and after.
bool OwedMessages::sendThrough(MidiOutPort &port, bool unseen) const
{
    std::this_thread::sleep_for(afterConnecting);
    awaitFetched(port);
    const bool connected = port.isConnected();
    if (!connected && !unseen) {
        return false;
    }
    for (const std::atomic<quint32> &word : m_messages) {
        if (word == 0) {
            break;
        }
        std::vector<unsigned char> message = unpacked(word);
        for (int tries = 0; port.sendMessage(&message) == MidiOutPort::Sent::Later && tries < triesAtMost;
             ++tries) {
            std::this_thread::sleep_for(betweenTries);
        }
    }
    // A port that is closed takes along what its server has not fetched yet.
    awaitFetched(port);
    return connected && port.mayAcceptLater() && port.isAllSent() && port.isConnected();
}
