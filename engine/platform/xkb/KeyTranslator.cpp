#include "engine/platform/xkb/KeyTranslator.h"

#include <algorithm>

KeyTranslator::KeyTranslator(Assign assign, const Held &held)
    : m_assign(std::move(assign))
    , m_held(held)
{
}

void KeyTranslator::setMap(const KeyboardMap &map)
{
    m_map = map;
    m_known.clear();
    // Whoever replaced the layout has thrown our symbols out, or put something of their own in their place.
    const auto isGone = [this](const Spare &spare) { return !m_map.types(spare.keycode, spare.keysym); };
    m_spares.erase(std::remove_if(m_spares.begin(), m_spares.end(), isGone), m_spares.end());
    prepareWanted();
}

void KeyTranslator::want(const QVector<quint16> &virtualKeys)
{
    m_wanted = virtualKeys;
    m_known.clear();
    prepareWanted();
}

void KeyTranslator::prepareWanted()
{
    // Symbols that the layout does not have at all come first: the others can be typed with a modifier at
    // need.
    QVector<quint16> wanted = m_wanted;
    std::stable_partition(wanted.begin(), wanted.end(), [this](quint16 virtualKey) {
        return m_map.find(m_map.symbolsOf(virtualKey).keysym).keycode == 0;
    });
    for (const quint16 virtualKey : qAsConst(wanted)) {
        strokeFor(virtualKey);
    }
}

KeyTranslator::Stroke KeyTranslator::strokeFor(quint16 virtualKey)
{
    const auto known = m_known.constFind(virtualKey);
    if (known != m_known.constEnd()) {
        return *known;
    }
    const Stroke stroke = translate(virtualKey);
    // A makeshift is not kept: there may be a better way next time.
    if (stroke.keycode != 0 && stroke.modifiers == 0) {
        m_known.insert(virtualKey, stroke);
    }
    return stroke;
}

KeyTranslator::Stroke KeyTranslator::translate(quint16 virtualKey)
{
    const KeysymTable::Symbols symbols = m_map.symbolsOf(virtualKey);
    if (symbols.isEmpty()) {
        return {};
    }
    const KeyboardMap::Place place = m_map.placeOf(virtualKey);
    if (place.direct) {
        return {place.keycode, 0};
    }
    if (const quint8 keycode = takeSpare()) {
        m_assign(keycode, symbols.keysym, symbols.shifted);
        m_map.put(keycode, symbols.keysym);
        m_spares.append({keycode, symbols.keysym});
        return {keycode, 0};
    }
    return {place.keycode, place.modifiers};
}

quint8 KeyTranslator::takeSpare()
{
    for (const quint8 keycode : m_map.spares()) {
        if (!m_held.test(keycode)) {
            return keycode;
        }
    }
    for (int i = 0; i < m_spares.size(); ++i) {
        const Spare spare = m_spares.at(i);
        if (!m_held.test(spare.keycode) && !isWanted(spare.keysym)) {
            m_spares.remove(i);
            m_known.clear();
            return spare.keycode;
        }
    }
    return 0;
}

bool KeyTranslator::isWanted(quint32 keysym) const
{
    return std::any_of(m_wanted.cbegin(), m_wanted.cend(), [this, keysym](quint16 virtualKey) {
        const KeysymTable::Symbols symbols = m_map.symbolsOf(virtualKey);
        return symbols.keysym == keysym || symbols.alternative == keysym;
    });
}
