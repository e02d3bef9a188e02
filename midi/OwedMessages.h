#pragma once

#include <QString>
#include <QtGlobal>

#include <array>
#include <atomic>
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

    /// The port's name, as MidiOutPort lists it; cut at 255 bytes of UTF-8, behind a whole character. To be
    /// set once, before anything else.
    void setPort(const QString &name);

    /// Whether a port that is listed as @p name is the one that was set.
    bool isPort(const QString &name) const;

    /// Takes @p messages in place of those before. Where they were only added to, or only taken from, what is
    /// in both is never missing meanwhile; it may be there twice.
    void set(const std::vector<Message> &messages);

    /// Whether send() would send @p message now. May be asked in a signal handler.
    bool contains(const Message &message) const;

    bool isEmpty() const { return m_messages.front() == 0; }

    /// Sends them to the port through a connection of its own, on the default MIDI system or the first other
    /// one that works. For a process that does nothing else: it is tried for half a minute, and an answer
    /// that is under way then is waited for. Without the port nothing is sent.
    void send() const;

private:
    std::size_t count() const;
    bool sendThrough(MidiOutPort &port) const;

    std::array<char, 256> m_port{};
    std::array<std::atomic<quint32>, capacity> m_messages{}; // 0 behind the last one
};
