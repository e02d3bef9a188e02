#include "midi/RtMidiBackend.h"

#include "midi/MidiLog.h"

#include <exception>
#include <utility>

std::unique_ptr<MidiBackend> RtMidiBackend::openOutput(RtMidi::Api api)
{
    return std::unique_ptr<MidiBackend>(
        new RtMidiBackend(std::make_unique<RtMidiOut>(api, "Veltrix"), nullptr));
}

std::unique_ptr<MidiBackend> RtMidiBackend::openInput(RtMidi::Api api)
{
    constexpr unsigned int queueLength = 100;
    return std::unique_ptr<MidiBackend>(
        new RtMidiBackend(nullptr, std::make_unique<RtMidiIn>(api, "RtMidi Input Client", queueLength)));
}

RtMidiBackend::RtMidiBackend(std::unique_ptr<RtMidiOut> out, std::unique_ptr<RtMidiIn> in)
    : m_out(std::move(out))
    , m_in(std::move(in))
    , m_midi(m_out ? static_cast<RtMidi &>(*m_out) : *m_in)
    , m_errors(m_midi)
{
}

unsigned int RtMidiBackend::portCount()
{
    const unsigned int count = m_midi.getPortCount();
    m_errors.check();
    return count;
}

std::string RtMidiBackend::portName(unsigned int index)
{
    std::string name = m_midi.getPortName(index);
    m_errors.check();
    return name;
}

void RtMidiBackend::openPort(unsigned int index, const std::string &name)
{
    m_midi.openPort(index, name);
    m_errors.check();
}

void RtMidiBackend::closePort()
{
    m_midi.closePort();
    m_errors.check();
}

void RtMidiBackend::sendMessage(const std::vector<unsigned char> &message)
{
    Q_ASSERT_X(m_out, "RtMidiBackend", "an input sends nothing");
    m_out->sendMessage(&message);
    m_errors.check();
}

void RtMidiBackend::setCallback(Callback callback)
{
    Q_ASSERT_X(m_in, "RtMidiBackend", "an output receives nothing");
    m_callback = std::move(callback);
    m_in->setCallback(&RtMidiBackend::onMessage, this);
    m_errors.check();
}

// Below this frame is the driver's C code, which nothing may be thrown through.
void RtMidiBackend::onMessage(double, std::vector<unsigned char> *message, void *self)
{
    try {
        static_cast<RtMidiBackend *>(self)->m_callback(*message);
    } catch (const std::exception &error) {
        qCWarning(lcMidi).noquote() << QString::fromLocal8Bit(error.what());
    }
}
