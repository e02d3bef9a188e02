#include "mapping/ReadBack.h"

#include "mapping/EntryElement.h"
#include "mapping/SpecialAction.h"
#include "mapping/ZRButtonMap.h"

#include <QDomDocument>
#include <QString>

#include <algorithm>
#include <tuple>

namespace
{

shortCut entryOf(const shortCut &action)
{
    QDomDocument document;
    ZRButtonMap map{QString()};
    const Layer layer = Layer::Normal;
    const QDomElement element = EntryElement::write(&document, Layers::fileName(layer), action);
    map.setAction(0, Layers::number(layer), EntryElement::read(element, 0, 0));
    return map.actions[0][layer];
}

bool isSameEntry(const shortCut &one, const shortCut &other)
{
    return one == other || entryOf(one) == entryOf(other);
}

bool isSameEntryForTheKnob(const shortCut &one, const shortCut &other)
{
    const auto fields = [](const shortCut &s) { return std::tie(s.knobcc, s.m01h, s.m3fh, s.m0_127); };
    return actionKind(one) != ActionKind::MidiKnob || fields(one) == fields(other);
}

template <typename Same>
bool all(const ActionTable &ones, const ActionTable &others, Same same)
{
    return std::equal(ones.begin(), ones.end(), others.begin(), [same](const auto &one, const auto &other) {
        return std::equal(one.begin(), one.end(), other.begin(), same);
    });
}

} // namespace

ActionTable ReadBack::of(const ActionTable &actions)
{
    ActionTable read;
    for (int control = 0; control < ActionTable::controlCount; ++control) {
        for (const Layer layer : Layers::all) {
            read[control][layer] = entryOf(actions[control][layer]);
        }
    }
    return read;
}

bool ReadBack::isSame(const ActionTable &ones, const ActionTable &others)
{
    return all(ones, others, isSameEntry);
}

bool ReadBack::isSameForTheKnob(const ActionTable &ones, const ActionTable &others)
{
    return all(ones, others, isSameEntryForTheKnob);
}
