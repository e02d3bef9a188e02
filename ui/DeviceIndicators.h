#pragma once

#include "engine/KnobPointer.h"
#include "mapping/PerControl.h"

#include <QDeadlineTimer>
#include <QLabel>
#include <QTimer>
#include <QWidget>

/// The marks over the drawing of the device that show what is pressed, touched and turned. Hidden at first.
///
/// A mark comes and goes once the event has been acted on: the page hears of it before, and showing a widget
/// asks the X server for the pointer, which the action would wait for. The first change is shown at once,
/// what follows within the time of a frame together at its end: nobody sees more, and the next press is not
/// held up.
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

protected:
    void showEvent(QShowEvent *event) override;

private:
    struct Mark {
        QLabel *label = nullptr;
        bool wanted = false;
    };

    Mark addMark(const QRect &place, const QString &style, const char *name);
    void want(Mark &mark, bool shown);
    void showWanted();

    PerControl<Mark> m_controls;
    Mark m_knob;
    Mark m_left;
    Mark m_right;
    QDeadlineTimer m_frame; ///< expired once the marks may change again
    QTimer m_nextFrame;
};
