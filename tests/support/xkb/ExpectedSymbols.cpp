#include "tests/support/xkb/ExpectedSymbols.h"

namespace
{

/// The symbol that each code gives on every layout.
struct Row {
    quint16 virtualKey;
    const char *symbol;
};
const Row sameEverywhere[] = {
    {0x03, "Cancel"},
    {0x08, "BackSpace"},
    {0x09, "Tab"},
    {0x0c, "KP_Begin"},
    {0x0d, "Return"},
    {0x10, "Shift_L"},
    {0x11, "Control_L"},
    {0x12, "Alt_L"},
    {0x13, "Pause"},
    {0x14, "Caps_Lock"},
    {0x15, "Hangul"},
    {0x17, "Hangul_Jeonja"},
    {0x19, "Hangul_Hanja"},
    {0x1b, "Escape"},
    {0x1c, "Henkan_Mode"},
    {0x1d, "Muhenkan"},
    {0x1f, "Mode_switch"},
    {0x20, "space"},
    {0x21, "Prior"},
    {0x22, "Next"},
    {0x23, "End"},
    {0x24, "Home"},
    {0x25, "Left"},
    {0x26, "Up"},
    {0x27, "Right"},
    {0x28, "Down"},
    {0x29, "Select"},
    {0x2a, "Print"},
    {0x2b, "Execute"},
    {0x2c, "Print"},
    {0x2d, "Insert"},
    {0x2e, "Delete"},
    {0x2f, "Help"},
    {0x5b, "Super_L"},
    {0x5c, "Super_R"},
    {0x5d, "Menu"},
    {0x5f, "XF86Sleep"},
    {0x6a, "KP_Multiply"},
    {0x6b, "KP_Add"},
    {0x6c, "KP_Separator"},
    {0x6d, "KP_Subtract"},
    {0x6f, "KP_Divide"},
    {0x90, "Num_Lock"},
    {0x91, "Scroll_Lock"},
    {0x92, "KP_Equal"},
    {0xa0, "Shift_L"},
    {0xa1, "Shift_R"},
    {0xa2, "Control_L"},
    {0xa3, "Control_R"},
    {0xa4, "Alt_L"},
    {0xa6, "XF86Back"},
    {0xa7, "XF86Forward"},
    {0xa8, "XF86Reload"},
    {0xa9, "XF86Stop"},
    {0xaa, "XF86Search"},
    {0xab, "XF86Favorites"},
    {0xac, "XF86HomePage"},
    {0xad, "XF86AudioMute"},
    {0xae, "XF86AudioLowerVolume"},
    {0xaf, "XF86AudioRaiseVolume"},
    {0xb0, "XF86AudioNext"},
    {0xb1, "XF86AudioPrev"},
    {0xb2, "XF86AudioStop"},
    {0xb3, "XF86AudioPlay"},
    {0xb4, "XF86Mail"},
    {0xb5, "XF86AudioMedia"},
    {0xb6, "XF86MyComputer"},
    {0xb7, "XF86Calculator"},
    {0xba, "semicolon"},
    {0xbc, "comma"},
    {0xbd, "minus"},
    {0xbe, "period"},
    {0xbf, "slash"},
    {0xc0, "grave"},
    {0xc1, "slash"},
    {0xc2, "KP_Separator"},
    {0xdb, "bracketleft"},
    {0xdc, "backslash"},
    {0xdd, "bracketright"},
    {0xde, "apostrophe"},
    {0xdf, "exclam"},
    {0xe2, "less"},
    {0xf6, "3270_Attn"},
    {0xf7, "3270_CursorSelect"},
    {0xf8, "3270_ExSelect"},
    {0xf9, "3270_EraseEOF"},
    {0xfa, "3270_Play"},
    {0xfd, "3270_PA1"},
    {0xfe, "Clear"},
};

} // namespace

QMap<quint16, QString> expectedSymbols(const QString &layout)
{
    QMap<quint16, QString> symbols;
    for (const Row &row : sameEverywhere) {
        symbols[row.virtualKey] = QString::fromLatin1(row.symbol);
    }
    for (int i = 0; i < 10; ++i) {
        symbols[quint16('0' + i)] = QString::number(i);
        symbols[quint16(0x60 + i)] = QStringLiteral("KP_%1").arg(i);
    }
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        symbols[quint16(letter)] = QString(QLatin1Char(letter)).toLower();
    }
    for (int i = 1; i <= 24; ++i) {
        symbols[quint16(0x6f + i)] = QStringLiteral("F%1").arg(i);
    }
    const bool german = layout == QLatin1String("de");
    symbols[0xbb] = german ? QStringLiteral("plus") : QStringLiteral("equal");
    symbols[0x6e] = german ? QStringLiteral("KP_Separator") : QStringLiteral("KP_Decimal");
    symbols[0xa5] =
        layout == QLatin1String("us") ? QStringLiteral("Alt_R") : QStringLiteral("ISO_Level3_Shift");
    return symbols;
}
