#include "tests/support/script/ScriptParser.h"

#include "mapping/SpecialAction.h"
#include "mapping/ZRButtonMap.h"

#include <QFile>
#include <QRegularExpression>

#include <optional>

namespace
{

using Kind = ScriptStep::Kind;

QStringList words(const QString &line)
{
    return line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// Base 10, or 16 behind "0x".
bool readInt(const QString &text, int *value)
{
    bool ok = false;
    *value = text.startsWith(QLatin1String("0x")) ? text.mid(2).toInt(&ok, 16) : text.toInt(&ok, 10);
    return ok;
}

bool readPoint(const QStringList &parts, QPoint *point)
{
    return parts.size() == 3 && readInt(parts.at(1), &point->rx()) && readInt(parts.at(2), &point->ry());
}

QString withoutComment(const QString &line)
{
    static const QRegularExpression comment(QStringLiteral("(^|\\s)#.*$"));
    QString bare = line;
    bare.remove(comment);
    while (!bare.isEmpty() && bare.back().isSpace()) {
        bare.chop(1);
    }
    return bare;
}

/// Each function returns what is wrong, or an empty text.
class Parser
{
public:
    ParsedScript parse(const QString &text)
    {
        ParsedScript parsed;
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (int index = 0; index < lines.size(); ++index) {
            m_line = index + 1;
            const QString line = withoutComment(lines.at(index));
            const QString mistake = line.isEmpty() ? QString() : takeLine(line);
            if (!mistake.isEmpty()) {
                parsed.mistake = QStringLiteral("line %1: %2").arg(m_line).arg(mistake);
                return parsed;
            }
        }
        if (!m_expecting) {
            parsed.mistake = QStringLiteral("line %1: \"---\" is missing").arg(lines.size());
        }
        parsed.script = m_script;
        return parsed;
    }

private:
    QString takeLine(const QString &line)
    {
        if (line == QLatin1String("---")) {
            if (m_expecting) {
                return QStringLiteral("a second \"---\"");
            }
            m_expecting = true;
            return QString();
        }
        return m_expecting ? takeExpected(line) : takeStep(line);
    }

    QString takeExpected(const QString &line)
    {
        static const QRegularExpression output(QStringLiteral(
            "^(key \\d+ (down|up)|left (down|up)|hide|show|move -?\\d+ -?\\d+|midi( [0-9A-F]{2})+|panel \\S+|"
            "game \\S)$"));
        if (!output.match(line).hasMatch()) {
            return QStringLiteral("\"%1\" is no output").arg(line);
        }
        m_script.expected.append(line);
        return QString();
    }

    QString takeStep(const QString &line)
    {
        m_step = ScriptStep();
        m_step.line = m_line;
        if (line == QLatin1String("in-process")) {
            m_script.inProcessOnly = true;
            return QString();
        }
        const std::optional<QString> asSetUp = takeSetUp(line);
        if (asSetUp) {
            if (asSetUp->isEmpty()) {
                if (!m_script.events.isEmpty()) {
                    return QStringLiteral("set-up behind the first event");
                }
                m_script.setUp.append(m_step);
            }
            return *asSetUp;
        }
        QString mistake = takeEvent(line);
        if (mistake.isEmpty()) {
            m_script.events.append(m_step);
        }
        return mistake;
    }

    // Nothing when the line is no set-up line.
    std::optional<QString> takeSetUp(const QString &line)
    {
        const QStringList parts = words(line);
        const QString &first = parts.first();
        if (first == QLatin1String("assign")) {
            m_step.kind = Kind::Assign;
            return takeAssignment(line);
        }
        if (first == QLatin1String("at")) {
            m_step.kind = Kind::At;
            return readPoint(parts, &m_step.point) ? QString() : QStringLiteral("at X Y");
        }
        if (first == QLatin1String("sensitivity")) {
            m_step.kind = Kind::Sensitivity;
            const bool ok = parts.size() == 3 && readInt(parts.at(1), &m_step.number) &&
                            readInt(parts.at(2), &m_step.number2);
            return ok ? QString() : QStringLiteral("sensitivity NORMAL SHIFT1");
        }
        if (first == QLatin1String("screens")) {
            m_step.kind = Kind::Screens;
            return takeScreens(parts.mid(1));
        }
        return std::nullopt;
    }

    QString takeScreens(const QStringList &parts)
    {
        static const QRegularExpression geometry(QStringLiteral("^(-?\\d+),(-?\\d+),(\\d+)x(\\d+)$"));
        for (const QString &part : parts) {
            const QRegularExpressionMatch match = geometry.match(part);
            if (!match.hasMatch()) {
                return QStringLiteral("\"%1\" is no X,Y,WxH").arg(part);
            }
            m_step.screens.append(QRect(match.captured(1).toInt(), match.captured(2).toInt(),
                                        match.captured(3).toInt(), match.captured(4).toInt()));
        }
        return m_step.screens.isEmpty() ? QStringLiteral("screens X,Y,WxH ...") : QString();
    }

    QString takeEvent(const QString &line)
    {
        static const QRegularExpression button(QStringLiteral("^B([PR])(\\d)$"));
        static const QRegularExpression knob(QStringLiteral("^KN(\\S)$"));
        static const QRegularExpression count(QStringLiteral("^[+-]?\\d+$"));
        const QStringList parts = words(line);
        const QString &first = parts.first();

        if (const auto match = button.match(line); match.hasMatch()) {
            m_step.kind = Kind::Button;
            m_step.pressing = match.captured(1) == QLatin1String("P");
            m_step.button = match.captured(2).toInt();
            return QString();
        }
        if (const auto match = knob.match(line); match.hasMatch()) {
            m_step.kind = Kind::KnobType;
            m_step.type = match.captured(1).at(0).toLatin1();
            return QString();
        }
        if (count.match(line).hasMatch()) {
            m_step.kind = Kind::KnobCount;
            return readInt(line, &m_step.number) ? QString() : QStringLiteral("a count that is too large");
        }
        if (first == QLatin1String("wait")) {
            m_step.kind = Kind::Wait;
            const bool ok = parts.size() == 2 && readInt(parts.at(1), &m_step.number) && m_step.number >= 0;
            return ok ? QString() : QStringLiteral("wait MS");
        }
        if (first == QLatin1String("mouse")) {
            m_step.kind = Kind::Mouse;
            return readPoint(parts, &m_step.point) ? QString() : QStringLiteral("mouse X Y");
        }
        if (first == QLatin1String("raw")) {
            return takeRaw(parts.mid(1).join(QString()));
        }
        if (line == QLatin1String("plug") || line == QLatin1String("unplug")) {
            m_step.kind = line == QLatin1String("plug") ? Kind::Plug : Kind::Unplug;
            return QString();
        }
        if (first == QLatin1String("remap")) {
            const QString rest = line.mid(QLatin1String("remap ").size());
            m_step.kind = Kind::Remap;
            return rest.startsWith(QLatin1String("assign ")) ? takeAssignment(rest)
                                                             : QStringLiteral("remap assign ...");
        }
        return QStringLiteral("\"%1\" is no event").arg(line);
    }

    QString takeRaw(const QString &hex)
    {
        static const QRegularExpression pairs(QStringLiteral("^([0-9A-Fa-f]{2})+$"));
        m_step.kind = Kind::Raw;
        if (!pairs.match(hex).hasMatch()) {
            return QStringLiteral("raw HEX");
        }
        m_step.bytes = QByteArray::fromHex(hex.toLatin1());
        return QString();
    }

    // assign BUTTON LAYER KIND ...
    QString takeAssignment(const QString &line)
    {
        static const QRegularExpression form(QStringLiteral("^assign (\\d) (\\S+) (\\S+)(?: (.*))?$"));
        const QRegularExpressionMatch match = form.match(line);
        if (!match.hasMatch()) {
            return QStringLiteral("assign BUTTON LAYER keys|special|midi|midi_knob ...");
        }
        m_step.button = match.captured(1).toInt();
        const std::optional<Layer> layer = Layers::fromFileName(match.captured(2));
        if (!layer) {
            return QStringLiteral("\"%1\" is no layer").arg(match.captured(2));
        }
        m_step.layer = *layer;
        return takeAction(match.captured(3), match.captured(4));
    }

    QString takeAction(const QString &kind, const QString &rest)
    {
        shortCut &action = m_step.action;
        if (kind == QLatin1String("keys")) {
            const QStringList keys = words(rest);
            const bool ok = keys.size() == 3 && readInt(keys.at(0), &action.key1) &&
                            readInt(keys.at(1), &action.key2) && readInt(keys.at(2), &action.key3);
            return ok ? QString() : QStringLiteral("keys K1 K2 K3");
        }
        if (kind == QLatin1String("special")) {
            action.key1 = SPECIAL_ACTION;
            action.key2 = specialActionCode(rest);
            action.label = rest;
            return specialActionName(action.key2) == rest
                       ? QString()
                       : QStringLiteral("\"%1\" is no special action").arg(rest);
        }
        if (kind == QLatin1String("midi") || kind == QLatin1String("midi_knob")) {
            action.key1 = kind == QLatin1String("midi") ? MIDI_BUTTON_ACTION : MIDI_KNOB_ACTION;
            return takeMidiFields(words(rest));
        }
        return QStringLiteral("\"%1\" is no kind of action").arg(kind);
    }

    QString takeMidiFields(const QStringList &fields)
    {
        for (const QString &field : fields) {
            const int equals = field.indexOf(QLatin1Char('='));
            int value = 0;
            if (equals < 0 || !readInt(field.mid(equals + 1), &value) ||
                !setMidiField(field.left(equals), value)) {
                return QStringLiteral("\"%1\" is no MIDI field").arg(field);
            }
        }
        return QString();
    }

    bool setMidiField(const QString &name, int value)
    {
        struct IntField {
            const char *name;
            qint32 shortCut::*field;
        };
        struct BoolField {
            const char *name;
            bool shortCut::*field;
        };
        static constexpr IntField ints[] = {{"channel", &shortCut::channel},
                                            {"cc", &shortCut::cc},
                                            {"on", &shortCut::v_on},
                                            {"off", &shortCut::v_off},
                                            {"knobcc", &shortCut::knobcc}};
        static constexpr BoolField bools[] = {{"note", &shortCut::note},
                                              {"release", &shortCut::v_off_enable},
                                              {"m01h", &shortCut::m01h},
                                              {"m3fh", &shortCut::m3fh},
                                              {"m0_127", &shortCut::m0_127}};
        for (const IntField &entry : ints) {
            if (name == QLatin1String(entry.name)) {
                m_step.action.*(entry.field) = value;
                return true;
            }
        }
        for (const BoolField &entry : bools) {
            if (name == QLatin1String(entry.name)) {
                m_step.action.*(entry.field) = value != 0;
                return value == 0 || value == 1;
            }
        }
        return false;
    }

    Script m_script;
    ScriptStep m_step;
    int m_line = 0;
    bool m_expecting = false;
};

} // namespace

ParsedScript parseScript(const QString &text)
{
    return Parser().parse(text);
}

ParsedScript readScript(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {Script(), QStringLiteral("line 0: %1 cannot be read: %2").arg(path, file.errorString())};
    }
    return parseScript(QString::fromUtf8(file.readAll()));
}
