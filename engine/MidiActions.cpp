#include "engine/MidiActions.h"

#include "engine/Clock.h"
#include "engine/EngineLog.h"
#include "midi/MidiOutPort.h"
#include "midi/OwedMessages.h"

#include <algorithm>
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

void logSent(const OwedMessages::Message &message)
{
    if (lcEngine().isDebugEnabled()) {
        const auto text = QByteArray(reinterpret_cast<const char *>(message.data()), int(message.size()));
        qCDebug(lcEngine).noquote().nospace() << "Midi Sent: " << text.toHex(' ').toUpper();
    }
}

} // namespace

MidiActions::MidiActions(MidiOutPort &port, OwedMessages &afterCrash, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_port(port)
    , m_afterCrash(afterCrash)
    , m_clock(clock)
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
            m_afterCrash.setPort(name);
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

    // A note is owed from before it begins until after it has ended: the program may be killed in between.
    const Message end{statusByte(noteOff, ch), lowByte(cc), lowByte(v_off)};
    if (note && pressing && v_off_enable && std::count(m_owed.begin(), m_owed.end(), end) < mostAlike) {
        m_owed.push_back(end);
        tellAfterCrash();
    }
    const unsigned int kind = !note ? controlChange : pressing ? noteOn : noteOff;
    send({statusByte(kind, ch), lowByte(cc), lowByte(pressing ? v_on : v_off)}, !pressing);
    if (note && !pressing) {
        noteEnded(end);
        tellAfterCrash();
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
    if (m_owed.empty()) {
        return;
    }
    for (const Message &message : m_owed) {
        send(message, true);
    }
    m_owed.clear();
    tellAfterCrash();
}

// Whatever is overdue goes first, so that it never ends a note that was begun since.
void MidiActions::send(const Message &message, bool ends)
{
    sendOverdue();
    const bool accepted = m_overdue.empty() && isAccepted(message);
    logSent(message);
    if (!accepted && ends && m_port.isOpen()) {
        owe(message);
    }
}

void MidiActions::sendOverdue()
{
    const auto refused = std::find_if(m_overdue.begin(), m_overdue.end(), [this](const Message &message) {
        const bool accepted = isAccepted(message);
        if (accepted) {
            logSent(message);
        }
        return !accepted;
    });
    if (refused != m_overdue.begin()) {
        m_overdue.erase(m_overdue.begin(), refused);
        tellAfterCrash();
    }
}

// The last value of a controller is the one that counts.
void MidiActions::owe(const Message &message)
{
    const auto same = std::find_if(m_overdue.begin(), m_overdue.end(), [&](const Message &overdue) {
        return overdue[0] == message[0] && overdue[1] == message[1];
    });
    if (same != m_overdue.end()) {
        *same = message;
    } else {
        m_overdue.push_back(message);
    }
    tellAfterCrash();
    retryLater();
}

void MidiActions::retryLater()
{
    if (m_retries || !m_port.mayAcceptLater()) {
        return;
    }
    m_retries = true;
    m_clock.singleShot(retryInterval, this, [this] {
        m_retries = false;
        sendOverdue();
        if (!m_overdue.empty()) {
            retryLater();
        }
    });
}

void MidiActions::tellAfterCrash()
{
    std::vector<Message> all = m_overdue;
    all.insert(all.end(), m_owed.begin(), m_owed.end());
    m_afterCrash.set(all);
}

bool MidiActions::isAccepted(const Message &message)
{
    std::vector<unsigned char> bytes(message.begin(), message.end());
    return m_port.sendMessage(&bytes) == MidiOutPort::Sent::Accepted;
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
