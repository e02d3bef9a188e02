#include "engine/platform/xkb/KeyboardMap.h"

void KeyboardMap::add(quint32 keysym, const Place &place)
{
    if (place.direct && !m_direct.contains(place.keycode)) {
        m_direct.insert(place.keycode, keysym);
    }
    const auto known = m_places.constFind(keysym);
    if (known == m_places.constEnd() || (place.direct && !known->direct)) {
        m_places.insert(keysym, place);
    }
}

void KeyboardMap::put(quint8 keycode, quint32 keysym)
{
    m_places.remove(m_direct.take(keycode));
    m_spares.removeAll(keycode);
    add(keysym, {keycode, true, 0});
}

KeysymTable::Symbols KeyboardMap::symbolsOf(quint16 virtualKey) const
{
    if (virtualKey == KeysymTable::decimalKey && m_keypadDecimal != 0) {
        return {m_keypadDecimal, 0, 0};
    }
    return KeysymTable::symbolsOf(virtualKey);
}

KeyboardMap::Place KeyboardMap::placeOf(quint16 virtualKey) const
{
    const KeysymTable::Symbols symbols = symbolsOf(virtualKey);
    const Place first = find(symbols.keysym);
    const Place second = find(symbols.alternative);
    const bool takeSecond = first.keycode == 0 || (second.direct && !first.direct);
    return takeSecond ? second : first;
}
