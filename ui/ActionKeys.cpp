#include "ui/ActionKeys.h"

#include "mapping/ActionTable.h"

#include <QLatin1Char>

namespace
{

bool hasOwnValueFields(Layer layer, ActionKeys::Purpose purpose)
{
    return layer == Layer::Shift2 && purpose == ActionKeys::Purpose::Reading;
}

} // namespace

QString ActionKeys::prefix(int control)
{
    return ActionTable::has(control) ? QStringLiteral("ButtonAction").mid(control) : QString();
}

QString ActionKeys::key(int control, Layer layer, const QString &field)
{
    const QString first = prefix(control);
    if (first.isEmpty()) {
        return QString();
    }
    return first + QLatin1Char('.') + Layers::settingsName(layer) + QLatin1Char('.') + field;
}

QString ActionKeys::pressValueField(Layer layer, Purpose purpose)
{
    return hasOwnValueFields(layer, purpose) ? QStringLiteral("value_on") : QStringLiteral("on_touch");
}

QString ActionKeys::releaseValueField(Layer layer, Purpose purpose)
{
    return hasOwnValueFields(layer, purpose) ? QStringLiteral("value_off") : QStringLiteral("after_touch");
}
