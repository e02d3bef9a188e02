#include "engine/platform/windows/WindowsPointer.h"

#include "engine/platform/windows/win32/Win32Pointer.h"

QPoint WindowsPointer::position() const
{
    Win32Pointer::Point point;
    if (Win32Pointer::position(point)) {
        m_lastSeen = QPoint(point.x, point.y);
    }
    return m_lastSeen;
}

void WindowsPointer::moveTo(QPoint position)
{
    Win32Pointer::moveTo({position.x(), position.y()});
}

QVector<QRect> WindowsPointer::screens() const
{
    QVector<QRect> screens;
    for (const Win32Pointer::Rect &rect : Win32Pointer::screens()) {
        screens.append(QRect(rect.left, rect.top, rect.width, rect.height));
    }
    return screens;
}
