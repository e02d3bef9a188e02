#include "engine/platform/x11/CapturedKey.h"

#include "engine/platform/x11/KeysymTable.h"

#include <X11/keysym.h>

namespace
{

bool isKeypad(quint32 keysym)
{
    return keysym >= XK_KP_Space && keysym <= XK_KP_Equal;
}

// Neither Latin-1 nor a function key: letters of another script, for the most part.
bool isOtherScript(quint32 keysym)
{
    return keysym > 0xff && (keysym < 0xfd00 || keysym > 0xffff);
}

quint16 digit(quint32 keysym)
{
    return keysym >= XK_0 && keysym <= XK_9 ? quint16(keysym) : quint16(0);
}

} // namespace

int CapturedKey::virtualKey() const
{
    // NumLock makes other keys of the keypad's; everywhere else the modifiers change nothing.
    if (keypadDecimal != 0 && pressed == keypadDecimal && (isKeypadDecimal || isKeypad(pressed))) {
        return KeysymTable::decimalKey;
    }
    const quint32 symbol = isKeypad(pressed) || plain == 0 ? pressed : plain;
    if (const quint16 code = KeysymTable::virtualKeyOf(symbol)) {
        return code;
    }
    // The digits of some layouts need Shift.
    if (const quint16 code = digit(shifted)) {
        return code;
    }
    // A Latin letter is what an application looks for in a shortcut typed in another script.
    if (isOtherScript(symbol)) {
        const quint16 code = KeysymTable::virtualKeyOf(otherGroup);
        return code != 0 ? code : KeysymTable::virtualKeyOf(quint32(quint8(usSymbol)));
    }
    return KeysymTable::characterCode(symbol);
}
