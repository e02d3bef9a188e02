#pragma once

#include "midi/MidiBackend.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <string>

/// A MIDI port of this program. Errors of the MIDI library never leave it: they are logged, and callers see
/// isOpen() and the result of openPort(). Used on the GUI thread; no call waits longer than about two
/// seconds, also when the MIDI server has stopped answering.
class MidiPort : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MidiPort)

public:
    /// Closes the port.
    ~MidiPort() override;

    /// The names of the ports that can be opened, in the library's order. Empty after an error.
    QStringList portNames();
    /// 0 after an error.
    int portCount();

    /// Opens the port with this index of portNames(), under a name of our own. Does nothing when a port is
    /// open already. Returns 0 on success, another value on failure (the error is logged).
    int openPort(int index, const std::string &name = "RtMidi");
    /// False when what was sent may not have left this process: its server did not answer in time.
    bool closePort();
    bool isOpen() const { return m_open; }

protected:
    /// @p backend may be null: the port then has no names and never opens.
    explicit MidiPort(std::unique_ptr<MidiBackend> backend, QObject *parent);

    /// Runs @p call and logs what it throws. True when it threw nothing.
    static bool attempt(const std::function<void()> &call);

    std::unique_ptr<MidiBackend> m_backend;
    bool m_open = false;
};
