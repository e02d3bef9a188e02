#pragma once

#include <QString>
#include <QtGlobal>

/// The assignment of one control in one layer: a keyboard shortcut, a special action or a MIDI message.
///
/// What it is, is told by `key1` (see SpecialAction.h). A plain value; the initialisers are what an entry
/// holds that no file and no user has set.
struct shortCut {
    qint32 key1 = 0; ///< first virtual-key code (-1: none), or one of the markers in SpecialAction.h
    qint32 key2 = 0; ///< second virtual-key code (-1: none); the code of a special action
    qint32 key3 = 0; ///< third virtual-key code (-1: none)
    QString label;   ///< text for display only, never parsed

    qint32 channel = 0;       ///< MIDI channel, 1 to 16
    qint32 cc = 0;            ///< controller number, or note number when `note` is set; -1: send nothing
    qint32 v_on = 0;          ///< third MIDI byte on press, 0 to 127
    qint32 v_off = 0;         ///< third MIDI byte on release, 0 to 127
    bool note = false;        ///< note messages rather than control changes
    bool v_off_enable = true; ///< the release sends a message too

    qint32 knobcc = 0;   ///< controller number that the knob sends in MIDI mode, 0 to 127
    bool m01h = false;   ///< knob encoding: relative, 7Fh left and 01h right
    bool m3fh = false;   ///< knob encoding: relative, 3Fh left and 41h right
    bool m0_127 = false; ///< knob encoding: absolute, 0 to 127
};

/// Equal in all fourteen fields.
bool operator==(const shortCut &a, const shortCut &b);
inline bool operator!=(const shortCut &a, const shortCut &b)
{
    return !(a == b);
}
