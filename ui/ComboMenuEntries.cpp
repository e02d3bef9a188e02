#include "ui/ComboMenuEntries.h"

#include "mapping/SpecialAction.h"
#include "ui/ComboMenu.h"
#include "ui/KeyNames.h"

#include <QCoreApplication>
#include <QMenu>
#include <QVector>

#include <algorithm>

namespace
{

enum class Group { General, Monitors, Knob, Layers };

struct Entry {
    const char *text;
    const char *help;
    Group group;
};

// In the order of the menu.
constexpr Entry entries[] = {
    {QT_TRANSLATE_NOOP("ComboMenu", "Shortcut Key"),
     QT_TRANSLATE_NOOP("ComboMenu", "Presses up to three keys for you"), Group::General},
    {QT_TRANSLATE_NOOP("ComboMenu", "Midi"),
     QT_TRANSLATE_NOOP("ComboMenu", "Sends a note or a controller value to music software"), Group::General},
    {QT_TRANSLATE_NOOP("ComboMenu", "Monitor Left"),
     QT_TRANSLATE_NOOP("ComboMenu", "Moves the pointer to the next monitor"), Group::Monitors},
    {QT_TRANSLATE_NOOP("ComboMenu", "Monitor Right"),
     QT_TRANSLATE_NOOP("ComboMenu", "Moves the pointer to the previous monitor"), Group::Monitors},
    {QT_TRANSLATE_NOOP("ComboMenu", "Horizontal"),
     QT_TRANSLATE_NOOP("ComboMenu", "Sets the knob to drag the pointer left and right"), Group::Knob},
    {QT_TRANSLATE_NOOP("ComboMenu", "Vertical"),
     QT_TRANSLATE_NOOP("ComboMenu", "Sets the knob to drag the pointer up and down"), Group::Knob},
    {QT_TRANSLATE_NOOP("ComboMenu", "Circular"),
     QT_TRANSLATE_NOOP("ComboMenu",
                       "Sets the knob to drag the pointer up and down, and back when it is let go"),
     Group::Knob},
    {QT_TRANSLATE_NOOP("ComboMenu", " \u2193  \u2191 Key"),
     QT_TRANSLATE_NOOP("ComboMenu", "Sets the knob to press the arrow keys down and up"), Group::Knob},
    {QT_TRANSLATE_NOOP("ComboMenu", "\u2190 \u2192 Key"),
     QT_TRANSLATE_NOOP("ComboMenu", "Sets the knob to press the arrow keys left and right"), Group::Knob},
    {QT_TRANSLATE_NOOP("ComboMenu", "Midi for Knob"),
     QT_TRANSLATE_NOOP("ComboMenu", "Sets the knob to send controller values to music software"),
     Group::Knob},
    {QT_TRANSLATE_NOOP("ComboMenu", "Shift 1"),
     QT_TRANSLATE_NOOP("ComboMenu", "While it is held, all buttons do what their Shift 1 says"),
     Group::Layers},
    {QT_TRANSLATE_NOOP("ComboMenu", "Shift 2"),
     QT_TRANSLATE_NOOP("ComboMenu", "While it is held, all buttons do what their Shift 2 says"),
     Group::Layers},
};

// Labels of this program's that are no entry's text.
constexpr const char *otherLabels[] = {
    QT_TRANSLATE_NOOP("ComboMenu", "M.Left"), QT_TRANSLATE_NOOP("ComboMenu", "M.Right"),
    QT_TRANSLATE_NOOP("ComboMenu", "empty"), QT_TRANSLATE_NOOP("ComboMenu", "type a shorcut")};

bool isShortcut(const shortCut &action)
{
    return actionKind(action) == ActionKind::Shortcut &&
           (action.key1 > 0 || action.key2 > 0 || action.key3 > 0);
}

// The text of the entry that makes such an assignment; empty for an assignment that nothing makes.
QString entryText(const shortCut &action)
{
    switch (actionKind(action)) {
    case ActionKind::MidiButton:
        return QStringLiteral("Midi");
    case ActionKind::MidiKnob:
        return QStringLiteral("Midi for Knob");
    case ActionKind::Shortcut:
        return isShortcut(action) ? QStringLiteral("Shortcut Key") : QString();
    case ActionKind::Special:
        break;
    }
    if (specialAction(action) == SpecialAction::Empty) {
        return QString();
    }
    for (const Entry &entry : entries) {
        QString text = QString::fromUtf8(entry.text);
        if (specialActionCode(text) == action.key2) {
            return text;
        }
    }
    return QString();
}

// The translation of one of this program's own labels, any other as it is.
QString translated(const QString &label)
{
    // Mappings may spell them in lower case, as the names of special actions are.
    const auto is = [&label](const char *text) {
        return label.compare(QString::fromUtf8(text), Qt::CaseInsensitive) == 0;
    };
    for (const Entry &entry : entries) {
        if (is(entry.text)) {
            return ComboMenu::tr(entry.text);
        }
    }
    for (const char *text : otherLabels) {
        if (is(text)) {
            return ComboMenu::tr(text);
        }
    }
    // The example library's; what is made of key names is none of them.
    const QString ofLibrary = QCoreApplication::translate("LibraryLabels", label.toUtf8().constData());
    return ofLibrary != label ? ofLibrary : KeyNames::translated(label);
}

QString midiInWords(const shortCut &action)
{
    if (actionKind(action) == ActionKind::MidiKnob) {
        return ComboMenu::tr("The knob sends MIDI channel %1, controller %2")
            .arg(action.channel)
            .arg(action.knobcc);
    }
    const QString pattern = action.note ? ComboMenu::tr("Sends MIDI channel %1, note %2")
                                        : ComboMenu::tr("Sends MIDI channel %1, controller %2");
    return pattern.arg(action.channel).arg(action.cc);
}

QString shortcutInWords(const shortCut &action)
{
    QVector<int> codes{action.key1, action.key2, action.key3};
    codes.erase(std::remove_if(codes.begin(), codes.end(), [](int code) { return code <= 0; }), codes.end());
    const QString keys = KeyNames::text(codes);
    const QString shownKeys = KeyNames::translated(keys);
    return action.label.isEmpty() || action.label == keys
               ? ComboMenu::tr("Presses %1").arg(shownKeys)
               : ComboMenu::tr("%1: presses %2").arg(translated(action.label), shownKeys);
}

} // namespace

void ComboMenuEntries::fill(QMenu &menu, bool withShift)
{
    Group group = Group::General;
    for (const Entry &entry : entries) {
        if (entry.group == Group::Layers && !withShift) {
            break;
        }
        if (entry.group != group) {
            group = entry.group;
            if (group == Group::Knob) {
                menu.addSection(ComboMenu::tr("Knob"));
            } else {
                menu.addSeparator();
            }
        }
        QAction *action = menu.addAction(ComboMenu::tr(entry.text));
        action->setData(QString::fromUtf8(entry.text));
        action->setToolTip(ComboMenu::tr(entry.help));
        action->setCheckable(true);
    }
    menu.setToolTipsVisible(true);
}

void ComboMenuEntries::check(QMenu &menu, const shortCut &action)
{
    const QString text = entryText(action);
    const QList<QAction *> all = menu.actions();
    for (QAction *each : all) {
        each->setChecked(!each->isSeparator() && !text.isEmpty() && each->data().toString() == text);
    }
}

QString ComboMenuEntries::labelFor(const QString &text)
{
    if (text.contains(QLatin1String("monitor left"), Qt::CaseInsensitive)) {
        return QStringLiteral("M.Left");
    }
    if (text.contains(QLatin1String("monitor right"), Qt::CaseInsensitive)) {
        return QStringLiteral("M.Right");
    }
    return text;
}

QString ComboMenuEntries::displayed(const QString &label)
{
    return translated(labelFor(label)); // a mapping may bring a monitor's long name
}

QString ComboMenuEntries::name(const shortCut &action)
{
    const QString text = entryText(action);
    return text.isEmpty() ? QString() : translated(text);
}

QString ComboMenuEntries::knobMode(KnobMode mode)
{
    shortCut action;
    action.key1 = mode == KnobMode::Midi ? MIDI_KNOB_ACTION : SPECIAL_ACTION;
    constexpr SpecialAction actions[] = {SpecialAction::Circular,      SpecialAction::Vertical,
                                         SpecialAction::Horizontal,    SpecialAction::UpDownKeys,
                                         SpecialAction::LeftRightKeys, SpecialAction::Midi};
    action.key2 = static_cast<int>(actions[static_cast<int>(mode)]);
    return name(action).simplified();
}

QString ComboMenuEntries::inWords(const shortCut &action)
{
    if (isMidi(action)) {
        return midiInWords(action);
    }
    if (isShortcut(action)) {
        return shortcutInWords(action);
    }
    const QString text = entryText(action);
    for (const Entry &entry : entries) {
        if (!text.isEmpty() && text == QString::fromUtf8(entry.text)) {
            return ComboMenu::tr(entry.help);
        }
    }
    return ComboMenu::tr("Nothing yet");
}

QStringList ComboMenuEntries::inWords(const PerLayer<shortCut> &actions)
{
    QStringList lines;
    for (const Layer layer : Layers::all) {
        lines << ComboMenu::tr("%1: %2").arg(Layers::shownName(layer), inWords(actions[layer]));
    }
    return lines;
}
