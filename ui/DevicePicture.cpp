#include "ui/DevicePicture.h"

#include "app/frame/FittingText.h"
#include "mapping/PerControl.h"

#include <QHelpEvent>
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
    setAccessibleName(tr("Drawing of the device"));
}

bool DevicePicture::event(QEvent *event)
{
    if (event->type() == QEvent::StyleChange) {
        m_picture.forget();
    }
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        QToolTip::showText(help->globalPos(), FittingText::toolTip(toolTipAt(help->pos())), this);
        return true;
    }
    return QLabel::event(event);
}

void DevicePicture::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    m_picture.draw(painter, *this);
}

QString DevicePicture::toolTipAt(QPoint position) const
{
    const QPoint onPage = position + place.topLeft();
    for (int control = 0; control < m_toolTips.size(); ++control) {
        if (mark(control).contains(onPage)) {
            return m_toolTips.at(control);
        }
    }
    if (mark(-1).adjusted(-aroundKnob, -aroundKnob, aroundKnob, aroundKnob).contains(onPage)) {
        return m_knobToolTip;
    }
    return {};
}
