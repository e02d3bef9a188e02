#pragma once

#include "midi/MidiPort.h"

#include <QString>

#include <memory>

/// MIDI input under the client name "RtMidi Input Client".
///
/// May be destroyed while messages arrive. Not from a slot that is connected directly: that slot runs inside
/// the driver's callback, and the destructor waits for its end.
class MidiInPort final : public MidiPort
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MidiInPort)

public:
    /// Uses the default MIDI system, or the first other one that works.
    explicit MidiInPort(QObject *parent = nullptr);
    explicit MidiInPort(std::unique_ptr<MidiBackend> backend, QObject *parent = nullptr);
    ~MidiInPort() override;

Q_SIGNALS:
    /// The first three bytes of an incoming message as decimal texts; a byte that a shorter message does not
    /// have is an empty text. Emitted on the MIDI driver's thread, so that receivers of other threads get it
    /// queued.
    void gotMessage(const QString &byte0, const QString &byte1, const QString &byte2);

private:
    struct Gate;

    std::shared_ptr<Gate> m_gate; // outlives a callback that is still under way
};
