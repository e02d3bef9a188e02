#pragma once

#include "engine/KnobMode.h"
#include "mapping/Layer.h"
#include "mapping/ShortCut.h"

#include <array>

/// What became of a MIDI action.
struct MidiOutcome {
    bool due = false;      ///< whether there was anything to send
    bool accepted = false; ///< whether the output has taken it
    std::array<unsigned char, 3> message{};
};

/// An event of the device, and what was done for it. For who shows it: it is told after it was done.
struct DoneAction {
    enum class Event { Press, Release, Touch, LetGo, TurnLeft, TurnRight };

    static constexpr int knob = -1;

    int control = knob; ///< 0 to 9, or knob
    Event event = Event::Press;
    Layer layer = Layer::Normal;        ///< where a button's entry was looked up
    KnobMode mode = KnobMode::Circular; ///< the knob's, when the event came
    shortCut action;                    ///< the entry: of the button, or the one that makes the knob's MIDI
    MidiOutcome midi;                   ///< of a MIDI action
};
