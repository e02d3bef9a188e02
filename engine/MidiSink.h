#pragma once

#include "mapping/ShortCut.h"

#include <QtGlobal>

/// The MIDI side of an event, as the dispatcher asks for it. Used on the GUI thread.
class MidiSink
{
    Q_DISABLE_COPY_MOVE(MidiSink)

public:
    MidiSink() = default;
    virtual ~MidiSink() = default;

    /// Sends the message of a button's MIDI action.
    virtual void sendMidi(int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable,
                          bool pressing) = 0;

    /// A knob event in MIDI mode; @p action is the record that configures the knob.
    virtual void knobEvent(const shortCut &action, char type) = 0;

    /// Puts the running value of the absolute encoding back to 0.
    virtual void resetKnobValue() = 0;

    /// Ends the notes that a release should have ended and did not.
    virtual void releaseHeldNotes() = 0;
};
