#pragma once

#include "midi/MidiPort.h"

#include <vector>

/// MIDI output under the client name "Veltrix".
class MidiOutPort final : public MidiPort
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MidiOutPort)

public:
    /// Uses the default MIDI system, or the first other one that works.
    explicit MidiOutPort(QObject *parent = nullptr);
    explicit MidiOutPort(std::unique_ptr<MidiBackend> backend, QObject *parent = nullptr);

    /// What became of a message.
    enum class Sent {
        Accepted, ///< it is on its way
        Later,    ///< dropped, but the same message may be accepted later
        Never,    ///< dropped, and so will be all others: no port is open, or its system has gone for good
    };
    Q_ENUM(Sent)

    /// False when every message from now on will be dropped.
    bool mayAcceptLater() const { return m_open && m_backend->isAlive(); }

    /// True when all that was accepted has certainly left this process, which takes a server's next cycles,
    /// and when no port is open. False for some cycles, too, after a port was opened: what is sent before a
    /// server has taken up a connection is lost.
    bool isAllSent() const { return !m_open || m_backend->isAllSent(); }

    /// Whether what is accepted is known to arrive at the port. One that was opened a moment ago may need
    /// some of a server's cycles for that. May wait for a server's answer.
    bool isConnected();

public Q_SLOTS:
    /// Sends @p message at once when a port is open, else does nothing. Never blocks: when the system behind
    /// the port has gone, that is logged once and messages are dropped; while it stands still and holds as
    /// much as it can take, messages are dropped too. @p message stays the caller's; nothing is sent of an
    /// empty one.
    MidiOutPort::Sent sendMessage(std::vector<unsigned char> *message);

private:
    Sent room(std::size_t bytes);

    bool m_goneLogged = false;
    bool m_fullLogged = false;
    QString
        m_lastError; // since a message was accepted: one that is tried again is not worth a line each time
};
