#include "midi/MidiInPort.h"

#include "midi/MidiSystem.h"

#include <cstddef>
#include <mutex>
#include <utility>

namespace
{

QString byteText(const std::vector<unsigned char> &message, std::size_t index)
{
    return index < message.size() ? QString::number(message[index]) : QString();
}

} // namespace

struct MidiInPort::Gate {
    std::mutex mutex;
    MidiInPort *port = nullptr; // null once the port is being destroyed
};

MidiInPort::MidiInPort(QObject *parent)
    : MidiInPort(openMidiInput(), parent)
{
}

MidiInPort::MidiInPort(std::unique_ptr<MidiBackend> backend, QObject *parent)
    : MidiPort(std::move(backend), parent)
    , m_gate(std::make_shared<Gate>())
{
    m_gate->port = this;
    if (!m_backend) {
        return;
    }
    attempt([this] {
        m_backend->setCallback([gate = m_gate](const std::vector<unsigned char> &message) {
            const std::lock_guard lock(gate->mutex);
            if (gate->port) {
                Q_EMIT gate->port->gotMessage(byteText(message, 0), byteText(message, 1),
                                              byteText(message, 2));
            }
        });
    });
}

MidiInPort::~MidiInPort()
{
    {
        const std::lock_guard lock(m_gate->mutex);
        m_gate->port = nullptr;
    }
    m_backend.reset();
}
