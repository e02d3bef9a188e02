#pragma once

#include "midi/MidiBackend.h"
#include "midi/RtMidiErrors.h"

#include <RtMidi.h>

/// RtMidi's input, as client "RtMidi Input Client" of one of the MIDI systems that the library was compiled
/// with.
class RtMidiInBackend final : public MidiBackend
{
    Q_DISABLE_COPY_MOVE(RtMidiInBackend)

public:
    /// Throws RtMidiError when @p api cannot be used.
    explicit RtMidiInBackend(RtMidi::Api api);

    unsigned int portCount() override;
    std::string portName(unsigned int index) override;
    void openPort(unsigned int index, const std::string &name) override;
    void closePort() override;
    void sendMessage(const std::vector<unsigned char> &message) override;
    void setCallback(Callback callback) override;

private:
    static void onMessage(double time, std::vector<unsigned char> *message, void *self);

    Callback m_callback; // outlives m_midi, which calls it
    RtMidiIn m_midi;
    RtMidiErrors m_errors;
};
