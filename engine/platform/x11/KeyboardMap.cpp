#include "engine/platform/x11/KeyboardMap.h"

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
