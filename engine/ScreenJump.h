#pragma once

#include <QPoint>
#include <QRect>
#include <QVector>

/// Where a pointer at @p position lands that jumps to the next of @p screens (or, with @p previous, to the
/// one before, both wrapping round). It keeps its distance from the screen's left and top edge; a distance
/// greater than the target is wide (or high) becomes half the width (or height). A position on no screen
/// counts for the nearest one. Without screens the pointer stays.
QPoint screenJumpTarget(QPoint position, const QVector<QRect> &screens, bool previous);
