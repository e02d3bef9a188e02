#include "ui/DeviceIndicators.h"

#include "ui/DevicePicture.h"

namespace
{

// Which picture of the folder marks which control.
constexpr std::array<int, 10> pictures{5, 5, 5, 7, 7, 4, 2, 3, 1, 1};
constexpr QRect arrowPlace(373, 325, 58, 39);

} // namespace

DeviceIndicators::DeviceIndicators(QWidget *page)
    : QWidget(page)
{
    setGeometry(0, 0, 900, 650);
    setAttribute(Qt::WA_TransparentForMouseEvents); // the drawing below has the tool tips
    // A ground that the page's sheet gives its children would show in the corners of the marks.
    setStyleSheet(QStringLiteral("background-color:rgba(0,0,0,0)"));
    for (std::size_t control = 0; control < m_controls.size(); ++control) {
        m_controls[control] =
            addMark(DevicePicture::mark(static_cast<int>(control)),
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

QLabel *DeviceIndicators::addMark(const QRect &place, const QString &style, const char *name)
{
    auto *mark = new QLabel(this);
    mark->setObjectName(QLatin1String(name));
    mark->setGeometry(place);
    mark->setStyleSheet(style);
    mark->hide();
    return mark;
}

void DeviceIndicators::setHeld(int control, bool held)
{
    m_controls.at(static_cast<std::size_t>(control))->setVisible(held);
}

void DeviceIndicators::setKnobTouched(bool touched)
{
    m_knob->setVisible(touched);
}

void DeviceIndicators::setTurning(KnobPointer::Turn turn)
{
    m_left->setVisible(turn == KnobPointer::Turn::Left);
    m_right->setVisible(turn == KnobPointer::Turn::Right);
}
