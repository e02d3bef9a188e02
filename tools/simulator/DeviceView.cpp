#include "tools/simulator/DeviceView.h"

#include "tools/simulator/DeviceGeometry.h"
#include "tools/simulator/VirtualDevice.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace simulator
{

namespace
{

constexpr int wheelNotch = 120;

/// The device's button that a key stands for, or -1. With Ctrl, Alt or Meta a key means something else.
int buttonOfKey(const QKeyEvent &event)
{
    const bool isDigit = event.key() >= Qt::Key_0 && event.key() <= Qt::Key_9;
    return isDigit ? event.key() - Qt::Key_0 : -1;
}

bool hasCommandModifier(const QKeyEvent &event)
{
    return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
}

} // namespace

DeviceView::DeviceView(VirtualDevice &device, QWidget *parent)
    : QWidget(parent)
    , m_device(device)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAccessibleName(tr("Virtual device"));
    setAccessibleDescription(
        tr("Ten buttons, on the keys 0 to 9, and a knob, on the arrow keys and the blank key"));
    m_turnTouchTimer.setSingleShot(true);
    m_turnTouchTimer.setInterval(touchAfterTurn);
    connect(&m_turnTouchTimer, &QTimer::timeout, this, [this] {
        m_turnTouch = false;
        updateTouch();
    });
    m_turnShownTimer.setSingleShot(true);
    m_turnShownTimer.setInterval(turnShown);
    connect(&m_turnShownTimer, &QTimer::timeout, this, [this] {
        m_turning = 0;
        update();
    });
    connect(&m_device, &VirtualDevice::changed, this, qOverload<>(&QWidget::update));
}

QSize DeviceView::sizeHint() const
{
    return {810, 516};
}

QSize DeviceView::minimumSizeHint() const
{
    return {405, 258};
}

QTransform DeviceView::transform() const
{
    const QRectF bounds = geometry::bounds();
    const qreal scale = std::min(width() / bounds.width(), height() / bounds.height());
    QTransform result;
    // The cable leaves through the upper edge, so the drawing hangs from it.
    result.translate(width() / 2.0, 0);
    result.scale(scale, scale);
    result.translate(-bounds.center().x(), -bounds.top());
    return result;
}

QPointF DeviceView::toWidget(QPointF point) const
{
    return transform().map(point);
}

QPointF DeviceView::toDevice(QPointF position) const
{
    return transform().inverted().map(position);
}

DeviceLook DeviceView::look() const
{
    DeviceLook look;
    for (int i = 0; i < geometry::buttonCount; ++i) {
        const auto index = static_cast<size_t>(i);
        look.buttons.at(index) = {m_device.isDown(i), m_latched.test(index), m_hoveredButton == i};
    }
    look.touched = m_device.isTouched();
    look.knobHovered = m_knobHovered;
    look.knobPosition = m_device.knobPosition();
    look.turning = m_turning;
    look.plugged = m_device.isPlugged();
    look.opened = m_device.isOpened();
    return look;
}

void DeviceView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setTransform(transform(), true);
    paintDevice(painter, look());
}

bool DeviceView::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip) {
        return QWidget::event(event);
    }
    const auto *help = static_cast<QHelpEvent *>(event);
    const QString text = toolTipAt(toDevice(help->pos()));
    if (text.isEmpty()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(help->globalPos(), text, this);
    }
    return true;
}

QString DeviceView::toolTipAt(QPointF point) const
{
    if (geometry::isOnKnob(point)) {
        return tr("Knob\nHold to touch, drag round or use the wheel to turn\nKeys: blank to touch, left and "
                  "right to turn");
    }
    const int button = geometry::buttonAt(point);
    if (button < 0) {
        return {};
    }
    return tr("Button %1, key %1\nRight click or Ctrl+click to keep it down").arg(button);
}

void DeviceView::mousePressEvent(QMouseEvent *event)
{
    const QPointF point = toDevice(event->localPos());
    const int button = geometry::buttonAt(point);
    const bool latch =
        event->button() == Qt::RightButton ||
        (event->button() == Qt::LeftButton && event->modifiers().testFlag(Qt::ControlModifier));
    if (button >= 0 && latch) {
        toggleLatch(button);
    } else if (event->button() != Qt::LeftButton) {
        return;
    } else if (button >= 0) {
        m_mouseButton = button;
        updateButton(button);
    } else if (geometry::isOnKnob(point)) {
        m_mouseOnKnob = true;
        m_dragAngle = geometry::knobAngle(point);
        m_dragRest = 0;
        updateTouch();
    }
}

// Two quick clicks are two presses.
void DeviceView::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void DeviceView::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF point = toDevice(event->localPos());
    hover(point);
    if (!m_mouseOnKnob) {
        return;
    }
    const qreal angle = geometry::knobAngle(point);
    m_dragRest += geometry::turnBetween(m_dragAngle, angle);
    m_dragAngle = angle;
    while (std::abs(m_dragRest) >= geometry::degreesPerStep) {
        const int direction = m_dragRest > 0 ? 1 : -1;
        m_dragRest -= direction * geometry::degreesPerStep;
        turn(direction);
    }
}

void DeviceView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_mouseOnKnob = false;
    updateTouch();
    if (m_mouseButton < 0) {
        return;
    }
    const int button = m_mouseButton;
    m_mouseButton = -1;
    m_latched.reset(static_cast<size_t>(button)); // a click on a latched button ends the latch
    updateButton(button);
}

void DeviceView::wheelEvent(QWheelEvent *event)
{
    if (!geometry::isOnKnob(toDevice(event->position()))) {
        event->ignore();
        return;
    }
    m_wheelRest += event->angleDelta().y();
    while (std::abs(m_wheelRest) >= wheelNotch) {
        const int direction = m_wheelRest > 0 ? 1 : -1;
        m_wheelRest -= direction * wheelNotch;
        turn(direction);
    }
}

void DeviceView::keyPressEvent(QKeyEvent *event)
{
    if (hasCommandModifier(*event)) {
        QWidget::keyPressEvent(event);
        return;
    }
    const int button = buttonOfKey(*event);
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        turn(event->key() == Qt::Key_Left ? -1 : 1);
    } else if (event->isAutoRepeat()) {
        return;
    } else if (button >= 0) {
        m_keys.set(static_cast<size_t>(button));
        updateButton(button);
    } else if (event->key() == Qt::Key_Space) {
        m_blank = true;
        updateTouch();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void DeviceView::keyReleaseEvent(QKeyEvent *event)
{
    const int button = buttonOfKey(*event);
    if (event->isAutoRepeat()) {
        return;
    }
    if (button >= 0) {
        m_keys.reset(static_cast<size_t>(button));
        updateButton(button);
    } else if (event->key() == Qt::Key_Space) {
        m_blank = false;
        updateTouch();
    } else {
        QWidget::keyReleaseEvent(event);
    }
}

// The release of a key goes to whichever window has the focus then.
void DeviceView::focusOutEvent(QFocusEvent *event)
{
    m_keys.reset();
    m_blank = false;
    for (int button = 0; button < geometry::buttonCount; ++button) {
        updateButton(button);
    }
    updateTouch();
    QWidget::focusOutEvent(event);
}

void DeviceView::leaveEvent(QEvent *event)
{
    hover(QPointF(-1, -1));
    QWidget::leaveEvent(event);
}

void DeviceView::releaseAll()
{
    m_keys.reset();
    m_latched.reset();
    m_mouseButton = -1;
    m_mouseOnKnob = false;
    m_blank = false;
    m_turnTouch = false;
    for (int button = 0; button < geometry::buttonCount; ++button) {
        updateButton(button);
    }
    updateTouch();
}

void DeviceView::toggleLatch(int button)
{
    m_latched.flip(static_cast<size_t>(button));
    updateButton(button);
    update();
}

void DeviceView::updateButton(int button)
{
    const auto index = static_cast<size_t>(button);
    const bool down = m_keys.test(index) || m_latched.test(index) || m_mouseButton == button;
    if (down == m_held.test(index)) {
        return;
    }
    m_held.set(index, down);
    m_device.setButton(button, down);
}

void DeviceView::updateTouch()
{
    const bool touched = m_mouseOnKnob || m_blank || m_turnTouch;
    if (touched == m_touched) {
        return;
    }
    m_touched = touched;
    m_device.sendKnob(touched ? 'D' : 'U');
}

void DeviceView::turn(int direction)
{
    m_turnTouch = true;
    m_turnTouchTimer.start();
    updateTouch();
    m_turning = direction;
    m_turnShownTimer.start();
    m_device.sendKnob(direction < 0 ? 'L' : 'R');
}

void DeviceView::hover(QPointF point)
{
    const int button = geometry::buttonAt(point);
    const bool onKnob = geometry::isOnKnob(point);
    if (button == m_hoveredButton && onKnob == m_knobHovered) {
        return;
    }
    m_hoveredButton = button;
    m_knobHovered = onKnob;
    setCursor(button >= 0 || onKnob ? Qt::PointingHandCursor : Qt::ArrowCursor);
    update();
}

} // namespace simulator
