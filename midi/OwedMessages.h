#pragma once

#include <QString>
#include <QtGlobal>

#include <array>
#include <atomic>
#include <chrono>
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
    /// one that works, until they are known to have arrived; at once no more when no MIDI system runs, for
    /// what sounded went with it. Without the port nothing is sent. For a process that does nothing else and
    /// ends next: after @p altogether a call that is under way is left behind, which goes on to use this
    /// object.
    void send(std::chrono::milliseconds altogether = std::chrono::seconds(30)) const;

private:
    std::size_t count() const;
    void keepSending(std::chrono::milliseconds altogether) const;
    /// @p unseen: also where the server does not show that the port is connected.
    bool sendThrough(MidiOutPort &port, bool unseen) const;

    std::array<char, 256> m_port{};
    std::array<std::atomic<quint32>, capacity> m_messages{}; // 0 behind the last one
};
