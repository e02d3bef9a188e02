#include "app/frame/ClickableLabel.h"

#include "app/frame/AccessibleButton.h"
#include "app/frame/FocusFrame.h"

#include <QKeyEvent>
#include <QMouseEvent>

ClickableLabel::ClickableLabel(QWidget *parent)
    : QLabel(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    new FocusFrame(this);
    new AccessibleButton(this, QAccessible::Button, [this] { Q_EMIT clicked(); });
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
