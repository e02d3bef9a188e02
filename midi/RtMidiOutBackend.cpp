#include "midi/RtMidiOutBackend.h"

RtMidiOutBackend::RtMidiOutBackend(RtMidi::Api api)
    : m_midi(api, "Veltrix")
    , m_errors(m_midi)
{
}

unsigned int RtMidiOutBackend::portCount()
{
    const unsigned int count = m_midi.getPortCount();
    m_errors.check();
    return count;
}

std::string RtMidiOutBackend::portName(unsigned int index)
{
    std::string name = m_midi.getPortName(index);
    m_errors.check();
    return name;
}

void RtMidiOutBackend::openPort(unsigned int index, const std::string &name)
{
    m_midi.openPort(index, name);
    m_errors.check();
}

void RtMidiOutBackend::closePort()
{
    m_midi.closePort();
    m_errors.check();
}

void RtMidiOutBackend::sendMessage(const std::vector<unsigned char> &message)
{
    m_midi.sendMessage(&message);
    m_errors.check();
}

void RtMidiOutBackend::setCallback(Callback)
{
    Q_ASSERT_X(false, "RtMidiOutBackend", "an output receives nothing");
}
