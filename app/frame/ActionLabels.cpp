#include "app/frame/ActionLabels.h"

#include "app/frame/Look.h"

#include <QFontMetrics>

namespace
{

bool fits(const QString &line, const QFont &font)
{
    return QFontMetrics(font).horizontalAdvance(line) <= ActionLabels::room;
}

} // namespace

QFont ActionLabels::titleFont()
{
    return Look::font(Look::Face::Menu, 12, QFont::Bold);
}

QFont ActionLabels::layersFont()
{
    return Look::font(Look::Face::Menu, 10);
}

bool ActionLabels::fit(const QString &normal, const QString &shift1, const QString &shift2)
{
    return fits(normal.toUpper(), titleFont()) &&
           fits(shift1.toUpper() + QLatin1String(separator) + shift2.toUpper(), layersFont());
}
