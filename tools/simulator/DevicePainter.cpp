#include "tools/simulator/DevicePainter.h"

#include "tools/simulator/DeviceGeometry.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <cmath>

namespace simulator
{

namespace
{

const QColor accent(0x53, 0x42, 0xd9);
const QColor accentLight(0x8b, 0x7d, 0xff);
const QColor inUse(0x35, 0xd0, 0x8a);
const QColor waiting(0xff, 0xb3, 0x3e);

// The buttons' caps, as the program's drawing shows them.
constexpr QRgb capColours[] = {qRgb(62, 86, 166),   qRgb(62, 86, 166), qRgb(62, 86, 166), qRgb(171, 166, 166),
                               qRgb(171, 166, 166), qRgb(160, 53, 46), qRgb(161, 75, 40), qRgb(152, 131, 44),
                               qRgb(85, 128, 95),   qRgb(85, 128, 95)};

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

QGradient vertical(const QRectF &area, const QColor &top, const QColor &bottom)
{
    QLinearGradient gradient(area.topLeft(), area.bottomLeft());
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    return gradient;
}

QRectF disc(QPointF center, qreal radius)
{
    return {center.x() - radius, center.y() - radius, 2 * radius, 2 * radius};
}

/// A round blur under @p center, from @p color in the middle to nothing.
void paintGlow(QPainter &painter, QPointF center, qreal radius, const QColor &color, qreal solidPart)
{
    QRadialGradient glow(center, radius);
    glow.setColorAt(solidPart, color);
    glow.setColorAt(1, withAlpha(color, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(disc(center, radius));
}

void paintShadow(QPainter &painter)
{
    constexpr int layers = 14;
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(30, 24, 80, 6));
    for (int i = layers; i > 0; --i) {
        const qreal spread = i * 0.75;
        const QRectF area = geometry::body().translated(0, 4.5).adjusted(-spread, -spread, spread, spread);
        painter.drawRoundedRect(area, 23 + spread, 23 + spread);
    }
}

void paintCable(QPainter &painter, const DeviceLook &look)
{
    const qreal x = geometry::body().center().x();
    const qreal edge = geometry::body().top();
    const qreal out = look.plugged ? 0 : 10;
    const qreal bottom = edge - out;
    painter.setPen(QPen(QColor(0x2c, 0x2c, 0x38), 5.2, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(x, geometry::bounds().top() - 4), QPointF(x, bottom - 11));
    painter.setPen(QPen(QColor(255, 255, 255, 36), 1.1));
    painter.drawLine(QPointF(x - 1.3, geometry::bounds().top() - 4), QPointF(x - 1.3, bottom - 11));
    if (!look.plugged) {
        const QRectF tongue(x - 4.2, bottom - 3, 8.4, 6);
        painter.setPen(QPen(QColor(0x8d, 0x8d, 0x9c), 0.5));
        painter.setBrush(vertical(tongue, QColor(0xe4, 0xe4, 0xec), QColor(0xa9, 0xa9, 0xb8)));
        painter.drawRoundedRect(tongue, 1.4, 1.4);
    }
    const QRectF plug(x - 6.4, bottom - 13, 12.8, 12);
    painter.setPen(QPen(QColor(0x15, 0x15, 0x1c), 0.6));
    painter.setBrush(vertical(plug, QColor(0x48, 0x48, 0x57), QColor(0x2b, 0x2b, 0x36)));
    painter.drawRoundedRect(plug, 2.6, 2.6);
    painter.setPen(QPen(QColor(0, 0, 0, 70), 0.7));
    for (int line = 0; line < 3; ++line) {
        const qreal y = plug.top() + 3.6 + 2.2 * line;
        painter.drawLine(QPointF(plug.left() + 2.4, y), QPointF(plug.right() - 2.4, y));
    }
}

void paintWordmark(QPainter &painter)
{
    QFont font(QStringLiteral("Source Sans Pro"));
    font.setPixelSize(7);
    font.setWeight(QFont::DemiBold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 2.6);
    // Letters as shapes: the painter is scaled up, and hinted text would be scaled with its hinting.
    QPainterPath letters;
    letters.addText(0, 0, font, QStringLiteral("VELTRIX"));
    const QRectF extent = letters.boundingRect();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 84));
    painter.drawPath(
        letters.translated(QPointF(250.5, 66.5) - QPointF(extent.center().x(), extent.bottom())));
}

void paintLight(QPainter &painter, const DeviceLook &look)
{
    const QPointF center(287, 138);
    QColor color(0x12, 0x12, 0x18);
    if (look.plugged) {
        color = look.opened ? inUse : waiting;
        paintGlow(painter, center, 7, withAlpha(color, 120), 0.1);
    }
    painter.setPen(QPen(QColor(0, 0, 0, 110), 0.5));
    painter.setBrush(color);
    painter.drawEllipse(disc(center, 1.9));
}

void paintBody(QPainter &painter)
{
    const QRectF body = geometry::body();
    painter.setPen(QPen(QColor(0x10, 0x10, 0x16), 0.8));
    painter.setBrush(vertical(body, QColor(0x41, 0x41, 0x50), QColor(0x23, 0x23, 0x2d)));
    painter.drawRoundedRect(body, 23, 23);
    // A bevel: light falls on the upper edge.
    QLinearGradient bevel(body.topLeft(), body.bottomLeft());
    bevel.setColorAt(0, QColor(255, 255, 255, 90));
    bevel.setColorAt(0.25, QColor(255, 255, 255, 14));
    bevel.setColorAt(1, QColor(0, 0, 0, 60));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(bevel, 1.1));
    painter.drawRoundedRect(body.adjusted(1.1, 1.1, -1.1, -1.1), 22, 22);
    // The well in which the knob and its five buttons sit.
    const QPointF well(geometry::knobCenter().x(), 100);
    QRadialGradient hollow(well, 47);
    hollow.setColorAt(0, QColor(0, 0, 0, 105));
    hollow.setColorAt(0.92, QColor(0, 0, 0, 52));
    hollow.setColorAt(1, QColor(0, 0, 0, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(hollow);
    painter.drawEllipse(disc(well, 47));
}

void paintDigit(QPainter &painter, QPointF center, int digit, const QColor &color)
{
    QFont font(QStringLiteral("Source Sans Pro"));
    font.setPixelSize(100);
    font.setWeight(QFont::DemiBold);
    QPainterPath shape;
    shape.addText(0, 0, font, QString::number(digit));
    const QRectF extent = shape.boundingRect();
    const qreal scale = 7.6 / extent.height();
    QTransform placing;
    placing.translate(center.x(), center.y());
    placing.scale(scale, scale);
    placing.translate(-extent.center().x(), -extent.center().y());
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPath(placing.map(shape));
}

void paintButton(QPainter &painter, int number, const DeviceLook::Button &look)
{
    const QPointF center = geometry::buttonCenter(number);
    const qreal radius = geometry::buttonRadius;
    if (look.down) {
        paintGlow(painter, center, radius * 1.75, withAlpha(accentLight, 150), 0.45);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 130));
    painter.drawEllipse(disc(center + QPointF(0, look.down ? 0.3 : 1.2), radius + 0.5));

    const QPointF top = center + QPointF(0, look.down ? 0.5 : 0);
    const QRectF cap = disc(top, radius - 0.4);
    const QColor colour(capColours[number]);
    const QColor upper = colour.lighter(look.down ? 150 : look.hovered ? 130 : 112);
    const QColor lower = colour.lighter(look.down ? 115 : 100)
                             .darker(look.down      ? 100
                                     : look.hovered ? 110
                                                    : 130);
    painter.setBrush(vertical(cap, upper, lower));
    painter.setPen(QPen(QColor(0x14, 0x14, 0x1b), 0.6));
    painter.drawEllipse(cap);
    // The dished top of the cap: lit from below.
    const QRectF dish = disc(top, radius - 2.6);
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        vertical(dish, QColor(0, 0, 0, look.down ? 30 : 48), QColor(255, 255, 255, look.down ? 34 : 24)));
    painter.drawEllipse(dish);
    paintDigit(painter, top, number,
               qGray(colour.rgb()) > 150 ? QColor(0x20, 0x20, 0x28) : QColor(Qt::white));
    if (look.latched) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor(255, 255, 255, 235), 1.1));
        painter.drawEllipse(disc(top, radius + 0.9));
        painter.setPen(QPen(accent, 0.9));
        painter.setBrush(Qt::white);
        painter.drawEllipse(disc(top + QPointF(radius * 0.72, -radius * 0.72), 2.3));
    }
}

void paintTurnArrow(QPainter &painter, bool right, const QColor &color)
{
    // An arc beside the knob with a head at its upper end.
    const QPointF center = geometry::knobCenter();
    const qreal radius = geometry::knobRadius + 3.4;
    const qreal side = right ? 1.0 : -1.0;
    const auto onArc = [center, side](qreal distance, qreal degrees) {
        const qreal angle = qDegreesToRadians(degrees);
        return center + QPointF(side * std::sin(angle) * distance, std::cos(angle) * -distance);
    };
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.3, Qt::SolidLine, Qt::RoundCap));
    // drawArc() counts sixteenths of a degree, counter-clockwise from three o'clock.
    const int start = right ? 2 : 154;
    painter.drawArc(disc(center, radius), start * 16, 24 * 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const QPointF head[] = {onArc(radius - 2.4, 64), onArc(radius + 2.4, 64), onArc(radius, 53)};
    painter.drawConvexPolygon(head, 3);
}

void paintKnob(QPainter &painter, const DeviceLook &look)
{
    const QPointF center = geometry::knobCenter();
    const qreal radius = geometry::knobRadius;
    if (look.touched) {
        paintGlow(painter, center, radius * 1.5, withAlpha(accentLight, 190), 0.6);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 150));
    painter.drawEllipse(disc(center + QPointF(0, 1.4), radius + 0.4));

    painter.setBrush(vertical(disc(center, radius), QColor(0x55, 0x55, 0x63), QColor(0x1f, 0x1f, 0x27)));
    painter.drawEllipse(disc(center, radius));
    const qreal turned = look.knobPosition * geometry::degreesPerStep;
    painter.save();
    painter.translate(center);
    painter.rotate(turned);
    painter.setPen(QPen(QColor(0, 0, 0, 120), 0.7));
    constexpr int ridges = 48;
    for (int ridge = 0; ridge < ridges; ++ridge) {
        painter.drawLine(QPointF(0, -radius + 0.3), QPointF(0, -radius + 2.5));
        painter.rotate(360.0 / ridges);
    }
    painter.restore();

    // Turned metal: its light does not turn with it.
    const QRectF top = disc(center, radius - 2.9);
    QConicalGradient metal(center, 100);
    const bool bright = look.touched || look.knobHovered;
    const QColor light(bright ? 0xf4f4fa : 0xe6e6ee);
    const QColor dark(bright ? 0xb6b6c6 : 0xa2a2b2);
    for (int i = 0; i <= 8; ++i) {
        metal.setColorAt(i / 8.0, i % 2 == 0 ? light : dark);
    }
    painter.setPen(QPen(look.touched ? accent : QColor(0x17, 0x17, 0x1e), look.touched ? 1.3 : 0.5));
    painter.setBrush(metal);
    painter.drawEllipse(top);
    painter.save();
    painter.translate(center);
    painter.rotate(turned);
    painter.setPen(QPen(accent, 2.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, -radius + 5.2), QPointF(0, -radius + 9.0));
    painter.restore();
}

} // namespace

void paintDevice(QPainter &painter, const DeviceLook &look)
{
    painter.setRenderHint(QPainter::Antialiasing);
    paintShadow(painter);
    paintCable(painter, look);
    paintBody(painter);
    paintWordmark(painter);
    paintLight(painter, look);
    paintKnob(painter, look);
    if (look.turning != 0) {
        paintTurnArrow(painter, look.turning > 0, accentLight);
    }
    for (int number = 0; number < geometry::buttonCount; ++number) {
        paintButton(painter, number, look.buttons.at(static_cast<size_t>(number)));
    }
}

} // namespace simulator
