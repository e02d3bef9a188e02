#pragma once

#include "midi/MidiBackend.h"
#include "midi/RtMidiErrors.h"

#include <RtMidi.h>

/// RtMidi's output, as client "Veltrix" of one of the MIDI systems that the library was compiled with.
class RtMidiOutBackend final : public MidiBackend
{
    Q_DISABLE_COPY_MOVE(RtMidiOutBackend)

public:
    /// Throws RtMidiError when @p api cannot be used.
    explicit RtMidiOutBackend(RtMidi::Api api);

    unsigned int portCount() override;
    std::string portName(unsigned int index) override;
    void openPort(unsigned int index, const std::string &name) override;
    void closePort() override;
    void sendMessage(const std::vector<unsigned char> &message) override;
    void setCallback(Callback callback) override;

private:
    RtMidiOut m_midi;
    RtMidiErrors m_errors;
};
