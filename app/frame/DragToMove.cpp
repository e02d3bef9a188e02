#include "app/frame/DragToMove.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

DragToMove::DragToMove(QWidget *handle)
    : QObject(handle)
    , m_handle(handle)
{
    handle->installEventFilter(this);
}

bool DragToMove::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto *press = static_cast<QMouseEvent *>(event);
        if (press->button() != Qt::LeftButton) {
            break;
        }
        begin(press->globalPos());
        return true;
    }
    case QEvent::MouseMove: {
        const auto *move = static_cast<QMouseEvent *>(event);
        if (m_drag == Drag::None || !move->buttons().testFlag(Qt::LeftButton)) {
            break;
        }
        moveTo(move->globalPos());
        return true;
    }
    case QEvent::MouseButtonRelease:
        m_drag = Drag::None;
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void DragToMove::begin(const QPoint &pointer)
{
    m_drag = Drag::Pressed;
    m_pressed = pointer;
    m_place = m_handle->window()->pos();
}

void DragToMove::moveTo(const QPoint &pointer)
{
    const QPoint way = pointer - m_pressed;
    if (m_drag == Drag::Pressed) {
        if (way.manhattanLength() < QApplication::startDragDistance()) {
            return;
        }
        // The window manager knows edges and work spaces, if there is one.
        QWindow *window = m_handle->window()->windowHandle();
        m_drag = window != nullptr && window->startSystemMove() ? Drag::None : Drag::OurOwn;
    }
    if (m_drag == Drag::OurOwn) {
        m_handle->window()->move(m_place + way);
    }
}
