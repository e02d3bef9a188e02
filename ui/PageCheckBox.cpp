#include "ui/PageCheckBox.h"

#include <QPainter>
#include <QStyleOptionButton>

PageCheckBox::PageCheckBox(QWidget *parent)
    : QCheckBox(parent)
{
}

void PageCheckBox::paintEvent(QPaintEvent *event)
{
    QCheckBox::paintEvent(event);
    constexpr QColor line(255, 255, 255, 160);
    constexpr qreal half = 0.5; // of the line's width
    constexpr qreal radius = 2;
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRectF square = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line);
    painter.drawRoundedRect(square.adjusted(half, half, -half, -half), radius, radius);
}
