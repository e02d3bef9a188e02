#include "mapping/ZRButtonMap.h"

ZRButtonMap::ZRButtonMap(const QString &mapName, QObject *parent)
    : QObject(parent)
    , name(mapName)
{
}

void ZRButtonMap::setAction(int button, int layer, const shortCut &action)
{
    const std::optional<Layer> inLayer = Layers::fromNumber(layer);
    if (!ActionTable::has(button) || !inLayer) {
        return;
    }
    // The knob fields are left out on purpose: only code that assigns a whole entry puts them into a map.
    shortCut &stored = actions[button][*inLayer];
    stored.key1 = action.key1;
    stored.key2 = action.key2;
    stored.key3 = action.key3;
    stored.label = action.label;
    stored.channel = action.channel;
    stored.cc = action.cc;
    stored.v_on = action.v_on;
    stored.v_off = action.v_off;
    stored.note = action.note;
    stored.v_off_enable = action.v_off_enable;
}

// cppcheck-suppress passedByValue // likewise
// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is part of the interface
void ZRButtonMap::setAction(const QString &button, const QString &layer, shortCut action)
{
    if (const std::optional<Layer> inLayer = Layers::fromFileName(layer)) {
        setAction(button.toInt(), Layers::number(*inLayer), action);
    }
}
