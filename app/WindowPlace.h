#pragma once

#include <QPoint>
#include <QRect>
#include <QVector>

/// Where the program's window goes, so that all of it is to be seen. Free of windows and screens.
namespace WindowPlace
{

/// In the middle of @p screen; at its upper left corner where the window is larger.
QPoint inTheMiddleOf(const QRect &screen, const QSize &window);

/// Whether one of @p screens shows all of @p window.
bool isWhole(const QRect &window, const QVector<QRect> &screens);

} // namespace WindowPlace
