#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <variant>

namespace simulator
{

/// One line of a script. What the fields mean depends on the kind.
struct ScriptStep {
    enum class Kind {
        Button, ///< number: the button, down: whether it goes down
        Knob,   ///< type: the event's character
        Count,  ///< number: the value
        Raw,    ///< bytes: sent as they are
        Wait,   ///< number: milliseconds
        Plug,
        Unplug
    };

    Kind kind = Kind::Wait;
    int number = 0;
    bool down = false;
    char type = 0;
    QByteArray bytes;
    QByteArray source; ///< the line as it was written, for the transcript
};

struct ScriptMistake {
    int line = 0; ///< counted from 1
    QString message;
};

struct Script {
    QVector<ScriptStep> steps;
    QVector<ScriptMistake> mistakes; ///< a script with mistakes is not run at all
};

/// The form: one event a line (BP3, BR3, KND, KNU, KNL, KNR, 12, -3), "wait MS", "plug", "unplug" and "raw
/// HEX". Blank lines and everything from a "#" on are passed over.
namespace scriptparser
{

struct Nothing {
};

/// One line without its line break: a step, nothing (blank, comment), or what is wrong with it.
std::variant<Nothing, ScriptStep, QString> parseLine(const QByteArray &line);

Script parse(const QByteArray &text);

} // namespace scriptparser

} // namespace simulator
