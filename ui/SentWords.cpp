#include "ui/SentWords.h"

#include "engine/DoneAction.h"
#include "mapping/SpecialAction.h"
#include "ui/ComboMenuEntries.h"
#include "ui/KeyNames.h"

#include <QCoreApplication>
#include <QStringList>

namespace
{

class Words
{
    Q_DECLARE_TR_FUNCTIONS(SentWords)

public:
    static QString line(const DoneAction &done);

private:
    static QString button(const DoneAction &done);
    static QString key(int code);
    static QString keys(const shortCut &action);
    static QString midi(const MidiOutcome &outcome);
    static QString knob(const DoneAction &done);
    static QString turn(KnobMode mode, bool left);
};

// Words, where the boxes have room for a sign only.
QString Words::key(int code)
{
    switch (code) {
    case 0x10:
    case 0xA0:
    case 0xA1:
        return tr("Shift");
    case 0x25:
        return tr("Left");
    case 0x26:
        return tr("Up");
    case 0x27:
        return tr("Right");
    case 0x28:
        return tr("Down");
    default:
        return KeyNames::translated(KeyNames::name(code));
    }
}

QString Words::keys(const shortCut &action)
{
    QStringList names;
    for (const int code : {action.key1, action.key2, action.key3}) {
        if (code > 0) {
            names << key(code);
        }
    }
    return names.join(QLatin1String(" + "));
}

QString Words::midi(const MidiOutcome &outcome)
{
    const int status = outcome.message[0];
    const int channel = (status & 0x0F) + 1;
    QString text;
    switch (status & 0xF0) {
    case 0x90:
        text = tr("note %1 on, channel %2").arg(outcome.message[1]).arg(channel);
        break;
    case 0x80:
        text = tr("note %1 off, channel %2").arg(outcome.message[1]).arg(channel);
        break;
    default:
        text =
            tr("controller %1: %2, channel %3").arg(outcome.message[1]).arg(outcome.message[2]).arg(channel);
        break;
    }
    return outcome.accepted ? text : tr("%1 (not sent)").arg(text);
}

QString Words::button(const DoneAction &done)
{
    if (done.midi.due) {
        return midi(done.midi);
    }
    QString text;
    switch (actionKind(done.action)) {
    case ActionKind::Shortcut:
        text = keys(done.action);
        break;
    case ActionKind::Special:
    case ActionKind::MidiKnob:
        text = ComboMenuEntries::name(done.action).simplified();
        break;
    case ActionKind::MidiButton:
        break;
    }
    if (!text.isEmpty()) {
        return text;
    }
    return done.layer == Layer::Normal ? tr("does nothing")
                                       : tr("does nothing in %1").arg(Layers::shownName(done.layer));
}

QString Words::turn(KnobMode mode, bool left)
{
    switch (mode) {
    case KnobMode::UpDownKeys:
        return left ? tr("Up") : tr("Down");
    case KnobMode::LeftRightKeys:
        return left ? tr("Right") : tr("Left"); // crossed on purpose
    case KnobMode::Horizontal:
        return left ? tr("pointer to the left") : tr("pointer to the right");
    case KnobMode::Circular:
    case KnobMode::Vertical:
    case KnobMode::Midi:
        break;
    }
    return left ? tr("pointer down") : tr("pointer up");
}

QString Words::knob(const DoneAction &done)
{
    if (done.mode == KnobMode::Midi) {
        return done.midi.due ? midi(done.midi) : tr("does nothing");
    }
    return done.event == DoneAction::Event::Touch
               ? tr("left mouse button")
               : turn(done.mode, done.event == DoneAction::Event::TurnLeft);
}

QString Words::line(const DoneAction &done)
{
    const bool isKnob = done.control == DoneAction::knob;
    const QString what = isKnob ? knob(done) : button(done);
    return QString::fromUtf8("%1 \u00b7 %2").arg(isKnob ? tr("knob") : QString::number(done.control), what);
}

} // namespace

bool SentWords::has(const DoneAction &done)
{
    switch (done.event) {
    case DoneAction::Event::Press:
    case DoneAction::Event::TurnLeft:
    case DoneAction::Event::TurnRight:
        return true;
    case DoneAction::Event::Touch:
        return done.midi.due || done.mode == KnobMode::Circular || done.mode == KnobMode::Vertical ||
               done.mode == KnobMode::Horizontal;
    case DoneAction::Event::LetGo:
    case DoneAction::Event::Release:
        break;
    }
    return done.midi.due;
}

QString SentWords::of(const DoneAction &done)
{
    return has(done) ? Words::line(done) : QString();
}
