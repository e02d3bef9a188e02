#include "engine/MidiActions.h"

#include "engine/EngineLog.h"
#include "midi/MidiOutPort.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

constexpr unsigned int noteOff = 0x80;
constexpr unsigned int noteOn = 0x90;
constexpr unsigned int controlChange = 0xB0;

// Ten buttons and the knob cannot have begun one note more often: more comes from a device that repeats
// itself.
constexpr int mostAlike = 11;

// Unsigned, so that no channel can overflow.
unsigned char statusByte(unsigned int kind, int channel)
{
    return static_cast<unsigned char>(kind + static_cast<unsigned int>(channel) - 1U);
}

unsigned char lowByte(int value)
{
    return static_cast<unsigned char>(value);
}

const char *yesNo(bool value)
{
    return value ? "true" : "false";
}

} // namespace

MidiActions::MidiActions(MidiOutPort &port)
    : m_port(port)
{
}

QString MidiActions::chooseOutputPort()
{
    qCInfo(lcEngine) << "searching for MIDIOUT";
    const QStringList names = m_port.portNames();
    for (int index = 0; index < names.size(); ++index) {
        const QString &name = names.at(index);
        qCInfo(lcEngine).noquote() << name;
        if (!name.contains(QLatin1String("FROM"))) {
            continue;
        }
        qCInfo(lcEngine).noquote().nospace() << "Using MIDI " << name;
        if (m_port.openPort(index) == 0) {
            return name;
        }
        qCWarning(lcEngine) << "error opening MidiOut";
    }
    qCWarning(lcEngine) << "error opening MidiOut";
    return QLatin1String(notAvailable);
}

void MidiActions::sendMidi(int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable, bool pressing)
{
    if ((!pressing && !v_off_enable) || cc == -1) {
        return;
    }
    // The text lacks its "n" on purpose.
    qCDebug(lcEngine).nospace().noquote() << "Sendig Midi: " << ch << ' ' << cc << ' ' << v_on << ' ' << v_off
                                          << ' ' << yesNo(note) << ' ' << yesNo(pressing);

    const unsigned int kind = !note ? controlChange : pressing ? noteOn : noteOff;
    send({statusByte(kind, ch), lowByte(cc), lowByte(pressing ? v_on : v_off)});

    const Message end{statusByte(noteOff, ch), lowByte(cc), lowByte(v_off)};
    if (note && !pressing) {
        noteEnded(end);
    } else if (note && v_off_enable && m_owed.count(end) < mostAlike) {
        m_owed.append(end);
    }
}

void MidiActions::knobEvent(const shortCut &action, char type)
{
    switch (type) {
    case 'D':
    case 'U':
        sendMidi(action.channel, action.cc, action.v_on, action.v_off, action.note, action.v_off_enable,
                 type == 'D');
        break;
    case 'L':
    case 'R':
        sendMidi(action.channel, action.knobcc, knobValue(action, type == 'R'), action.v_off, false,
                 action.v_off_enable, true);
        break;
    default:
        break;
    }
}

// Each flag overrides the ones before it.
int MidiActions::knobValue(const shortCut &action, bool right)
{
    int value = 0;
    if (action.m01h) {
        value = right ? 0x01 : 0x7F;
    }
    if (action.m3fh) {
        value = right ? 0x41 : 0x3F;
    }
    if (action.m0_127) {
        // 127 is sent but never stored: after it a left step sends 125. Meant so.
        if (!right) {
            value = m_knobValue = std::max(m_knobValue - 1, 0);
        } else if (m_knobValue <= 125) {
            value = ++m_knobValue;
        } else {
            value = 127;
        }
    }
    return value;
}

void MidiActions::releaseHeldNotes()
{
    const QVector<Message> owed = std::exchange(m_owed, {});
    for (const Message &message : owed) {
        send(message);
    }
}

void MidiActions::send(const Message &message)
{
    std::vector<unsigned char> bytes(message.begin(), message.end());
    m_port.sendMessage(&bytes);
    if (lcEngine().isDebugEnabled()) {
        const auto text =
            QByteArray(reinterpret_cast<const char *>(bytes.data()), static_cast<int>(bytes.size()));
        qCDebug(lcEngine).noquote().nospace() << "Midi Sent: " << text.toHex(' ').toUpper();
    }
}

// Two actions may have begun the same note: the one with this release value goes, else the oldest.
void MidiActions::noteEnded(const Message &noteOffMessage)
{
    auto ended = std::find(m_owed.begin(), m_owed.end(), noteOffMessage);
    if (ended == m_owed.end()) {
        ended = std::find_if(m_owed.begin(), m_owed.end(), [&](const Message &owed) {
            return owed[0] == noteOffMessage[0] && owed[1] == noteOffMessage[1];
        });
    }
    if (ended != m_owed.end()) {
        m_owed.erase(ended);
    }
}
