#include "midi/RtMidiInBackend.h"

#include "midi/MidiLog.h"

#include <exception>
#include <utility>

RtMidiInBackend::RtMidiInBackend(RtMidi::Api api)
    : m_midi(api, "RtMidi Input Client", 100)
    , m_errors(m_midi)
{
}

unsigned int RtMidiInBackend::portCount()
{
    const unsigned int count = m_midi.getPortCount();
    m_errors.check();
    return count;
}

std::string RtMidiInBackend::portName(unsigned int index)
{
    std::string name = m_midi.getPortName(index);
    m_errors.check();
    return name;
}

void RtMidiInBackend::openPort(unsigned int index, const std::string &name)
{
    m_midi.openPort(index, name);
    m_errors.check();
}

void RtMidiInBackend::closePort()
{
    m_midi.closePort();
    m_errors.check();
}

void RtMidiInBackend::sendMessage(const std::vector<unsigned char> &)
{
    Q_ASSERT_X(false, "RtMidiInBackend", "an input sends nothing");
}

void RtMidiInBackend::setCallback(Callback callback)
{
    m_callback = std::move(callback);
    m_midi.setCallback(&RtMidiInBackend::onMessage, this);
    m_errors.check();
}

// Below this frame is the driver's C code, which nothing may be thrown through.
void RtMidiInBackend::onMessage(double, std::vector<unsigned char> *message, void *self)
{
    try {
        static_cast<RtMidiInBackend *>(self)->m_callback(*message);
    } catch (const std::exception &error) {
        qCWarning(lcMidi).noquote() << QString::fromLocal8Bit(error.what());
    }
}
