#pragma once

#include "mapping/ShortCut.h"

#include <QString>
#include <QVector>

#include <array>

class MidiOutPort;

/// Turns MIDI actions into three-byte messages and sends them through the output port.
///
/// Keeps a ledger of the notes that were begun by an action that also ends them on release, and have not been
/// ended yet. Notes whose action sends nothing on release are meant to ring on and are not in it. The ledger
/// watches; what is sent and in which order does not depend on it. Used on the GUI thread.
class MidiActions
{
    Q_DISABLE_COPY_MOVE(MidiActions)

public:
    /// The name of no port. Untranslated; the words are marked for the translators.
    static constexpr char notAvailable[] = QT_TRANSLATE_NOOP("MidiActions", "Not Available");

    /// @p port must outlive this object.
    explicit MidiActions(MidiOutPort &port);

    /// Opens the first port whose name contains "FROM" and that can be opened. Returns its name, or
    /// notAvailable: messages then go nowhere. To be called once, at start.
    QString chooseOutputPort();

    /// Sends the message of a button's MIDI action.
    /// Sends nothing on a release without @p v_off_enable, and nothing when @p cc is -1.
    /// Numbers are not checked: whatever their low 8 bits say is sent, channel 0 included.
    void sendMidi(int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable, bool pressing);

    /// A knob event in MIDI mode; @p action is the record that configures the knob.
    /// @p type is 'D' (touch: as a press), 'U' (release), 'L' or 'R' (a step); others do nothing.
    void knobEvent(const shortCut &action, char type);

    /// Puts the running value of the absolute encoding back to 0.
    void resetKnobValue() { m_knobValue = 0; }

    /// Sends the note-off of every note in the ledger, oldest first, and empties it.
    void releaseHeldNotes();

private:
    using Message = std::array<unsigned char, 3>;

    void send(const Message &message);
    void noteEnded(const Message &noteOff);
    int knobValue(const shortCut &action, bool right);

    MidiOutPort &m_port;
    QVector<Message> m_owed; // note-off messages, in the order of their note-ons
    int m_knobValue = 0;     // 0 to 126
};
