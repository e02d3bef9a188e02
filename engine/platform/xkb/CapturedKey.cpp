#include "engine/platform/xkb/CapturedKey.h"

#include <QVector>

#include <X11/keysym.h>
#include <algorithm>
#include <xkbcommon/xkbcommon.h>

namespace
{

bool isKeypad(quint32 keysym)
{
    return keysym >= XK_KP_Space && keysym <= XK_KP_Equal;
}

/// Greek, Cyrillic, Hebrew and Arabic: an application looks for the Latin letter in a shortcut that is typed
/// in one of them.
bool standsForLatin(quint32 keysym)
{
    static constexpr struct {
        char32_t first;
        char32_t last;
    } blocks[] = {{0x370, 0x52f},   {0x590, 0x6ff},   {0x750, 0x77f},   {0x8a0, 0x8ff},   {0x1c80, 0x1c8f},
                  {0x1f00, 0x1fff}, {0x2de0, 0x2dff}, {0xa640, 0xa69f}, {0xfb1d, 0xfdff}, {0xfe70, 0xfefc}};
    const char32_t character = xkb_keysym_to_utf32(keysym);
    return std::any_of(std::begin(blocks), std::end(blocks), [character](const auto &block) {
        return character >= block.first && character <= block.last;
    });
}

} // namespace

int CapturedKey::virtualKey(const KeyboardMap &map) const
{
    // NumLock makes other keys of the keypad's; everywhere else the modifiers change nothing.
    const quint32 decimal = map.keypadDecimal();
    if (decimal != 0 && pressed == decimal && (isKeypadDecimal || isKeypad(pressed))) {
        return KeysymTable::decimalKey;
    }
    const quint32 bare = map.symbolAt(keycode) != 0 ? map.symbolAt(keycode) : plain;
    const quint32 symbol = bare == 0 || (isKeypad(bare) && isKeypad(pressed)) ? pressed : bare;
    if (standsForLatin(symbol)) {
        const quint16 latin = KeysymTable::virtualKeyOf(otherGroup);
        const quint16 code = latin != 0 ? latin : KeysymTable::virtualKeyOf(quint32(quint8(usSymbol)));
        if (code != 0 || map.isEmpty()) {
            return code;
        }
    }
    // Windows' code comes first, unless another key of this layout answers to it.
    const quint16 code = KeysymTable::virtualKeyOf(symbol);
    const quint16 character = KeysymTable::characterCode(symbol);
    for (const quint16 candidate : {code, character}) {
        if (candidate != 0 && (map.isEmpty() || isPressedBy(candidate, symbol, map))) {
            return candidate;
        }
    }
    return KeysymTable::isOneKeyWithAnother(symbol) ? code : 0;
}

bool CapturedKey::isPressedBy(quint16 virtualKey, quint32 symbol, const KeyboardMap &map) const
{
    const KeyboardMap::Place place = map.placeOf(virtualKey);
    if (!place.direct || place.keycode == keycode) {
        return place.direct;
    }
    // Another key that types the same will do, but a character also has to be the same with Shift.
    return map.types(place.keycode, symbol) &&
           (!KeysymTable::isCharacter(symbol) || map.shiftedAt(place.keycode) == map.shiftedAt(keycode));
}
