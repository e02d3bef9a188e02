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

// What was accepted before so many others has left.
constexpr std::size_t mostInPort = 100;

// Unsigned, so that no channel can overflow.
unsigned char statusByte(unsigned int kind, int channel)
{
    return static_cast<unsigned char>(kind + static_cast<unsigned int>(channel) - 1U);
}

bool isController(const OwedMessages::Message &message)
{
    return (message[0] & 0xF0U) == controlChange;
}

// Whether both are about the same note or the same controller.
bool concernTheSame(const OwedMessages::Message &one, const OwedMessages::Message &other)
{
    return isController(one) == isController(other) && ((one[0] ^ other[0]) & 0x0FU) == 0 &&
           one[1] == other[1];
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

MidiOutcome MidiActions::sendMidi(int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable,
                                  bool pressing)
{
    if ((!pressing && !v_off_enable) || cc == -1) {
        return {};
    }
    // The text lacks its "n" on purpose.
    qCDebug(lcEngine).nospace().noquote() << "Sendig Midi: " << ch << ' ' << cc << ' ' << v_on << ' ' << v_off
                                          << ' ' << yesNo(note) << ' ' << yesNo(pressing);

    // What ends it is owed from before it begins until after it has ended: the program may be killed in
    // between.
    const Message end{statusByte(note ? noteOff : controlChange, ch), lowByte(cc), lowByte(v_off)};
    if (pressing && v_off_enable && (note || isController(end))) {
        begun(end);
        tellAfterCrash();
    }
    const unsigned int kind = !note ? controlChange : pressing ? noteOn : noteOff;
    const Message message{statusByte(kind, ch), lowByte(cc), lowByte(pressing ? v_on : v_off)};
    const bool accepted = send(message, !pressing);
    if (!pressing) {
        ended(end);
        tellAfterCrash();
    }
    return {true, accepted, message};
}

MidiOutcome MidiActions::knobEvent(const shortCut &action, char type)
{
    switch (type) {
    case 'D':
    case 'U':
        return sendMidi(action.channel, action.cc, action.v_on, action.v_off, action.note,
                        action.v_off_enable, type == 'D');
    case 'L':
    case 'R':
        // What the knob was turned to is meant to stay.
        return sendMidi(action.channel, action.knobcc, knobValue(action, type == 'R'), action.v_off, false,
                        false, true);
    default:
        return {};
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

void MidiActions::releaseHeld()
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

void MidiActions::closePort()
{
    if (m_port.closePort()) {
        m_inPort.clear();
        tellAfterCrash();
    }
}

// Whatever is overdue goes first, so that it never ends a note that was begun since.
bool MidiActions::send(const Message &message, bool ends)
{
    sendOverdue();
    const bool accepted = m_overdue.empty() && isAccepted(message);
    logSent(message);
    if (accepted) {
        noteAccepted(message, ends);
    } else if (ends && m_port.isOpen()) {
        owe(message);
    }
    return accepted;
}

void MidiActions::sendOverdue()
{
    const auto refused = std::find_if(m_overdue.begin(), m_overdue.end(), [this](const Message &message) {
        const bool accepted = isAccepted(message);
        if (accepted) {
            logSent(message);
            noteAccepted(message, true);
        }
        return !accepted;
    });
    if (refused != m_overdue.begin()) {
        m_overdue.erase(m_overdue.begin(), refused);
        tellAfterCrash();
    }
}

// What begins a note or sets a controller anew makes the end before it void: the new one is owed its own, or
// is meant to stay.
void MidiActions::noteAccepted(const Message &message, bool ends)
{
    if (!ends) {
        const auto isVoid = [&](const Message &each) { return concernTheSame(each, message); };
        const auto kept = std::remove_if(m_inPort.begin(), m_inPort.end(), isVoid);
        if (kept != m_inPort.end()) {
            m_inPort.erase(kept, m_inPort.end());
            tellAfterCrash();
        }
    } else if (!m_port.isAllSent()) {
        if (m_inPort.size() == mostInPort) {
            m_inPort.erase(m_inPort.begin());
        }
        m_inPort.push_back(message);
        tellAfterCrash();
        retryLater();
    }
}

void MidiActions::forgetWhatLeft()
{
    if (!m_inPort.empty() && m_port.isOpen() && m_port.isAllSent()) {
        m_inPort.clear();
        tellAfterCrash();
    }
}

// The last value of a controller is the one that counts. A note is ended as often as it was begun.
void MidiActions::owe(const Message &message)
{
    const auto isSame = [&](const Message &overdue) {
        return overdue[0] == message[0] && overdue[1] == message[1];
    };
    const auto same = std::find_if(m_overdue.begin(), m_overdue.end(), isSame);
    const int most = isController(message) ? 1 : mostAlike;
    if (std::count_if(same, m_overdue.end(), isSame) < most) {
        m_overdue.push_back(message);
    } else {
        *same = message;
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
        forgetWhatLeft();
        if (!m_overdue.empty() || !m_inPort.empty()) {
            retryLater();
        }
    });
}

void MidiActions::tellAfterCrash()
{
    std::vector<Message> all = m_inPort;
    all.insert(all.end(), m_overdue.begin(), m_overdue.end());
    all.insert(all.end(), m_owed.begin(), m_owed.end());
    m_afterCrash.set(all);
}

bool MidiActions::isAccepted(const Message &message)
{
    std::vector<unsigned char> bytes(message.begin(), message.end());
    return m_port.sendMessage(&bytes) == MidiOutPort::Sent::Accepted;
}

// A note sounds as often as it was begun. A controller has one value, and is put back once.
void MidiActions::begun(const Message &end)
{
    if (isController(end)) {
        ended(end);
        m_owed.push_back(end);
    } else if (std::count(m_owed.begin(), m_owed.end(), end) < mostAlike) {
        m_owed.push_back(end);
    }
}

// Two actions may have begun the same note: the one with this release value goes, else the oldest.
void MidiActions::ended(const Message &end)
{
    auto owed = std::find(m_owed.begin(), m_owed.end(), end);
    if (owed == m_owed.end()) {
        owed = std::find_if(m_owed.begin(), m_owed.end(),
                            [&](const Message &each) { return each[0] == end[0] && each[1] == end[1]; });
    }
    if (owed != m_owed.end()) {
        m_owed.erase(owed);
    }
}
