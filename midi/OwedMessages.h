#pragma once

#include <QtGlobal>

#include <array>
#include <atomic>
#include <string>
#include <vector>

class MidiOutPort;

/// The messages that have to be sent after the program is gone, so that no note sounds on. It can stand in
/// memory that is shared with another process: it consists of lock-free words, and any moment's state is a
/// valid one.
class OwedMessages
{
    Q_DISABLE_COPY_MOVE(OwedMessages)

public:
    using Message = std::array<unsigned char, 3>;

    /// More are not kept.
    static constexpr std::size_t capacity = 256;

    OwedMessages() = default;

    /// The port's name, as the MIDI library lists it; cut at 255 bytes. To be set before anything else.
    void setPort(const std::string &name);

    /// Takes @p messages in place of those before. What is in both is never missing meanwhile.
    void set(const std::vector<Message> &messages);

    bool isEmpty() const { return m_messages.front() == 0; }

    /// Sends them to the port through a connection of its own, on the default MIDI system or the first other
    /// one that works. For a process that does nothing else; takes up to some seconds. Without the port
    /// nothing is sent.
    void send() const;

private:
    void sendThrough(MidiOutPort &port) const;

    std::array<char, 256> m_port{};
    std::array<std::atomic<quint32>, capacity> m_messages{}; // 0 behind the last one
};
