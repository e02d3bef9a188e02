#include "game/QDrawingContext.h"

#include <QBrush>
#include <QPainter>
#include <QRect>

namespace
{

QRect pixels(float x, float y, float w, float h)
{
    return {qRound(x), qRound(y), qRound(w), qRound(h)};
}

} // namespace

QDrawingContext::QDrawingContext(QPainter &target)
    : painter(target)
    , color(Qt::black)
{
}

void QDrawingContext::setRgb(const float rgb[3])
{
    DrawingContext::setRgb(rgb);
    color = QColor(qRound(r * 255.0F), qRound(g * 255.0F), qRound(b * 255.0F), 255);
}

void QDrawingContext::drawRect(float x, float y, float w, float h)
{
    painter.setBrush(QBrush(color, Qt::SolidPattern));
    const QRect rect = pixels(x, y, w, h);
    painter.drawRects(&rect, 1);
}

void QDrawingContext::drawEllipse(float x, float y, float w, float h)
{
    painter.setBrush(QBrush(color, Qt::SolidPattern));
    painter.drawEllipse(pixels(x, y, w, h));
}
