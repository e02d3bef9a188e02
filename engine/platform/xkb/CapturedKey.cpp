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
    const quint32 symbol = isKeypad(pressed) || plain == 0 ? pressed : plain;
    if (standsForLatin(symbol)) {
        const quint16 code = KeysymTable::virtualKeyOf(otherGroup);
        return code != 0 ? code : KeysymTable::virtualKeyOf(quint32(quint8(usSymbol)));
    }
    // Windows' code comes first, unless another key of this layout answers to it.
    const quint16 code = KeysymTable::virtualKeyOf(symbol);
    const quint16 character = KeysymTable::characterCode(symbol);
    const auto pressesThis = [&map, symbol](quint16 virtualKey) {
        const KeyboardMap::Place place = map.placeOf(virtualKey);
        return place.direct && map.types(place.keycode, symbol);
    };
    return code == 0 || (character != 0 && !pressesThis(code) && pressesThis(character)) ? character : code;
}
