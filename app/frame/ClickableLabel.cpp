#include "app/frame/ClickableLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>

ClickableLabel::ClickableLabel(QWidget *parent)
    : QLabel(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
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
