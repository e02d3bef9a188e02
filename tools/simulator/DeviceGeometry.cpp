#include "tools/simulator/DeviceGeometry.h"

#include <QLineF>

#include <cmath>

namespace simulator::geometry
{

namespace
{

constexpr QPointF centers[buttonCount] = {{179, 90}, {154, 74}, {128, 90}, {128, 120}, {179, 120},
                                          {225, 90}, {250, 90}, {275, 90}, {264, 120}, {238, 120}};

bool isWithin(QPointF point, QPointF center, qreal radius)
{
    return QLineF(center, point).length() <= radius;
}

} // namespace

QRectF body()
{
    return {98, 46, 206, 108};
}

QRectF bounds()
{
    return {66, 10, 270, 172};
}

QPointF buttonCenter(int button)
{
    return centers[button];
}

QPointF knobCenter()
{
    return {154, 104};
}

int buttonAt(QPointF point)
{
    for (int button = 0; button < buttonCount; ++button) {
        if (isWithin(point, buttonCenter(button), buttonRadius)) {
            return button;
        }
    }
    return -1;
}

bool isOnKnob(QPointF point)
{
    return isWithin(point, knobCenter(), knobRadius);
}

qreal knobAngle(QPointF point)
{
    // QLineF counts counter-clockwise from three o'clock.
    const qreal angle = 90.0 - QLineF(knobCenter(), point).angle();
    return angle < 0 ? angle + 360.0 : angle;
}

qreal turnBetween(qreal from, qreal to)
{
    const qreal turn = std::remainder(to - from, 360.0);
    return turn;
}

} // namespace simulator::geometry
