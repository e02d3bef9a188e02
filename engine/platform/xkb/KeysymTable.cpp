#include "engine/platform/xkb/KeysymTable.h"

#include <QHash>

#include <algorithm>
#include <array>

#define XK_3270
#include <X11/XF86keysym.h>
#include <X11/keysym.h>
#include <xkbcommon/xkbcommon.h>

namespace
{

using KeysymTable::Symbols;

struct Row {
    quint16 virtualKey;
    Symbols symbols;
};

constexpr Row rows[] = {
    {0x03, {XK_Cancel, 0, 0}},
    {0x08, {XK_BackSpace, 0, 0}},
    {0x09, {XK_Tab, 0, XK_ISO_Left_Tab}},
    {0x0c, {XK_KP_Begin, 0, 0}}, // the 5 of the keypad without NumLock
    {0x0d, {XK_Return, 0, 0}},
    {0x10, {XK_Shift_L, 0, 0}},
    {0x11, {XK_Control_L, 0, 0}},
    {0x12, {XK_Alt_L, 0, 0}},
    {0x13, {XK_Pause, 0, 0}},
    {0x14, {XK_Caps_Lock, 0, 0}},
    {0x15, {XK_Hangul, XK_Hiragana_Katakana, 0}},
    {0x17, {XK_Hangul_Jeonja, 0, 0}},
    {0x19, {XK_Hangul_Hanja, XK_Kanji, 0}},
    {0x1b, {XK_Escape, 0, 0}},
    {0x1c, {XK_Henkan, 0, 0}},
    {0x1d, {XK_Muhenkan, 0, 0}},
    {0x1f, {XK_Mode_switch, 0, 0}},
    {0x20, {XK_space, 0, 0}},
    {0x21, {XK_Prior, 0, 0}},
    {0x22, {XK_Next, 0, 0}},
    {0x23, {XK_End, 0, 0}},
    {0x24, {XK_Home, 0, 0}},
    {0x25, {XK_Left, 0, 0}},
    {0x26, {XK_Up, 0, 0}},
    {0x27, {XK_Right, 0, 0}},
    {0x28, {XK_Down, 0, 0}},
    {0x29, {XK_Select, 0, 0}},
    {0x2a, {XK_Print, 0, 0}},
    {0x2b, {XK_Execute, 0, 0}},
    {0x2c, {XK_Print, 0, 0}},
    {0x2d, {XK_Insert, 0, 0}},
    {0x2e, {XK_Delete, 0, 0}},
    {0x2f, {XK_Help, 0, 0}},
    {0x5b, {XK_Super_L, 0, 0}},
    {0x5c, {XK_Super_R, 0, 0}},
    {0x5d, {XK_Menu, 0, 0}},
    {0x5f, {XF86XK_Sleep, 0, 0}},
    {0x6a, {XK_KP_Multiply, 0, 0}},
    {0x6b, {XK_KP_Add, 0, 0}},
    {0x6c, {XK_KP_Separator, 0, 0}},
    {0x6d, {XK_KP_Subtract, 0, 0}},
    {KeysymTable::decimalKey, {XK_KP_Decimal, XK_KP_Separator, 0}},
    {0x6f, {XK_KP_Divide, 0, 0}},
    {0x90, {XK_Num_Lock, 0, 0}},
    {0x91, {XK_Scroll_Lock, 0, 0}},
    {0x92, {XK_KP_Equal, 0, 0}},
    {0xa0, {XK_Shift_L, 0, 0}},
    {0xa1, {XK_Shift_R, 0, 0}},
    {0xa2, {XK_Control_L, 0, 0}},
    {0xa3, {XK_Control_R, 0, 0}},
    {0xa4, {XK_Alt_L, 0, 0}},
    {0xa5, {XK_Alt_R, XK_ISO_Level3_Shift, 0}}, // the right Alt key is AltGr on most layouts
    {0xa6, {XF86XK_Back, 0, 0}},
    {0xa7, {XF86XK_Forward, 0, 0}},
    {0xa8, {XF86XK_Reload, XF86XK_Refresh, 0}},
    {0xa9, {XF86XK_Stop, 0, 0}},
    {0xaa, {XF86XK_Search, 0, 0}},
    {0xab, {XF86XK_Favorites, 0, 0}},
    {0xac, {XF86XK_HomePage, 0, 0}},
    {0xad, {XF86XK_AudioMute, 0, 0}},
    {0xae, {XF86XK_AudioLowerVolume, 0, 0}},
    {0xaf, {XF86XK_AudioRaiseVolume, 0, 0}},
    {0xb0, {XF86XK_AudioNext, 0, 0}},
    {0xb1, {XF86XK_AudioPrev, 0, 0}},
    {0xb2, {XF86XK_AudioStop, 0, 0}},
    {0xb3, {XF86XK_AudioPlay, 0, 0}},
    {0xb4, {XF86XK_Mail, 0, 0}},
    {0xb5, {XF86XK_AudioMedia, 0, 0}},
    {0xb6, {XF86XK_MyComputer, 0, 0}},
    {0xb7, {XF86XK_Calculator, 0, 0}},
    {0xba, {XK_semicolon, 0, XK_colon}},
    {0xbb, {XK_equal, XK_plus, XK_plus}}, // one key: plus where the layout types it without Shift
    {0xbc, {XK_comma, 0, XK_less}},
    {0xbd, {XK_minus, 0, XK_underscore}},
    {0xbe, {XK_period, 0, XK_greater}},
    {0xbf, {XK_slash, 0, XK_question}},
    {0xc0, {XK_grave, 0, XK_asciitilde}},
    {0xc1, {XK_slash, 0, XK_question}},
    {0xc2, {XK_KP_Separator, 0, 0}},
    {0xdb, {XK_bracketleft, 0, XK_braceleft}},
    {0xdc, {XK_backslash, 0, XK_bar}},
    {0xdd, {XK_bracketright, 0, XK_braceright}},
    {0xde, {XK_apostrophe, 0, XK_quotedbl}},
    {0xdf, {XK_exclam, 0, XK_section}}, // only the French layout has this key
    {0xe2, {XK_less, 0, XK_greater}},
    {0xf0, {XK_Eisu_toggle, 0, 0}},
    {0xf1, {XK_Katakana, 0, 0}},
    {0xf2, {XK_Hiragana_Katakana, XK_Hiragana, 0}},
    {0xf3, {XK_Zenkaku_Hankaku, 0, 0}},
    {0xf6, {XK_3270_Attn, 0, 0}},
    {0xf7, {XK_3270_CursorSelect, 0, 0}},
    {0xf8, {XK_3270_ExSelect, 0, 0}},
    {0xf9, {XK_3270_EraseEOF, 0, 0}},
    {0xfa, {XK_3270_Play, 0, 0}},
    {0xfd, {XK_3270_PA1, 0, 0}},
    {0xfe, {XK_Clear, 0, 0}},
};

// Keys that are another key to Windows, or that several codes would press.
struct Alias {
    quint32 keysym;
    quint16 virtualKey;
};

constexpr Alias aliases[] = {
    {XK_ISO_Left_Tab, 0x09}, {XK_KP_Enter, 0x0d},     {XK_Shift_R, 0x10},   {XK_Control_R, 0x11},
    {XK_Alt_R, 0x12},        {XK_Meta_L, 0x12},       {XK_Meta_R, 0x12},    {XK_Break, 0x13},
    {XK_KP_Page_Up, 0x21},   {XK_KP_Page_Down, 0x22}, {XK_KP_End, 0x23},    {XK_KP_Home, 0x24},
    {XK_KP_Left, 0x25},      {XK_KP_Up, 0x26},        {XK_KP_Right, 0x27},  {XK_KP_Down, 0x28},
    {XK_Print, 0x2c},        {XK_Sys_Req, 0x2c},      {XK_KP_Insert, 0x2d}, {XK_KP_Delete, 0x2e},
};

// An accent, and the dead key that types it. A dead key without an accent of its own has no code.
struct Accent {
    char32_t character;
    quint32 dead;
};

constexpr Accent accents[] = {
    {U'^', XK_dead_circumflex},  {U'`', XK_dead_grave},     {U'~', XK_dead_tilde},
    {U'¨', XK_dead_diaeresis},   {U'¯', XK_dead_macron},    {U'´', XK_dead_acute},
    {U'¸', XK_dead_cedilla},     {U'ˇ', XK_dead_caron},     {U'˘', XK_dead_breve},
    {U'˙', XK_dead_abovedot},    {U'˚', XK_dead_abovering}, {U'˛', XK_dead_ogonek},
    {U'˝', XK_dead_doubleacute}, {U'ͺ', XK_dead_iota},
};

using Table = std::array<Symbols, KeysymTable::firstCharacter>;

Table buildTable()
{
    Table table;
    for (const Row &row : rows) {
        table[row.virtualKey] = row.symbols;
    }
    const auto range = [&table](unsigned first, unsigned last, quint32 keysym, quint32 shifted) {
        for (unsigned code = first; code <= last; ++code) {
            table[code] = {keysym + (code - first), 0, shifted ? shifted + (code - first) : 0};
        }
    };
    range(0x30, 0x39, XK_0, 0);
    range(0x41, 0x5a, XK_a, XK_A);
    range(0x60, 0x69, XK_KP_0, 0);
    range(0x70, 0x87, XK_F1, 0);
    return table;
}

const Table &table()
{
    static const Table built = buildTable();
    return built;
}

bool isWindowsKey(quint32 keysym)
{
    return std::any_of(table().cbegin(), table().cend(),
                       [keysym](const Symbols &symbols) { return symbols.keysym == keysym; });
}

// What a bare key may type: no control character and no capital of the letters that have a code.
bool isPrintable(char32_t character)
{
    const bool control = character <= U' ' || (character >= 0x7f && character <= 0xa0);
    const bool surrogate = character >= 0xd800 && character <= 0xdfff;
    const bool capital = character >= U'A' && character <= U'Z';
    return !control && !surrogate && !capital && character < 0xffff - KeysymTable::firstCharacter;
}

// The character that a symbol of the main keys stands for; 0 for keys of the keypad and those that type none.
char32_t characterOf(quint32 keysym)
{
    const bool isFunction = keysym >= 0xfd00 && keysym <= 0xffff;
    return isFunction ? 0 : xkb_keysym_to_utf32(keysym);
}

QHash<quint32, quint16> buildInverse()
{
    QHash<quint32, quint16> inverse;
    const auto add = [&inverse](quint32 keysym, unsigned virtualKey) {
        if (keysym != 0 && !inverse.contains(keysym)) {
            inverse.insert(keysym, quint16(virtualKey));
        }
    };
    // Where nothing is known of the layout; else the grave accent has a key of its own.
    add(XK_dead_grave, 0xc0);
    for (const Alias &alias : aliases) {
        add(alias.keysym, alias.virtualKey);
    }
    for (unsigned code = 0; code < KeysymTable::firstCharacter; ++code) {
        add(table()[code].keysym, code);
    }
    for (unsigned code = 0; code < KeysymTable::firstCharacter; ++code) {
        add(table()[code].alternative, code);
    }
    return inverse;
}

} // namespace

KeysymTable::Symbols KeysymTable::symbolsOf(quint16 virtualKey)
{
    if (virtualKey < firstCharacter) {
        return table()[virtualKey];
    }
    const char32_t character = virtualKey - firstCharacter;
    Symbols symbols;
    if (isPrintable(character)) {
        const quint32 keysym = xkb_utf32_to_keysym(character);
        symbols.keysym = isWindowsKey(keysym) ? 0 : keysym;
    }
    for (const Accent &accent : accents) {
        if (accent.character == character) {
            (symbols.isEmpty() ? symbols.keysym : symbols.alternative) = accent.dead;
        }
    }
    return symbols;
}

quint16 KeysymTable::virtualKeyOf(quint32 keysym)
{
    static const QHash<quint32, quint16> inverse = buildInverse();
    return inverse.value(keysym);
}

bool KeysymTable::isOneKeyWithAnother(quint32 keysym)
{
    return std::any_of(std::begin(aliases), std::end(aliases),
                       [keysym](const Alias &alias) { return alias.keysym == keysym; });
}

bool KeysymTable::isCharacter(quint32 keysym)
{
    return characterOf(keysym) != 0;
}

quint16 KeysymTable::characterCode(quint32 keysym)
{
    char32_t character = characterOf(keysym);
    for (const Accent &accent : accents) {
        if (keysym == accent.dead) {
            character = accent.character;
        }
    }
    const auto code = quint16(firstCharacter + character);
    const Symbols symbols = isPrintable(character) ? symbolsOf(code) : Symbols();
    return !symbols.isEmpty() && (symbols.keysym == canonical(keysym) || symbols.alternative == keysym)
               ? code
               : quint16(0);
}

quint32 KeysymTable::canonical(quint32 keysym)
{
    const char32_t character = characterOf(keysym);
    return character != 0 && character != U' ' ? xkb_utf32_to_keysym(character) : keysym;
}
