#include "ui/KeyNames.h"

#include <QStringList>

namespace
{

struct Row {
    int code;
    const char16_t *name;
};

// The mixed case of the names is deliberate.
constexpr Row rows[] = {
    {8, u"\u232b"},         // ⌫
    {9, u"\u21e5"},         // ⇥
    {0x1000002, u"\u21e5"}, // the toolkit's code of Tab with Shift
    {12, u"clr"},
    {13, u"\u23ce"}, // ⏎
    {16, u"\u21e7"}, // ⇧
    {17, u"Ctrl"},
    {18, u"Alt"},
    {19, u"pause"},
    {20, u"\u21ea"}, // ⇪
    {27, u"Esc"},
    {32, u"\u02fd"}, // ˽
    {33, u"PgUp"},
    {34, u"PgDn"},
    {35, u"end"},
    {36, u"home"},
    {37, u"\u2190"}, // ←
    {38, u"\u2191"}, // ↑
    {39, u"\u2192"}, // →
    {40, u"\u2193"}, // ↓
    {44, u"PrtScn"},
    {45, u"ins"},
    {46, u"del"},
    {91, u"Win"},
    {92, u"Win"},
    {106, u"*"},
    {107, u"+"},
    {109, u"-"},
    {110, u"."},
    {111, u"/"},
    {144, u"NumL"},
    {186, u";"},
    {187, u"+"},
    {188, u","},
    {189, u"-"},
    {190, u"."},
    {191, u"/"},
    {192, u"~"},
    {219, u"["},
    {220, u"\\"},
    {221, u"]"},
    {222, u"'"},
};

constexpr int keypad0 = 96;
constexpr int f1 = 112;

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
            return QString::fromUtf16(row.name);
        }
    }
    return QChar(code & 0xff);
}

QString KeyNames::text(const QVector<int> &codes)
{
    QStringList names;
    for (const int code : codes) {
        names << name(code);
    }
    return names.join(QLatin1String(" + "));
}
