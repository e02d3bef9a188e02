#include "midi/OwedMessages.h"

#include "midi/MidiOutPort.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>

namespace
{

// A new connection carries messages from the server's next cycle on, and one that does not keep up is given
// a little time.
constexpr std::chrono::milliseconds afterConnecting(200);
constexpr std::chrono::milliseconds betweenTries(20);
constexpr int triesAtMost = 100;
constexpr int connectionsAtMost = 6;
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

} // namespace

void OwedMessages::setPort(const std::string &name)
{
    std::strncpy(m_port.data(), name.c_str(), m_port.size() - 1);
}

// From the front: a message that moves forward stands at its new place before its old one is overwritten.
void OwedMessages::set(const std::vector<Message> &messages)
{
    const std::size_t count = std::min(messages.size(), capacity);
    for (std::size_t index = 0; index < capacity; ++index) {
        if (index >= count && m_messages[index] == 0) {
            break;
        }
        m_messages[index] = index < count ? packed(messages[index]) : 0;
    }
}

// A server can need five seconds to notice that a client died, and answers nobody meanwhile.
void OwedMessages::send() const
{
    for (int tries = 0; tries < connectionsAtMost; ++tries) {
        MidiOutPort port;
        const int index = port.portNames().indexOf(QString::fromLatin1(m_port.data()));
        if (index >= 0 && port.openPort(index) == 0) {
            sendThrough(port);
            return;
        }
        std::this_thread::sleep_for(betweenConnections);
    }
}

void OwedMessages::sendThrough(MidiOutPort &port) const
{
    std::this_thread::sleep_for(afterConnecting);
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
}
