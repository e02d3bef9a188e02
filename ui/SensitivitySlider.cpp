#include "ui/SensitivitySlider.h"

#include "app/frame/FocusFrame.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

namespace
{

constexpr QColor white(int alpha)
{
    return {255, 255, 255, alpha};
}

constexpr QColor grooveColour = white(150);
constexpr QColor tickColour = white(150);
constexpr QColor handleColour = white(255);
constexpr qreal grooveHeight = 3;
constexpr QSizeF handleSize(8, 11);
constexpr qreal handleRadius = 2;
constexpr int tickHeight = 3;

} // namespace

SensitivitySlider::SensitivitySlider(QWidget *parent)
    : QSlider(Qt::Horizontal, parent)
{
    setTickPosition(QSlider::TicksBelow);
    new FocusFrame(this);
}

void SensitivitySlider::paintEvent(QPaintEvent * /*event*/)
{
    // How far the handle travels is the style's to say: it also decides where a click meets it.
    QStyleOptionSlider option;
    initStyleOption(&option);
    const int hitWidth =
        style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this).width();
    const auto centreOf = [&](int value) {
        return hitWidth / 2.0 + QStyle::sliderPositionFromValue(minimum(), maximum(), qMin(value, maximum()),
                                                                width() - hitWidth, option.upsideDown);
    };

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int value = minimum(); value <= maximum() + 1; value += pageStep()) {
        painter.fillRect(QRectF(centreOf(value) - 0.5, height() - tickHeight, 1, tickHeight), tickColour);
    }

    QRectF groove(0, 0, width() - hitWidth + handleSize.width(), grooveHeight);
    groove.moveCenter(QPointF(width() / 2.0, handleSize.height() / 2));
    painter.setBrush(grooveColour);
    painter.drawRoundedRect(groove, grooveHeight / 2, grooveHeight / 2);

    QRectF handle(QPointF(), handleSize);
    handle.moveLeft(centreOf(sliderPosition()) - handleSize.width() / 2);
    painter.setBrush(handleColour);
    painter.drawRoundedRect(handle, handleRadius, handleRadius);
}

// The style lets a click count on the groove only, which is lower than the slider.
void SensitivitySlider::mousePressEvent(QMouseEvent *event)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect handle = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    QMouseEvent onGroove(event->type(), QPointF(event->localPos().x(), handle.center().y()),
                         event->windowPos(), event->screenPos(), event->button(), event->buttons(),
                         event->modifiers(), event->source());
    QSlider::mousePressEvent(&onGroove);
    event->setAccepted(onGroove.isAccepted());
}

void SensitivitySlider::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Home || event->key() == Qt::Key_End) {
        const bool lowest = (event->key() == Qt::Key_Home) != invertedAppearance();
        triggerAction(lowest ? SliderToMinimum : SliderToMaximum);
    } else {
        QSlider::keyPressEvent(event);
    }
}
