#include "tools/simulator/ScriptParser.h"

#include <QCoreApplication>

#include <cctype>

namespace simulator::scriptparser
{

namespace
{

constexpr int longestWait = 3'600'000;

QString text(const char *source)
{
    return QCoreApplication::translate("ScriptParser", source);
}

ScriptStep step(ScriptStep::Kind kind, int number = 0)
{
    ScriptStep result;
    result.kind = kind;
    result.number = number;
    return result;
}

using Parsed = std::variant<Nothing, ScriptStep, QString>;

Parsed parseButton(const QByteArray &word)
{
    const char number = word.size() == 3 ? word.at(2) : '\0';
    if (number < '0' || number > '9') {
        return text("a button report ends in one digit from 0 to 9: \"%1\"").arg(QString::fromUtf8(word));
    }
    ScriptStep result = step(ScriptStep::Kind::Button, number - '0');
    result.down = word.at(1) == 'P';
    return result;
}

Parsed parseKnob(const QByteArray &word)
{
    if (word.size() != 3) {
        return text("a knob report ends in one character: \"%1\"").arg(QString::fromUtf8(word));
    }
    ScriptStep result = step(ScriptStep::Kind::Knob);
    result.type = word.at(2);
    return result;
}

Parsed parseWait(const QByteArray &argument)
{
    bool ok = false;
    const int milliseconds = argument.toInt(&ok);
    if (!ok || milliseconds < 0 || milliseconds > longestWait) {
        return text("\"wait\" needs milliseconds from 0 to %1").arg(longestWait);
    }
    return step(ScriptStep::Kind::Wait, milliseconds);
}

Parsed parseRaw(const QByteArray &argument)
{
    QByteArray digits = argument;
    digits.replace(' ', QByteArray());
    bool good = !digits.isEmpty() && digits.size() % 2 == 0;
    for (const char digit : digits) {
        good = good && std::isxdigit(static_cast<unsigned char>(digit)) != 0;
    }
    if (!good) {
        return text("\"raw\" needs pairs of hexadecimal digits");
    }
    ScriptStep result = step(ScriptStep::Kind::Raw);
    result.bytes = QByteArray::fromHex(digits);
    return result;
}

Parsed parseWords(const QByteArray &words)
{
    const int blank = words.indexOf(' ');
    const QByteArray word = blank < 0 ? words : words.left(blank);
    const QByteArray argument = blank < 0 ? QByteArray() : words.mid(blank + 1);
    if (word == "wait") {
        return parseWait(argument);
    }
    if (word == "raw") {
        return parseRaw(argument);
    }
    if (blank >= 0) {
        return text("one event a line: \"%1\"").arg(QString::fromUtf8(words));
    }
    if (word == "plug") {
        return step(ScriptStep::Kind::Plug);
    }
    if (word == "unplug") {
        return step(ScriptStep::Kind::Unplug);
    }
    if (word.startsWith("BP") || word.startsWith("BR")) {
        return parseButton(word);
    }
    if (word.startsWith("KN")) {
        return parseKnob(word);
    }
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    if (isNumber) {
        return step(ScriptStep::Kind::Count, number);
    }
    return text("unknown event \"%1\"").arg(QString::fromUtf8(word));
}

} // namespace

Parsed parseLine(const QByteArray &line)
{
    const int comment = line.indexOf('#');
    const QByteArray words = (comment < 0 ? line : line.left(comment)).simplified();
    if (words.isEmpty()) {
        return Nothing{};
    }
    Parsed parsed = parseWords(words);
    if (auto *found = std::get_if<ScriptStep>(&parsed)) {
        found->source = words;
    }
    return parsed;
}

Script parse(const QByteArray &text)
{
    Script script;
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        const Parsed parsed = parseLine(lines.at(i));
        if (const auto *found = std::get_if<ScriptStep>(&parsed)) {
            script.steps.append(*found);
        } else if (const auto *mistake = std::get_if<QString>(&parsed)) {
            script.mistakes.append({i + 1, *mistake});
        }
    }
    return script;
}

} // namespace simulator::scriptparser
