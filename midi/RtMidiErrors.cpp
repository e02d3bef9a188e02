#include "midi/RtMidiErrors.h"

#include "midi/MidiLog.h"

#include <QString>

#include <stdexcept>
#include <utility>

RtMidiErrors::RtMidiErrors(RtMidi &midi)
{
    midi.setErrorCallback(&RtMidiErrors::note, this);
}

void RtMidiErrors::check()
{
    if (!m_error.empty()) {
        throw std::runtime_error(std::exchange(m_error, {}));
    }
}

void RtMidiErrors::note(RtMidiError::Type type, const std::string &text, void *self)
{
    if (type == RtMidiError::WARNING) {
        qCWarning(lcMidi).noquote() << QString::fromStdString(text);
    } else if (type == RtMidiError::DEBUG_WARNING) {
        qCDebug(lcMidi).noquote() << QString::fromStdString(text);
    } else {
        static_cast<RtMidiErrors *>(self)->m_error = text.empty() ? "unknown MIDI error" : text;
    }
}
