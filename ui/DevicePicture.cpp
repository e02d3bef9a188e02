#include "ui/DevicePicture.h"

#include "mapping/PerControl.h"
#include "ui/ControlTip.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace
{

constexpr int markSize = 20;

constexpr PerControl<QPoint> marks{{{
    {417, 338},
    {392, 322},
    {366, 338},
    {366, 368},
    {417, 368},
    {463, 338},
    {488, 338},
    {513, 338},
    {502, 368},
    {476, 368},
}}};
constexpr QPoint knobMark(392, 352);

constexpr int aroundKnob = 8; // the knob is drawn larger than its mark

} // namespace

QRect DevicePicture::mark(int control)
{
    const QPoint corner = control < 0 ? knobMark : marks[control];
    return {corner, QSize(markSize, markSize)};
}

DevicePicture::DevicePicture(QWidget *parent)
    : QLabel(parent)
{
    setGeometry(place);
    setAttribute(Qt::WA_OpaquePaintEvent); // what lies below is not painted for each mark that comes and goes
    setStyleSheet(QStringLiteral("background-image: url(:/icons/zr.png)"));
    setMouseTracking(true); // the hand over what can be clicked
    setAccessibleName(tr("Drawing of the device"));
}

bool DevicePicture::event(QEvent *event)
{
    if (event->type() == QEvent::StyleChange) {
        m_picture.forget();
    }
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        QToolTip::showText(help->globalPos(), toolTipAt(help->pos()), m_toolTipHost);
        return true;
    }
    return QLabel::event(event);
}

void DevicePicture::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    m_picture.draw(painter, *this);
}

int DevicePicture::controlAt(QPoint position) const
{
    const QPoint onPage = position + place.topLeft();
    for (int control = 0; control < m_toolTips.size(); ++control) {
        if (mark(control).contains(onPage)) {
            return control;
        }
    }
    return -1;
}

void DevicePicture::mouseMoveEvent(QMouseEvent *event)
{
    setCursor(controlAt(event->pos()) < 0 ? Qt::ArrowCursor : Qt::PointingHandCursor);
    QLabel::mouseMoveEvent(event);
}

void DevicePicture::mousePressEvent(QMouseEvent *event)
{
    const int control = controlAt(event->pos());
    if (event->button() == Qt::LeftButton && control >= 0) {
        Q_EMIT clicked(control);
    } else {
        QLabel::mousePressEvent(event);
    }
}

QString DevicePicture::toolTipAt(QPoint position) const
{
    const int control = controlAt(position);
    if (control >= 0) {
        return ControlTip::text(ControlTip::name(control), m_toolTips.at(control).split(QLatin1Char('\n')),
                                tr("Click to change what it does"));
    }
    const QRect knob = mark(-1).adjusted(-aroundKnob, -aroundKnob, aroundKnob, aroundKnob);
    if (knob.contains(position + place.topLeft())) {
        return ControlTip::text(ControlTip::name(-1),
                                tr("Touch it to take hold, turn it to act.\nButtons with a knob mode choose "
                                   "what it does.")
                                    .split(QLatin1Char('\n')),
                                QString());
    }
    return {};
}
