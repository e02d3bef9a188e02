#pragma once

#include "mapping/ShortCut.h"

#include <QString>
#include <QtGlobal>

/// Markers of `shortCut::key1`, for who makes an entry; who looks at one asks actionKind(). Any other value
/// makes the entry a keyboard shortcut.
enum ActionMarker : qint32 {
    SPECIAL_ACTION = 0x1FFFFFF,     ///< `key2` holds a SpecialAction code
    MIDI_KNOB_ACTION = 0x1001261,   ///< puts the knob into MIDI mode
    MIDI_BUTTON_ACTION = 0x1001262, ///< sends a MIDI message
};

/// Codes of special actions, as `shortCut::key2` holds them. Every other code means "empty".
enum class SpecialAction : qint32 {
    Empty = 0,
    MonitorLeft = 2,
    MonitorRight = 3,
    Horizontal = 4,
    Vertical = 5,
    Circular = 6,
    LeftRightKeys = 7,
    UpDownKeys = 8,
    Shift1 = 9,
    Shift2 = 10,
    Midi = 11,
};

/// What a mapping file calls them, in the order in which a text is searched: the first name found decides.
/// The blanks inside the arrows' names belong to the names.
constexpr struct {
    SpecialAction action;
    const char *name; // UTF-8
} specialActionNames[] = {
    {SpecialAction::Circular, "circular"},
    {SpecialAction::Vertical, "vertical"},
    {SpecialAction::Horizontal, "horizontal"},
    {SpecialAction::MonitorLeft, "monitor left"},
    {SpecialAction::MonitorRight, "monitor right"},
    {SpecialAction::UpDownKeys, " \u2193  \u2191 Key"},
    {SpecialAction::LeftRightKeys, "\u2190 \u2192 Key"},
    {SpecialAction::Shift1, "shift 1"},
    {SpecialAction::Shift2, "shift 2"},
    {SpecialAction::Midi, "midi"},
};

enum class ActionKind {
    Shortcut,   ///< `key1` to `key3` are virtual-key codes
    Special,    ///< `key2` holds a SpecialAction
    MidiKnob,   ///< `channel` to `m0_127` apply
    MidiButton, ///< `channel` to `v_off_enable` apply
};

/// What @p action is, as its `key1` tells.
inline ActionKind actionKind(const shortCut &action)
{
    switch (action.key1) {
    case SPECIAL_ACTION:
        return ActionKind::Special;
    case MIDI_KNOB_ACTION:
        return ActionKind::MidiKnob;
    case MIDI_BUTTON_ACTION:
        return ActionKind::MidiButton;
    default:
        return ActionKind::Shortcut;
    }
}

/// What a special action does; Empty for a code that has no name, and for every other kind.
SpecialAction specialAction(const shortCut &action);

/// True for both kinds of MIDI action.
bool isMidi(const shortCut &action);

/// The code that @p text names: a case-insensitive substring search in a fixed order, 0 when nothing hits.
int specialActionCode(const QString &text);

/// The name that mapping files carry for @p code; "empty" for a code that has none.
QString specialActionName(int code);
