#include "tests/support/listener/MidiTap.h"

#include "tests/support/listener/Output.h"

#include <RtMidi.h>
#include <cstdio>
#include <vector>

namespace listener
{

namespace
{

// Called on a thread of the MIDI system.
void onMessage(double, std::vector<unsigned char> *message, void *output)
{
    const auto now = monotonicNow();
    std::string text = "midi";
    for (const unsigned char byte : *message) {
        char digits[8];
        std::snprintf(digits, sizeof digits, " %02X", static_cast<unsigned>(byte));
        text += digits;
    }
    static_cast<const Output *>(output)->line(now, text.c_str());
}

} // namespace

MidiTap::MidiTap(const std::string &client, const std::string &port, const Output &output)
    : m_input(std::make_unique<RtMidiIn>(RtMidi::UNIX_JACK, client))
{
    m_input->setCallback(onMessage, const_cast<Output *>(&output));
    m_input->openVirtualPort(port);
}

MidiTap::~MidiTap() = default;

} // namespace listener
