#pragma once

#include "midi/MidiBackend.h"
#include "midi/RtMidiErrors.h"

#include <RtMidi.h>
#include <memory>

/// RtMidi on one of the MIDI systems that the library was compiled with: an output, as client "Veltrix", or
/// an input, as client "RtMidi Input Client".
class RtMidiBackend final : public MidiBackend
{
    Q_DISABLE_COPY_MOVE(RtMidiBackend)

public:
    /// Both throw RtMidiError when @p api cannot be used.
    static std::unique_ptr<MidiBackend> openOutput(RtMidi::Api api);
    static std::unique_ptr<MidiBackend> openInput(RtMidi::Api api);

    ~RtMidiBackend() override = default;

    unsigned int portCount() override;
    std::string portName(unsigned int index) override;
    void openPort(unsigned int index, const std::string &name) override;
    void closePort() override;
    void sendMessage(const std::vector<unsigned char> &message) override;
    void setCallback(Callback callback) override;

private:
    RtMidiBackend(std::unique_ptr<RtMidiOut> out, std::unique_ptr<RtMidiIn> in);

    static void onMessage(double time, std::vector<unsigned char> *message, void *self);

    Callback m_callback;                    // outlives the input, which calls it
    const std::unique_ptr<RtMidiOut> m_out; // one of the two is null
    const std::unique_ptr<RtMidiIn> m_in;
    RtMidi &m_midi; // the other
    RtMidiErrors m_errors;
};
