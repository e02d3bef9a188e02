#include "app/frame/ZRBaseWindow.h"

#include "app/frame/AppInfo.h"
#include "app/frame/ClickableLabel.h"
#include "app/frame/FittingText.h"
#include "app/frame/FocusFrame.h"
#include "app/frame/LicenceDialog.h"
#include "app/frame/Look.h"
#include "app/frame/UserGuide.h"
#include "net/ZRUpdater.h"

#include <QCoreApplication>
#include <QGraphicsBlurEffect>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>
#include <QVariant>

#include <algorithm>
#include <cmath>

namespace
{

// Between the close button and the mapping selector of the device page; the links keep clear of the game's
// scores.
constexpr QRect headerPlace(24, 6, 576, 58);
constexpr qreal blurRadius = 3.0;

const QLatin1String faint("QLabel { color:rgba(255,255,255,0.32) }");
const QLatin1String versionStyle("color:rgba(255,255,255,0.32)");
const QLatin1String titleStyle("QLabel{color: #ffffff;}");
const QLatin1String questionStyle("QLabel{color: rgba(255, 255, 255, 50%);}");
const QLatin1String buttonStyle(
    "QPushButton {background-color: #ff6767;border: 1px #5342d9;border-radius: 2px;color: #ffffff;}"
    "QPushButton:focus:pressed {background-color: #FF4B4B;border: 1px #FF4B4B;border-radius: 2px;color: "
    "#ffffff;}"
    "QPushButton:disabled {background-color: #ff6760;border: 1px #ff6760;border-radius: 2px;color: #ffffff;}"
    "QPushButton:hover {background-color: #FF4B4B;border: 1px #FF4B4B;border-radius: 2px;color: #ffffff;}");
const QLatin1String progressStyle(
    "QProgressBar#downloadProgress {border: 1px solid rgba(255, 255, 255, 10%);border-radius: 1px;"
    "background-color: rgba(255, 255, 255, 20%);}"
    "QProgressBar#downloadProgress::chunk {background-color: #FF4B4B;width: 2px;}");

QLabel *addLabel(QWidget *panel, const QString &text, const QRect &place, int pointSize, const QString &style)
{
    return Look::addText(panel, text, place, style, Look::font(Look::Face::Page, pointSize));
}

QPushButton *addButton(QWidget *panel, const QString &text)
{
    auto *button = new QPushButton(panel);
    button->setGeometry(456, 14, 100, 30);
    button->setStyleSheet(buttonStyle);
    button->setFont(Look::font(Look::Face::Page, 11));
    FittingText::show(button, text);
    (new FocusFrame(button))->setProperty("colour", Look::ink); // white is not seen on its red
    return button;
}

// A fraction that is none (no length known yet) counts as nothing.
int percentage(float fraction)
{
    return std::isfinite(fraction) ? static_cast<int>(std::clamp(fraction, 0.0F, 1.0F) * 100.0F) : 0;
}

} // namespace

ZRBaseWindow::ZRBaseWindow(ZRUpdater *updater, QWidget *parent)
    : QWidget(parent)
    , m_updater(updater)
    , m_header(new QWidget(this))
    , m_updatePanel(new QWidget(this))
    , m_downloadPanel(new QWidget(this))
{
    for (QWidget *panel : {m_updatePanel, m_downloadPanel, m_header}) {
        panel->setGeometry(headerPlace);
    }
    buildUpdatePanel();
    buildDownloadPanel();
    buildHeader();
    bringToFront(m_header);
    if (m_updater) {
        followUpdater();
    }
}

void ZRBaseWindow::buildHeader()
{
    QLabel *logo = Look::addPicture(m_header, {6, 12, 136, 32},
                                    QStringLiteral("background-image: url(:/icons/logo.png)"));
    logo->setAccessibleName(tr("Veltrix"));

    auto *version = Look::addPicture<ClickableLabel>(m_header, {154, 20, 110, 20}, versionStyle);
    version->setObjectName(QStringLiteral("version"));
    version->setFont(Look::font(Look::Face::Page, 9));
    version->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    FittingText::show(version, tr("VERSION") + QLatin1Char(' ') + QLatin1String(AppInfo::version),
                      tr("Shows the licences of Veltrix and of what it is built on"));
    version->setAccessibleDescription(version->toolTip());
    connect(version, &ClickableLabel::clicked, this, [this] {
        auto *licences = window()->findChild<LicenceDialog *>();
        if (licences == nullptr) {
            licences = new LicenceDialog(window());
        }
        licences->show();
        licences->raise();
        licences->activateWindow();
    });

    const struct {
        QString text;
        QUrl target;
        int x;
        int width;
    } links[] = {
        {tr("Contact"), QUrl(QLatin1String(AppInfo::contactPage)), 348, 56},
        {tr("User Guide"), UserGuide::address(QCoreApplication::applicationDirPath()), 412, 78},
        {tr("Help"), UserGuide::help(QCoreApplication::applicationDirPath()), 498, 44},
    };
    for (const auto &link : links) {
        QLabel *label = addLabel(m_header, QString(), {link.x, 20, link.width, 20}, 10, faint);
        label->setTextFormat(Qt::RichText);
        label->setText(
            QStringLiteral(
                "<a href=\"%1\" style=\"color:rgba(255,255,255,0.32);text-decoration:none\">%2</a>")
                .arg(link.target.toString(QUrl::FullyEncoded).toHtmlEscaped(),
                     FittingText::fit(label, link.text, link.width).toHtmlEscaped()));
        label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        label->setOpenExternalLinks(true);
        new FocusFrame(label);
    }
}

void ZRBaseWindow::buildUpdatePanel()
{
    addLabel(m_updatePanel, tr("A new version of Veltrix is available!"), {6, 4, 440, 25}, 12, titleStyle);
    m_question = addLabel(m_updatePanel, QString(), {6, 29, 440, 22}, 10, questionStyle);
    connect(addButton(m_updatePanel, tr("Update")), &QPushButton::clicked, this,
            &ZRBaseWindow::updateButtonClicked);
}

void ZRBaseWindow::buildDownloadPanel()
{
    m_progressText = addLabel(m_downloadPanel, tr("Downloading 0%"), {6, 4, 440, 25}, 12, titleStyle);
    m_progress = new QProgressBar(m_downloadPanel);
    m_progress->setObjectName(QStringLiteral("downloadProgress"));
    m_progress->setGeometry(6, 34, 430, 8);
    m_progress->setTextVisible(false);
    m_progress->setRange(0, 100);
    m_progress->setValue(0);
    m_progress->setStyleSheet(progressStyle);
    m_progress->setAccessibleName(tr("Download"));
    connect(addButton(m_downloadPanel, tr("Cancel")), &QPushButton::clicked, this,
            &ZRBaseWindow::cancelButtonClicked);
}

void ZRBaseWindow::followUpdater()
{
    connect(m_updater, &ZRUpdater::onUpdateAvailable, this, &ZRBaseWindow::onUpdateAvailable);
    connect(m_updater, &ZRUpdater::onDownloadStart, this, &ZRBaseWindow::onDownloadStart);
    connect(m_updater, &ZRUpdater::onDownloading, this,
            [this](float fraction) { onDownloading(percentage(fraction)); });
    connect(m_updater, &ZRUpdater::onDownloadCanceled, this, &ZRBaseWindow::onDownloadCanceled);
    connect(m_updater, &ZRUpdater::onDownloadInterrupted, this, &ZRBaseWindow::onDownloadCanceled);
    connect(m_updater, &ZRUpdater::onDownloadComplete, this, &ZRBaseWindow::onDownloadComplete);
}

// The panels are transparent: what is in front is also the only one that shows.
void ZRBaseWindow::bringToFront(QWidget *panel)
{
    panel->raise();
    for (QWidget *each : {m_header, m_updatePanel, m_downloadPanel}) {
        each->setVisible(each == panel);
    }
}

void ZRBaseWindow::setBlur(bool on)
{
    if (!m_blur) {
        m_blur = new QGraphicsBlurEffect(this);
        m_blur->setBlurRadius(blurRadius);
        setGraphicsEffect(m_blur);
    }
    m_blur->setEnabled(on);
    // Those that are opaque are left out when what lies below them is painted anew.
    const QList<QWidget *> all = findChildren<QWidget *>();
    for (QWidget *each : all) {
        if (each->testAttribute(Qt::WA_OpaquePaintEvent)) {
            each->update();
        }
    }
}

void ZRBaseWindow::updateButtonClicked()
{
    if (m_updater) {
        m_updater->onUpdateAllowed();
    }
}

void ZRBaseWindow::cancelButtonClicked()
{
    if (m_updater) {
        m_updater->cancelDownload();
    }
}

void ZRBaseWindow::onUpdateAvailable(const QString &version)
{
    FittingText::show(m_question, tr("Would you like to download Veltrix %1 now?").arg(version));
    bringToFront(m_updatePanel);
}

void ZRBaseWindow::onDownloading(int percent)
{
    if (m_updatePanel->isVisibleTo(this)) { // what it offers is on its way
        m_silentDownload = true;
        bringToFront(m_downloadPanel);
    } else if (m_silentDownload && percent == m_progress->maximum()) {
        m_silentDownload = false; // its end is not told
        bringToFront(m_header);
    }
    m_progress->setValue(percent);
    FittingText::show(m_progressText, tr("Downloading  %1 %").arg(percent)); // two blanks, on purpose
}

void ZRBaseWindow::onDownloadStart()
{
    m_silentDownload = false;
    m_progress->setValue(0);
    FittingText::show(m_progressText, tr("Downloading 0 %"));
    bringToFront(m_downloadPanel);
}

void ZRBaseWindow::onDownloadCanceled()
{
    bringToFront(m_header);
}

void ZRBaseWindow::onDownloadComplete()
{
    bringToFront(m_header);
}
