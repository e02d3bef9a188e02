#include "app/WindowPlace.h"

#include <algorithm>

QPoint WindowPlace::inTheMiddleOf(const QRect &screen, const QSize &window)
{
    return screen.topLeft() + QPoint(std::max(0, (screen.width() - window.width()) / 2),
                                     std::max(0, (screen.height() - window.height()) / 2));
}

bool WindowPlace::isWhole(const QRect &window, const QVector<QRect> &screens)
{
    return std::any_of(screens.begin(), screens.end(),
                       [&window](const QRect &screen) { return screen.contains(window); });
}
