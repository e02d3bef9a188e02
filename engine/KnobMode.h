#pragma once

/// What the knob does. Chosen by the buttons that carry the mode as their action, on press and on release
/// alike, and kept when they are let go.
///
/// | mode          | chosen by        | touch                | turn left | turn right | let go              |
/// |---------------|------------------|----------------------|-----------|------------|---------------------|
/// | Circular      | "circular"       | drag begins (*)      | y + 1     | y - 1      | drag ends, pointer  |
/// |               |                  |                      |           |            | to the return point |
/// | Vertical      | "vertical"       | drag begins          | y + 1     | y - 1      | drag ends           |
/// | Horizontal    | "horizontal"     | drag begins          | x - 1     | x + 1      | drag ends           |
/// | UpDownKeys    | " ↓  ↑ Key"      | -                    | tap Up    | tap Down   | -                   |
/// | LeftRightKeys | "← → Key"        | -                    | tap Right | tap Left   | -                   |
/// | Midi          | the knob as MIDI | MIDI press           | MIDI step | MIDI step  | MIDI release        |
///
/// A drag is the left button down and the pointer hidden. (*) And the return point is where the pointer is.
///
/// That a left turn taps the Right arrow is intended. A mode may change while the knob is touched: each event
/// goes by the mode of its moment, and what the touch began (left button, hidden pointer) ends with the touch
/// in any case. While the game is called up, the knob's events go to the game instead, whatever the mode.
enum class KnobMode : int {
    Circular = 0,
    Vertical = 1,
    Horizontal = 2,
    UpDownKeys = 3,
    LeftRightKeys = 4,
    Midi = 5,
};
