#include "midi/MidiOutPort.h"

#include "midi/MidiLog.h"
#include "midi/MidiSystem.h"

#include <exception>
#include <utility>

MidiOutPort::MidiOutPort(QObject *parent)
    : MidiOutPort(openMidiOutput(), parent)
{
}

MidiOutPort::MidiOutPort(std::unique_ptr<MidiBackend> backend, QObject *parent)
    : MidiPort(std::move(backend), parent)
{
}

bool MidiOutPort::isConnected()
{
    bool connected = false;
    return m_open && attempt([&] { connected = m_backend->isConnected(); }) && connected;
}

MidiOutPort::Sent MidiOutPort::sendMessage(std::vector<unsigned char> *message)
{
    if (!m_open || message == nullptr || message->empty()) {
        return Sent::Never;
    }
    try {
        const Sent result = room(message->size());
        if (result == Sent::Accepted) {
            m_backend->sendMessage(*message);
            m_lastError.clear();
        }
        return result;
    } catch (const std::exception &error) {
        const QString text = QString::fromLocal8Bit(error.what());
        if (text != m_lastError) {
            m_lastError = text;
            qCWarning(lcMidi).noquote() << text;
        }
        return Sent::Later;
    }
}

MidiOutPort::Sent MidiOutPort::room(std::size_t bytes)
{
    if (!m_backend->isAlive()) {
        if (!std::exchange(m_goneLogged, true)) {
            qCWarning(lcMidi) << "the MIDI server has gone; messages are dropped from now on";
        }
        return Sent::Never;
    }
    if (!m_backend->hasRoomFor(bytes)) {
        if (!std::exchange(m_fullLogged, true)) {
            qCWarning(lcMidi) << "the MIDI server does not keep up; messages are dropped until it does";
        }
        return Sent::Later;
    }
    m_fullLogged = false;
    return Sent::Accepted;
}
