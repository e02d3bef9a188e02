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

public Q_SLOTS:
    /// Sends @p message at once when a port is open, else does nothing. Never blocks: when the system behind
    /// the port has gone, that is logged once and messages are dropped; while it stands still and holds as
    /// much as it can take, messages are dropped too. @p message stays the caller's.
    void sendMessage(std::vector<unsigned char> *message);

private:
    bool takesMessage(std::size_t bytes);

    bool m_goneLogged = false;
    bool m_fullLogged = false;
};
