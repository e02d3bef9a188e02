#include "ui/KeyNames.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

namespace
{

struct Row {
    int code;
    const char *name;
};

// The mixed case of the names is deliberate.
constexpr Row rows[] = {
    {8, "\u232b"},         // ⌫
    {9, "\u21e5"},         // ⇥
    {0x1000002, "\u21e5"}, // the toolkit's code of Tab with Shift
    {12, QT_TRANSLATE_NOOP("KeyNames", "clr")},
    {13, "\u23ce"}, // ⏎
    {16, "\u21e7"}, // ⇧
    {17, QT_TRANSLATE_NOOP("KeyNames", "Ctrl")},
    {18, QT_TRANSLATE_NOOP("KeyNames", "Alt")},
    {19, QT_TRANSLATE_NOOP("KeyNames", "pause")},
    {20, "\u21ea"}, // ⇪
    {27, QT_TRANSLATE_NOOP("KeyNames", "Esc")},
    {32, "\u02fd"}, // ˽
    {33, QT_TRANSLATE_NOOP("KeyNames", "PgUp")},
    {34, QT_TRANSLATE_NOOP("KeyNames", "PgDn")},
    {35, QT_TRANSLATE_NOOP("KeyNames", "end")},
    {36, QT_TRANSLATE_NOOP("KeyNames", "home")},
    {37, "\u2190"}, // ←
    {38, "\u2191"}, // ↑
    {39, "\u2192"}, // →
    {40, "\u2193"}, // ↓
    {44, QT_TRANSLATE_NOOP("KeyNames", "PrtScn")},
    {45, QT_TRANSLATE_NOOP("KeyNames", "ins")},
    {46, QT_TRANSLATE_NOOP("KeyNames", "del")},
    {91, QT_TRANSLATE_NOOP("KeyNames", "Win")},
    {92, QT_TRANSLATE_NOOP("KeyNames", "Win")},
    {106, "*"},
    {107, "+"},
    {109, "-"},
    {110, "."},
    {111, "/"},
    {144, QT_TRANSLATE_NOOP("KeyNames", "NumL")},
    {186, ";"},
    {187, "+"},
    {188, ","},
    {189, "-"},
    {190, "."},
    {191, "/"},
    {192, "~"},
    {219, "["},
    {220, "\\"},
    {221, "]"},
    {222, "'"},
};

constexpr int keypad0 = 96;
constexpr int f1 = 112;
constexpr int firstCharacter = 0x100; // codes of keys by the character that they type

const QLatin1String plus(" + ");

// Of these the beginning says enough.
constexpr const char *modifiers[] = {"Ctrl", "Alt", "Win"};
constexpr int enough = 2; // letters; one alone would read as the key of that letter

bool isModifier(const QString &shown)
{
    return std::any_of(std::begin(modifiers), std::end(modifiers), [&](const char *name) {
        return shown.compare(QCoreApplication::translate("KeyNames", name), Qt::CaseInsensitive) == 0;
    });
}

} // namespace

QString KeyNames::name(int code)
{
    if (code >= keypad0 && code < keypad0 + 10) {
        return QStringLiteral("Num%1").arg(code - keypad0);
    }
    if (code >= f1 && code < f1 + 12) {
        return QStringLiteral("F%1").arg(code - f1 + 1);
    }
    for (const Row &row : rows) {
        if (row.code == code) {
            return QString::fromUtf8(row.name);
        }
    }
    const bool isCharacter = code >= firstCharacter && code <= 0xffff;
    const QChar character(isCharacter ? code - firstCharacter : code & 0xff);
    // A mark is drawn over what stands before it.
    return character.isMark() ? QChar(0x25cc) + QString(character) : QString(character);
}

QString KeyNames::text(const QVector<int> &codes)
{
    QStringList names;
    for (const int code : codes) {
        names << name(code);
    }
    return names.join(plus);
}

QString KeyNames::translated(const QString &text)
{
    QStringList names = text.split(plus);
    for (QString &name : names) {
        const bool known = std::any_of(std::begin(rows), std::end(rows),
                                       [&](const Row &row) { return name == QString::fromUtf8(row.name); });
        if (known) {
            name = QCoreApplication::translate("KeyNames", name.toUtf8().constData());
        }
    }
    return names.join(plus);
}

QStringList KeyNames::shorter(const QString &shown)
{
    QStringList names = shown.split(plus);
    if (names.size() < 2) {
        return {};
    }
    const QString withoutBlanks = names.join(QLatin1Char('+'));
    for (QString &name : names) {
        if (isModifier(name)) {
            name.truncate(enough);
        }
    }
    return {withoutBlanks, names.join(QLatin1Char('+'))};
}
