#include "mapping/SpecialAction.h"

#include <vector>

namespace
{

struct Entry {
    SpecialAction action;
    QString name;
};

// Their texts made once: a library of a hundred mappings asks some three thousand times.
const std::vector<Entry> &specialActions()
{
    static const std::vector<Entry> table = [] {
        std::vector<Entry> entries;
        for (const auto &each : specialActionNames) {
            entries.push_back({each.action, QString::fromUtf8(each.name)});
        }
        return entries;
    }();
    return table;
}

} // namespace

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
