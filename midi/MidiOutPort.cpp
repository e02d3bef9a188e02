#include "midi/MidiOutPort.h"

#include "midi/MidiLog.h"
#include "midi/MidiSystem.h"

#include <utility>

MidiOutPort::MidiOutPort(QObject *parent)
    : MidiOutPort(openMidiOutput(), parent)
{
}

MidiOutPort::MidiOutPort(std::unique_ptr<MidiBackend> backend, QObject *parent)
    : MidiPort(std::move(backend), parent)
{
}

void MidiOutPort::sendMessage(std::vector<unsigned char> *message)
{
    if (!m_open || message == nullptr || message->empty()) {
        return;
    }
    attempt([&] {
        if (takesMessage(message->size())) {
            m_backend->sendMessage(*message);
        }
    });
}

bool MidiOutPort::takesMessage(std::size_t bytes)
{
    if (!m_backend->isAlive()) {
        if (!std::exchange(m_goneLogged, true)) {
            qCWarning(lcMidi) << "the MIDI server has gone; messages are dropped from now on";
        }
        return false;
    }
    if (!m_backend->hasRoomFor(bytes)) {
        if (!std::exchange(m_fullLogged, true)) {
            qCWarning(lcMidi) << "the MIDI server does not keep up; messages are dropped until it does";
        }
        return false;
    }
    m_fullLogged = false;
    return true;
}
