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

/// The codes below this are Windows' own; those from here on are characters (see characterCode()).
constexpr unsigned firstCharacter = 0x100;

/// The symbols of a code as sent: letters are lower case, the keypad is the one with NumLock on.
Symbols symbolsOf(quint16 virtualKey);

/// The code of the key that types a symbol without modifiers; 0 when Windows has none. Left and right Shift,
/// Ctrl and Alt are one key, as in the key messages of Windows.
quint16 virtualKeyOf(quint32 keysym);

/// True for keys that are another key to Windows: the right Shift, the Enter and the arrows of the keypad.
bool isOneKeyWithAnother(quint32 keysym);

/// True for what types a character (also one with a code of its own), false for keys of the keypad, function
/// keys and dead keys.
bool isCharacter(quint32 keysym);

/// The code of a key by the character that it types: firstCharacter plus the code point, for keys that are
/// none of Windows' own (on its layouts such a key has the code of another key). A dead key is its accent. 0
/// for what types no character, or one beyond 16 bits. To be asked when virtualKeyOf() knows no code that
/// fits.
quint16 characterCode(quint32 keysym);

/// One symbol has one number: those of characters, which may have several, become the customary one.
quint32 canonical(quint32 keysym);

/// The code of the decimal key of the keypad, whose symbol is the layout's business.
constexpr quint16 decimalKey = 0x6e;

} // namespace KeysymTable
