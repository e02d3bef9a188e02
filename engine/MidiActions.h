#pragma once

#include "engine/DoneAction.h"

#include <QObject>
#include <QString>

#include <array>
#include <vector>

class Clock;
class MidiOutPort;
class OwedMessages;

/// Turns MIDI actions into three-byte messages and sends them through the output port.
///
/// Keeps a ledger of the notes and controllers that were begun by an action that also ends them on release,
/// and have not been ended yet. Those whose action sends nothing on release are meant to stay and are not in
/// it, nor are the values that the knob was turned to. The ledger watches; what is sent and in which order
/// does not depend on it.
///
/// What ends a note or puts a controller back is owed until the port has accepted it: while the port is full
/// it is tried again every 50 ms, and goes before any other message. A port may keep what it accepted until
/// its server fetches it: until then the end is owed after a crash. Used on the GUI thread.
class MidiActions : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MidiActions)

public:
    /// The name of no port. Untranslated; the words are marked for the translators.
    static constexpr char notAvailable[] = QT_TRANSLATE_NOOP("MidiActions", "Not Available");

    static constexpr int retryInterval = 50; ///< ms

    /// @p afterCrash is kept up to date with what would be owed if the program ended now. The arguments must
    /// outlive this object.
    MidiActions(MidiOutPort &port, OwedMessages &afterCrash, Clock &clock, QObject *parent = nullptr);

    /// Opens the first port whose name contains "FROM" and that can be opened. Returns its name, or
    /// notAvailable: messages then go nowhere. To be called once, at start.
    QString chooseOutputPort();

    /// Sends the message of a button's MIDI action.
    /// Sends nothing on a release without @p v_off_enable, and nothing when @p cc is -1.
    /// Numbers are not checked: whatever their low 8 bits say is sent, channel 0 included.
    /// Returns what became of it.
    MidiOutcome sendMidi(int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable, bool pressing);

    /// A knob event in MIDI mode; @p action is the record that configures the knob.
    /// @p type is 'D' (touch: as a press), 'U' (release), 'L' or 'R' (a step); others do nothing.
    MidiOutcome knobEvent(const shortCut &action, char type);

    /// Puts the running value of the absolute encoding back to 0.
    void resetKnobValue() { m_knobValue = 0; }

    /// Sends what ends each note and puts each controller of the ledger back, oldest first, and empties it.
    void releaseHeld();

    /// Closes the port. What its server has not fetched then stays owed after a crash. To be called last.
    void closePort();

private:
    using Message = std::array<unsigned char, 3>;

    bool isAccepted(const Message &message);
    bool send(const Message &message, bool ends);
    void sendOverdue();
    void noteAccepted(const Message &message, bool ends);
    void forgetWhatLeft();
    void retryLater();
    void owe(const Message &message);
    void tellAfterCrash();
    void begun(const Message &end);
    void ended(const Message &end);
    int knobValue(const shortCut &action, bool right);

    MidiOutPort &m_port;
    OwedMessages &m_afterCrash;
    Clock &m_clock;
    std::vector<Message> m_owed;    // what ends what was begun, in its order; controllers once each
    std::vector<Message> m_overdue; // what ends or puts back and was not accepted, oldest first
    std::vector<Message> m_inPort; // what ends or puts back, was accepted and may not have left, oldest first
    bool m_retries = false;
    int m_knobValue = 0; // 0 to 126
};
