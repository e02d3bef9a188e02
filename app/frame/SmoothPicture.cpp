#include "app/frame/SmoothPicture.h"

#include <QImage>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

#include <cmath>

SmoothPicture::SmoothPicture(QWidget *parent)
    : QLabel(parent)
{
}

void SmoothPicture::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    // The device's, not the widget's: the window may be painted into a picture of another scale.
    const qreal scale = painter.device()->devicePixelRatioF();
    if (scale == std::floor(scale)) {
        painter.end();
        QLabel::paintEvent(event);
        return;
    }
    painter.drawPixmap(0, 0, madeFor(scale));
}

QPixmap SmoothPicture::madeFor(qreal scale)
{
    if (m_made.devicePixelRatioF() == scale && m_madeOf == styleSheet() &&
        m_made.size() == (QSizeF(size()) * scale).toSize()) {
        return m_made;
    }
    const qreal whole = std::ceil(scale);
    QImage larger(size() * static_cast<int>(whole), QImage::Format_ARGB32_Premultiplied);
    larger.setDevicePixelRatio(whole);
    larger.fill(Qt::transparent);
    QPainter painter(&larger);
    QStyleOptionFrame option;
    initStyleOption(&option);
    style()->drawControl(QStyle::CE_ShapedFrame, &option, &painter, this);
    painter.end();
    larger.setDevicePixelRatio(1);
    m_made = QPixmap::fromImage(larger.scaled((QSizeF(size()) * scale).toSize(), Qt::IgnoreAspectRatio,
                                              Qt::SmoothTransformation));
    m_made.setDevicePixelRatio(scale);
    m_madeOf = styleSheet();
    return m_made;
}
