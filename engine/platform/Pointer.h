#pragma once

#include <QPoint>
#include <QRect>
#include <QVector>

/// Where the mouse pointer is, and where it can go. Coordinates are desktop pixels. Used on the GUI thread.
class Pointer
{
    Q_DISABLE_COPY_MOVE(Pointer)

public:
    Pointer() = default;
    virtual ~Pointer() = default;

    virtual QPoint position() const = 0;

    /// Moves the pointer. The program's own MouseListener does not report such a movement where the system
    /// lets it tell the two apart.
    virtual void moveTo(QPoint position) = 0;

    /// Moves the pointer to another screen: moveTo(), where the pointer's place is always known.
    virtual void jumpTo(QPoint position) { moveTo(position); }

    /// The screens' geometries, in the system's order with the primary one first. Never empty.
    virtual QVector<QRect> screens() const = 0;
};
