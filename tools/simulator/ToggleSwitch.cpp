#include "tools/simulator/ToggleSwitch.h"

#include <QPainter>

namespace simulator
{

namespace
{

constexpr int trackWidth = 36;
constexpr int trackHeight = 20;
constexpr int gap = 10;

} // namespace

ToggleSwitch::ToggleSwitch(const QString &text, QWidget *parent)
    : QAbstractButton(parent)
{
    setText(text);
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ToggleSwitch::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {trackWidth + gap + metrics.horizontalAdvance(text()) + 4,
            qMax(trackHeight + 4, metrics.height() + 4)};
}

void ToggleSwitch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track(1, (height() - trackHeight) / 2.0, trackWidth, trackHeight);
    painter.setPen(hasFocus() ? QPen(QColor(0x8b, 0x7d, 0xff), 2) : QPen(Qt::NoPen));
    painter.setBrush(isChecked() ? QColor(0x53, 0x42, 0xd9) : QColor(0x82, 0x82, 0x90));
    painter.drawRoundedRect(track, trackHeight / 2.0, trackHeight / 2.0);
    const qreal diameter = trackHeight - 6;
    const qreal x = isChecked() ? track.right() - diameter - 3 : track.left() + 3;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(x, track.top() + 3, diameter, diameter));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(trackWidth + gap, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text());
}

} // namespace simulator
