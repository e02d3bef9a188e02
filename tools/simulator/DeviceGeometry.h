#pragma once

#include <QPointF>
#include <QRectF>

/// Where the controls are on the device. Units: the pixels of the program's own 402 x 192 device picture, so
/// that both drawings show the same device.
namespace simulator::geometry
{

inline constexpr int buttonCount = 10;
inline constexpr qreal buttonRadius = 11.2;
inline constexpr qreal knobRadius = 15.5;

/// How far the knob turns with one step, in degrees.
inline constexpr qreal degreesPerStep = 15.0;

/// The body, and the area to draw: the body with room for its cable and shadow.
QRectF body();
QRectF bounds();

/// @p button is 0 to 9.
QPointF buttonCenter(int button);
QPointF knobCenter();

/// The button at @p point, or -1.
int buttonAt(QPointF point);
bool isOnKnob(QPointF point);

/// The direction of @p point seen from the knob's centre, in degrees clockwise from straight up, 0 to 360.
qreal knobAngle(QPointF point);

/// The way from one such angle to another, -180 to 180, positive to the right (clockwise).
qreal turnBetween(qreal from, qreal to);

} // namespace simulator::geometry
