#include "mapping/SpecialAction.h"

#include <array>

namespace
{

struct Entry {
    SpecialAction action;
    QString name; // the blanks inside the arrow names belong to the names
};

// In search order: the first name found in a text decides.
const std::array<Entry, 10> &specialActions()
{
    static const std::array<Entry, 10> table{{
        {SpecialAction::Circular, QStringLiteral("circular")},
        {SpecialAction::Vertical, QStringLiteral("vertical")},
        {SpecialAction::Horizontal, QStringLiteral("horizontal")},
        {SpecialAction::MonitorLeft, QStringLiteral("monitor left")},
        {SpecialAction::MonitorRight, QStringLiteral("monitor right")},
        {SpecialAction::UpDownKeys, QStringLiteral(" \u2193  \u2191 Key")},
        {SpecialAction::LeftRightKeys, QStringLiteral("\u2190 \u2192 Key")},
        {SpecialAction::Shift1, QStringLiteral("shift 1")},
        {SpecialAction::Shift2, QStringLiteral("shift 2")},
        {SpecialAction::Midi, QStringLiteral("midi")},
    }};
    return table;
}

} // namespace

ActionKind actionKind(const shortCut &action)
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

SpecialAction specialAction(const shortCut &action)
{
    if (actionKind(action) == ActionKind::Special) {
        for (const Entry &entry : specialActions()) {
            if (static_cast<int>(entry.action) == action.key2) {
                return entry.action;
            }
        }
    }
    return SpecialAction::Empty;
}

bool isMidi(const shortCut &action)
{
    const ActionKind kind = actionKind(action);
    return kind == ActionKind::MidiKnob || kind == ActionKind::MidiButton;
}

int specialActionCode(const QString &text)
{
    for (const Entry &entry : specialActions()) {
        if (text.contains(entry.name, Qt::CaseInsensitive)) {
            return static_cast<int>(entry.action);
        }
    }
    return static_cast<int>(SpecialAction::Empty);
}

QString specialActionName(int code)
{
    for (const Entry &entry : specialActions()) {
        if (static_cast<int>(entry.action) == code) {
            return entry.name;
        }
    }
    return QStringLiteral("empty");
}
