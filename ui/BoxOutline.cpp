#include "ui/BoxOutline.h"

#include <QPainter>

namespace
{

constexpr QColor outline(0xff, 0xd2, 0x4d); // as no box is, and the focus is not
constexpr qreal thickness = 2;
constexpr qreal radius = 5;

} // namespace

BoxOutline::BoxOutline(QWidget *box)
    : QWidget(box)
{
    setObjectName(QStringLiteral("pressed"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(box->rect());
    hide();
}

void BoxOutline::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(outline, thickness));
    constexpr qreal inset = thickness / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}
