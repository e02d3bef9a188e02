#include "ui/ActionKeys.h"

#include "mapping/ZRButtonMap.h"

#include <QLatin1Char>

namespace
{

constexpr int shift2Layer = 2;

bool hasOwnValueFields(int layer, ActionKeys::Purpose purpose)
{
    return layer == shift2Layer && purpose == ActionKeys::Purpose::Reading;
}

} // namespace

QString ActionKeys::prefix(int control)
{
    if (control < 0 || control >= ZRButtonMap::buttonCount) {
        return QString();
    }
    return QStringLiteral("ButtonAction").mid(control);
}

QString ActionKeys::layerPart(int layer)
{
    switch (layer) {
    case 0:
        return QStringLiteral(".Normal");
    case 1:
        return QStringLiteral(".Shift1");
    case shift2Layer:
        return QStringLiteral(".Shift2");
    default:
        return QString();
    }
}

QString ActionKeys::key(int control, int layer, const QString &field)
{
    const QString first = prefix(control);
    const QString second = layerPart(layer);
    if (first.isEmpty() || second.isEmpty()) {
        return QString();
    }
    return first + second + QLatin1Char('.') + field;
}

QString ActionKeys::pressValueField(int layer, Purpose purpose)
{
    return hasOwnValueFields(layer, purpose) ? QStringLiteral("value_on") : QStringLiteral("on_touch");
}

QString ActionKeys::releaseValueField(int layer, Purpose purpose)
{
    return hasOwnValueFields(layer, purpose) ? QStringLiteral("value_off") : QStringLiteral("after_touch");
}
