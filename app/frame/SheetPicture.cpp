#include "app/frame/SheetPicture.h"

#include <QImage>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWidget>

#include <cmath>

namespace
{

void drawSheet(QPainter &painter, const QWidget &widget)
{
    QStyleOption option;
    option.initFrom(&widget);
    widget.style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, &widget);
}

QPixmap made(const QWidget &widget, qreal scale)
{
    const auto whole = static_cast<int>(std::ceil(scale));
    QImage larger(widget.size() * whole, QImage::Format_ARGB32_Premultiplied);
    larger.setDevicePixelRatio(whole);
    larger.fill(Qt::transparent);
    QPainter painter(&larger);
    drawSheet(painter, widget);
    painter.end();
    larger.setDevicePixelRatio(1);
    QPixmap result = QPixmap::fromImage(larger.scaled((QSizeF(widget.size()) * scale).toSize(),
                                                      Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    result.setDevicePixelRatio(scale);
    return result;
}

} // namespace

void SheetPicture::draw(QPainter &painter, const QWidget &widget)
{
    // The device's: a window may be painted into a picture of another scale than its screen's.
    const qreal scale = painter.device()->devicePixelRatioF();
    if (scale == std::floor(scale)) {
        drawSheet(painter, widget);
        return;
    }
    if (m_made.isNull() || m_made.devicePixelRatioF() != scale) {
        m_made = made(widget, scale);
    }
    painter.drawPixmap(0, 0, m_made);
}
