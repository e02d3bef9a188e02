#include "app/frame/WelcomeWindow.h"

#include "app/frame/ClickableLabel.h"
#include "app/frame/FittingText.h"
#include "app/frame/Look.h"
#include "app/frame/UserGuide.h"

#include <QCoreApplication>
#include <QDesktopServices>

namespace
{

constexpr int windowWidth = 900;

const QLatin1String titleStyle("QLabel { color : rgba(255,255,255,0.87); }");
const QLatin1String smallTextStyle("QLabel { color : rgba(255,255,255,0.32); }");

const QLatin1String indicatorStyle("background-image: url(:/icons/square.png)");
const QLatin1String indicatorConnectedStyle("background-image: url(:/icons/square-c.png)");

} // namespace

WelcomeWindow::WelcomeWindow(QWidget *parent)
    : QWidget(parent)
{
    const QString hint = QStringLiteral("QLabel { color : rgba(255,255,255,0.57); }");
    const QString caption = QStringLiteral("QLabel { color : rgba(255,255,255,1); }");

    const auto addText = [this](const QString &text, const QRect &place, int pointSize, int weight,
                                const QString &style) {
        return Look::addText(this, text, place, style, Look::font(Look::Face::Page, pointSize, weight),
                             Qt::AlignCenter);
    };
    addText(tr("Welcome to VELTRIX setup panel."), {50, 128, 800, 52}, 29, QFont::Light, titleStyle);
    addText(tr("Please connect your device with a usb cable."), {50, 184, 800, 32}, 15, QFont::Normal, hint);

    // The plug of the cable points at the indicator, which stands for the socket.
    Look::addPicture(this, {222, 290, 320, 96},
                     QStringLiteral("background-image: url(:/icons/usb-cable.png)"));
    m_indicator = Look::addPicture(this, {566, 290, 96, 96}, indicatorStyle);
    m_indicator->setObjectName(QStringLiteral("indicator"));
    setConnected(false);
    addText(tr("Connect"), {546, 398, 136, 28}, 14, QFont::DemiBold, caption);
    Look::addPicture(this, {566, 430, 96, 4}, QStringLiteral("background-image: url(:/icons/underline.png)"));

    m_refusal = addText(QString(), {50, 520, 800, 28}, 12, QFont::Normal, titleStyle);
    m_refusal->setObjectName(QStringLiteral("refusal"));
    m_finding = addText(tr("The panel opens by itself as soon as the device is found."), {50, 600, 800, 24},
                        10, QFont::Normal, smallTextStyle);
    m_finding->setObjectName(QStringLiteral("finding"));
    addHelp();
}

void WelcomeWindow::addHelp()
{
    const QString text = tr("Trouble-shooting");
    m_helpAddress = UserGuide::troubleshooting(QCoreApplication::applicationDirPath(), {});
    m_help = new ClickableLabel(this);
    m_help->setObjectName(QStringLiteral("help"));
    m_help->setStyleSheet(titleStyle);
    QFont font = Look::font(Look::Face::Page, 10);
    font.setUnderline(true);
    m_help->setFont(font);
    m_help->setAlignment(Qt::AlignCenter);
    // As wide as its text: beside it nothing reacts.
    const int width = m_help->fontMetrics().horizontalAdvance(text) + 12;
    m_help->setGeometry((windowWidth - width) / 2, 624, width, 20);
    FittingText::show(m_help, text, tr("Opens the user guide: what to do when the device is not found"));
    connect(m_help, &ClickableLabel::clicked, this, [this] { QDesktopServices::openUrl(m_helpAddress); });
}

void WelcomeWindow::showFinding(const QString &text, bool isProblem, const QUrl &help)
{
    m_finding->setStyleSheet(isProblem ? titleStyle : smallTextStyle);
    FittingText::show(m_finding, text);
    m_helpAddress = help;
}

void WelcomeWindow::showRefusal(const QString &reason)
{
    FittingText::show(m_refusal,
                      reason.isEmpty()
                          ? QString()
                          : tr("The device is there, but its port cannot be opened: %1").arg(reason));
}

void WelcomeWindow::setConnected(bool connected)
{
    m_indicator->setStyleSheet(connected ? indicatorConnectedStyle : indicatorStyle);
    m_indicator->setAccessibleName(connected ? tr("Connected") : tr("Not connected"));
}
