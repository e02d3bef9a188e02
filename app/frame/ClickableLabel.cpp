#include "app/frame/ClickableLabel.h"

#include "app/frame/AccessibleLabel.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

ClickableLabel::ClickableLabel(QWidget *parent)
    : QLabel(parent)
{
    static const bool told = (QAccessible::installFactory(&AccessibleLabel::create), true);
    Q_UNUSED(told)
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
}

void ClickableLabel::focusInEvent(QFocusEvent *event)
{
    QLabel::focusInEvent(event);
    m_focusShown = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    update();
}

// White, for the pages. The dialogs' sheets have a frame of their own.
void ClickableLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    if (hasFocus() && m_focusShown) {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(255, 255, 255, 222), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
    }
}

void ClickableLabel::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    Q_EMIT clicked();
}

void ClickableLabel::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT clicked();
        break;
    default:
        QLabel::keyPressEvent(event);
    }
}
