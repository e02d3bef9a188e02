#pragma once

#include "tools/simulator/DevicePainter.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <bitset>

namespace simulator
{

class VirtualDevice;

/// The device to be used with mouse and keyboard. A button is down as long as the mouse, its key or its latch
/// holds it; the knob is touched as long as the mouse or the blank key holds it, and for a moment after it
/// was turned by wheel or arrow key.
class DeviceView : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DeviceView)

public:
    static constexpr int touchAfterTurn = 500; ///< ms
    static constexpr int turnShown = 180;      ///< ms

    /// @p device must outlive this object.
    explicit DeviceView(VirtualDevice &device, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// Where a point of geometry:: is on the widget.
    QPointF toWidget(QPointF point) const;

    /// Lets go of everything that mouse, keys and latches hold.
    void releaseAll();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    QPointF toDevice(QPointF position) const;
    QTransform transform() const;
    QString toolTipAt(QPointF point) const;
    DeviceLook look() const;
    void toggleLatch(int button);
    void updateButton(int button);
    void updateTouch();
    void turn(int direction);
    void hover(QPointF point);

    VirtualDevice &m_device;
    std::bitset<10> m_keys;
    std::bitset<10> m_latched;
    std::bitset<10> m_held; ///< what has been reported
    int m_mouseButton = -1; ///< the device's button that the mouse presses
    bool m_mouseOnKnob = false;
    bool m_blank = false;
    bool m_turnTouch = false;
    bool m_touched = false; ///< what has been reported
    qreal m_dragAngle = 0;
    qreal m_dragRest = 0;
    int m_wheelRest = 0;
    int m_turning = 0;
    int m_hoveredButton = -1;
    bool m_knobHovered = false;
    QTimer m_turnTouchTimer;
    QTimer m_turnShownTimer;
};

} // namespace simulator
