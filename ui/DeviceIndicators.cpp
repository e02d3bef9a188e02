#include "ui/DeviceIndicators.h"

#include "app/frame/Look.h"
#include "ui/DevicePicture.h"
#include "ui/FrameTimer.h"

namespace
{

// Which picture of the folder marks which control.
constexpr PerControl<int> pictures{{5, 5, 5, 7, 7, 4, 2, 3, 1, 1}};
constexpr QRect arrowPlace(373, 325, 58, 39);

} // namespace

DeviceIndicators::DeviceIndicators(QWidget *page)
    : QWidget(page)
{
    setGeometry(0, 0, 900, 650);
    setAttribute(Qt::WA_TransparentForMouseEvents); // the drawing below has the tool tips
    // A ground that the page's sheet gives its children would show in the corners of the marks.
    setStyleSheet(QStringLiteral("background-color:rgba(0,0,0,0)"));
    m_nextFrame.setSingleShot(true);
    m_nextFrame.setTimerType(Qt::PreciseTimer);
    connect(&m_nextFrame, &QTimer::timeout, this, &DeviceIndicators::showWanted);
    for (int control = 0; control < m_controls.count; ++control) {
        m_controls[control] =
            addMark(DevicePicture::mark(control),
                    QStringLiteral("background-image: url(:/icons/buttonszr/%1.png)").arg(pictures[control]),
                    "controlMark");
    }
    m_knob = addMark(DevicePicture::mark(-1),
                     QStringLiteral("background-image: url(:/icons/buttonszr/kn.png)"), "knobMark");
    // One has a blank behind the colon and the other none, on purpose.
    m_left = addMark(arrowPlace,
                     QStringLiteral("background-color:rgba(0,0,0,0); "
                                    "background-image:url(:/icons/buttonszr/arrow_left.png)"),
                     "leftArrow");
    m_right = addMark(arrowPlace,
                      QStringLiteral("background-color:rgba(0,0,0,0); "
                                     "background-image: url(:/icons/buttonszr/arrow_right.png)"),
                      "rightArrow");
}

DeviceIndicators::Mark DeviceIndicators::addMark(const QRect &place, const QString &style, const char *name)
{
    QLabel *label = Look::addPicture(this, place, style);
    label->setObjectName(QLatin1String(name));
    label->hide();
    return {label, false};
}

void DeviceIndicators::setHeld(int control, bool held)
{
    want(m_controls[control], held);
}

void DeviceIndicators::setKnobTouched(bool touched)
{
    want(m_knob, touched);
}

void DeviceIndicators::setTurning(KnobPointer::Turn turn)
{
    want(m_left, turn == KnobPointer::Turn::Left);
    want(m_right, turn == KnobPointer::Turn::Right);
}

void DeviceIndicators::want(Mark &mark, bool shown)
{
    if (mark.wanted == shown) {
        return;
    }
    mark.wanted = shown;
    if (isVisible() && !m_nextFrame.isActive()) {
        m_nextFrame.start(static_cast<int>(m_frame.remainingTime()));
    }
}

void DeviceIndicators::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    showWanted();
}

void DeviceIndicators::showWanted()
{
    m_nextFrame.stop();
    m_frame.setRemainingTime(FrameTimer::frameMs, Qt::PreciseTimer);
    for (const Mark &mark : m_controls) {
        mark.label->setVisible(mark.wanted);
    }
    for (const Mark &mark : {m_knob, m_left, m_right}) {
        mark.label->setVisible(mark.wanted);
    }
}
