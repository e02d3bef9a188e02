#pragma once

#include "engine/KnobPointer.h"

#include <QLabel>
#include <QWidget>

#include <array>

/// The marks over the drawing of the device that show what is pressed, touched and turned. Hidden at first.
class DeviceIndicators : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DeviceIndicators)

public:
    /// Covers @p page, so that the marks are at places of the page, and lets the mouse through.
    explicit DeviceIndicators(QWidget *page);

public Q_SLOTS:
    void setHeld(int control, bool held); ///< @p control is 0 to 9
    void setKnobTouched(bool touched);
    void setTurning(KnobPointer::Turn turn);

private:
    QLabel *addMark(const QRect &place, const QString &style, const char *name);

    std::array<QLabel *, 10> m_controls{};
    QLabel *m_knob;
    QLabel *m_left;
    QLabel *m_right;
};
