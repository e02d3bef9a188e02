#pragma once

#include <memory>
#include <string>

class RtMidiIn;

namespace listener
{

class Output;

/// A MIDI input port that prints what arrives there.
class MidiTap
{
public:
    /// @p output must outlive this object. Throws RtMidiError when the port cannot be made.
    MidiTap(const std::string &client, const std::string &port, const Output &output);
    ~MidiTap();

    MidiTap(const MidiTap &) = delete;
    MidiTap &operator=(const MidiTap &) = delete;

private:
    std::unique_ptr<RtMidiIn> m_input;
};

} // namespace listener
