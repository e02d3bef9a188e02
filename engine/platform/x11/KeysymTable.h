#pragma once

#include <QtGlobal>

/// The X keysyms that stand for the Windows virtual-key codes of the mappings.
namespace KeysymTable
{

struct Symbols {
    quint32 keysym = 0;      ///< 0: X knows no such key
    quint32 alternative = 0; ///< stands for the same key on other layouts; 0: none
    quint32 shifted = 0;     ///< what a key made for this code gives with Shift; 0: the same

    bool isEmpty() const { return keysym == 0; }
};

/// The number of codes: Windows' own, and one for each Latin-1 character (see characterCode()).
constexpr unsigned codes = 0x200;

/// The symbols of a code as sent: letters are lower case, the keypad is the one with NumLock on.
Symbols symbolsOf(quint16 virtualKey);

/// The code of the key that types a symbol without modifiers; 0 when Windows has none. Left and right Shift,
/// Ctrl and Alt are one key, as in the key messages of Windows.
quint16 virtualKeyOf(quint32 keysym);

/// The code of a key that types a Latin-1 character and is none of Windows' own (on its layouts such a key
/// has the code of another key): 0x100 plus the character. A dead key is its accent. 0 for other symbols.
/// To be asked when virtualKeyOf() knows no code.
quint16 characterCode(quint32 keysym);

/// The code of the decimal key of the keypad, whose symbol is the layout's business.
constexpr quint16 decimalKey = 0x6e;

} // namespace KeysymTable
