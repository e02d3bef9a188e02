#include "app/frame/WelcomeWindow.h"

#include "app/frame/FittingText.h"

#include <QLabel>

namespace
{

const QLatin1String indicatorStyle("background-image: url(:/icons/square.png)");
const QLatin1String indicatorConnectedStyle("background-image: url(:/icons/square-c.png)");

} // namespace

WelcomeWindow::WelcomeWindow(QWidget *parent)
    : QWidget(parent)
{
    const QString title = QStringLiteral("QLabel { color : rgba(255,255,255,0.87); }");
    const QString hint = QStringLiteral("QLabel { color : rgba(255,255,255,0.57); }");
    const QString caption = QStringLiteral("QLabel { color : rgba(255,255,255,1); }");
    const QString smallText = QStringLiteral("QLabel { color : rgba(255,255,255,0.32); }");

    addText(tr("Welcome to VELTRIX setup panel."), {50, 128, 800, 52}, 29, QFont::Light, title);
    addText(tr("Please connect your device with a usb cable."), {50, 184, 800, 32}, 15, QFont::Normal, hint);

    // The plug of the cable points at the indicator, which stands for the socket.
    addPicture(QStringLiteral("background-image: url(:/icons/usb-cable.png)"), {222, 290, 320, 96});
    m_indicator = addPicture(indicatorStyle, {566, 290, 96, 96});
    m_indicator->setObjectName(QStringLiteral("indicator"));
    setConnected(false);
    addText(tr("Connect"), {546, 398, 136, 28}, 14, QFont::DemiBold, caption);
    addPicture(QStringLiteral("background-image: url(:/icons/underline.png)"), {566, 430, 96, 4});

    addText(tr("The panel opens by itself as soon as the device is found."), {50, 600, 800, 24}, 10,
            QFont::Normal, smallText);
}

QLabel *WelcomeWindow::addText(const QString &text, const QRect &place, int pointSize, int weight,
                               const QString &style)
{
    auto *label = new QLabel(this);
    label->setGeometry(place);
    label->setAlignment(Qt::AlignCenter);
    label->setFont(QFont(QStringLiteral("Source Sans Pro"), pointSize, weight));
    label->setStyleSheet(style);
    FittingText::show(label, text);
    return label;
}

QLabel *WelcomeWindow::addPicture(const QString &style, const QRect &place)
{
    auto *label = new QLabel(this);
    label->setGeometry(place);
    label->setStyleSheet(style);
    return label;
}

void WelcomeWindow::setConnected(bool connected)
{
    m_indicator->setStyleSheet(connected ? indicatorConnectedStyle : indicatorStyle);
    m_indicator->setAccessibleName(connected ? tr("Connected") : tr("Not connected"));
}
