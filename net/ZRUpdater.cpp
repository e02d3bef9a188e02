#include "net/ZRUpdater.h"

#include "net/NetLog.h"
#include "net/QDownloader.h"
#include "net/SignatureCheck.h"
#include "net/WebService.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QRegularExpression>
#include <QTimer>
#include <QVersionNumber>

#include <utility>

namespace
{

constexpr int firstCheckDelay = 1; // ms

QJsonObject readAnswer(const QByteArray &body)
{
    QString text = QString::fromUtf8(body.constData()); // up to the first NUL
    text.remove(QRegularExpression(QStringLiteral("[\n]")));
    text.remove(QRegularExpression(QStringLiteral("[\n\t\r]")));
    return QJsonDocument::fromJson(text.toUtf8()).object();
}

// The first of several addresses. The download deliberately always goes over plain HTTP.
QString installerAddress(const QString &addresses)
{
    QString address = addresses.section(QLatin1Char(';'), 0, 0);
    address.replace(QLatin1String("\\/"), QLatin1String("/"));
    address.replace(QLatin1String("https"), QLatin1String("http"));
    return address;
}

bool isGreater(const QString &version, const QString &than)
{
    return QVersionNumber::compare(QVersionNumber::fromString(version), QVersionNumber::fromString(than)) > 0;
}

} // namespace

ZRUpdater::Setup::Setup()
    : serviceUrl(WebService::baseUrl())
    , installerFile(OSHelper::installerFile())
    , application(OSHelper::applicationFile())
    , prompt(nullptr)
    , quit([] { QCoreApplication::quit(); })
    , system(OSHelper::thisSystem())
    , signingKey(SignatureCheck::builtInKey())
    , checkInterval(defaultCheckInterval)
    , answerDeadline(WebService::answerDeadline)
{
}

ZRUpdater *ZRUpdater::instance()
{
    static ZRUpdater updater;
    static const bool releasedWithTheApplication = [] {
        qAddPostRoutine([] {
            updater.release();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // no loop does it any more
        });
        return true;
    }();
    Q_UNUSED(releasedWithTheApplication)
    return &updater;
}

ZRUpdater::ZRUpdater(const Setup &setup, QObject *parent)
    : QObject(parent)
{
    configure(setup);
}

ZRUpdater::~ZRUpdater()
{
    release();
}

void ZRUpdater::configure(const Setup &setup)
{
    m_setup = setup;
    m_prompt = setup.prompt;
}

void ZRUpdater::arm()
{
    if (!m_checkTimer) {
        m_checkTimer = new QTimer(this);
        connect(m_checkTimer, &QTimer::timeout, this, &ZRUpdater::startCheckingPeriodically);
    }
    m_checkTimer->start(firstCheckDelay);
}

void ZRUpdater::startCheckingPeriodically()
{
    if (m_checkTimer) {
        m_checkTimer->start(m_setup.checkInterval);
    }
    if (!m_network) {
        m_network = new QNetworkAccessManager(this);
    }
    QNetworkRequest request(WebService::query(m_setup.serviceUrl, QStringLiteral("zrversion")));
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QStringLiteral("application/x-www-form-urlencoded"));
    request.setRawHeader("User-Agent", "Mozilla/5.0");
    request.setRawHeader("Accept-Language", "en-US,en;q=0.5");
    request.setRawHeader("Accept-Encoding", "identity"); // a small answer must not unfold into a large one
    disconnect(m_network, &QNetworkAccessManager::finished, nullptr, nullptr);
    connect(m_network, &QNetworkAccessManager::finished, this, &ZRUpdater::onUpdateResponse);
    WebService::limit(m_network->get(request), m_setup.answerDeadline);
}

void ZRUpdater::onUpdateResponse(QNetworkReply *reply)
{
    reply->deleteLater();
    if (reply->error() != QNetworkReply::NoError) {
        qCDebug(lcNet).noquote() << "[Updater]" << reply->errorString();
        if (!WebService::hitLimit(reply)) {
            Q_EMIT onNoInet();
        }
        return;
    }
    const QJsonObject answer = readAnswer(WebService::body(reply));
    const QString version = answer.value(QLatin1String("UPDATE_VERSION")).toString();
    if (!isBusy()) { // what is on its way stays what it is
        m_updateVersion = version;
        m_updateUrl = installerAddress(answer.value(QLatin1String("UPDATE_URL")).toString());
        m_updateSignature = answer.value(QLatin1String("UPDATE_SIGNATURE")).toString();
    }
    // An updater that was not told its own version would take everything for newer.
    if (m_setup.version.isEmpty() || !isGreater(version, m_setup.version)) {
        Q_EMIT onNoUpdate();
    } else if (!isBusy()) {
        offer(answer.value(QLatin1String("UPDATE_PRIORITY")).toString());
    }
}

void ZRUpdater::offer(const QString &priority)
{
    m_mandatory = priority == QLatin1String("MAN");
    if (priority == QLatin1String("LOW")) {
        Q_EMIT onUpdateAvailable(m_updateVersion);
    } else if (priority == QLatin1String("MID")) {
        if (!m_downloading && !(m_prompt && m_prompt->isVisible())) {
            ask(tr("A new version of Veltrix is available. Do you want to install it?"), tr("OK"),
                tr("Cancel"), &ZRUpdater::onUpdateAllowed, &ZRUpdater::onUpdateCanceled);
        }
    } else if (priority == QLatin1String("HIGH")) {
        ask(tr("A new version of Veltrix is available. Press OK to install it"), tr("OK"), QString(),
            &ZRUpdater::onUpdateAllowed, nullptr);
    } else if (m_mandatory) {
        startDownload();
    }
}

void ZRUpdater::ask(const QString &text, const QString &button1, const QString &button2,
                    void (ZRUpdater::*first)(), void (ZRUpdater::*second)())
{
    if (!m_prompt) {
        qCInfo(lcNet).noquote() << "[Updater] nobody to ask:" << text;
        return;
    }
    const auto action = [this](void (ZRUpdater::*slot)()) -> UpdatePrompt::Action {
        if (!slot) {
            return {};
        }
        return [self = QPointer<ZRUpdater>(this), slot] {
            if (self) {
                (self->*slot)();
            }
        };
    };
    m_prompt->ask(text, button1, button2, action(first), action(second));
}

void ZRUpdater::onUpdateAllowed()
{
    qCInfo(lcNet) << "[Updater] onUpdateAllowed";
    if (isBusy()) {
        return; // offered in several places, taken once
    }
    Q_EMIT onDownloadStart();
    startDownload();
}

void ZRUpdater::onUpdateCanceled()
{
    if (isBusy()) {
        return; // a question that was left standing; the download has begun elsewhere
    }
    m_downloading = false;
    Q_EMIT onUpdateAvailable(m_updateVersion);
}

void ZRUpdater::startDownload()
{
    if (isBusy()) {
        return;
    }
    m_downloading = true;
    m_downloader = new QDownloader(this);
    connect(m_downloader, &QDownloader::dowloadFinished, this, &ZRUpdater::dowloadFinished);
    connect(m_downloader, &QDownloader::downloadProgress, this, &ZRUpdater::downloadProgress);

    const QString file = m_setup.installerFile;
    const bool fits = m_setup.system != OSHelper::System::Windows ||
                      !OSHelper::hasCommandCharacters(QFileInfo(file).fileName());
    if (!fits || !OSHelper::makePrivateDirectory(QFileInfo(file).path())) {
        qCWarning(lcNet).noquote() << "[Updater] no safe place for the installer:" << file;
        QMetaObject::invokeMethod(
            this, [this] { dowloadFinished(false); }, Qt::QueuedConnection);
        return;
    }
    QFile::remove(file); // takes a link away, not what it points to
    m_downloader->setCreateNew(true);
    m_downloader->setLengthRequired(true);
    m_downloader->setMaximumSize(maximumInstallerSize);
    m_downloader->download(m_updateUrl, file);
}

void ZRUpdater::cancelDownload()
{
    if (!m_downloading || !m_downloader) {
        return;
    }
    m_downloading = false;
    const QPointer<QDownloader> downloader = m_downloader;
    Q_EMIT downloader->cancelDownload();
    Q_EMIT onDownloadCanceled();
}

void ZRUpdater::downloadProgress(float fraction)
{
    Q_EMIT onDownloading(fraction);
}

void ZRUpdater::dowloadFinished(bool success)
{
    const bool wasDownloading = std::exchange(m_downloading, false);
    if (m_downloader) {
        m_downloader->deleteLater();
        m_downloader.clear();
        success = success && acceptInstaller();
        m_complete = success;
    }
    if (success && m_mandatory) {
        install();
    } else if (success) {
        Q_EMIT onDownloadComplete();
    } else if (wasDownloading) {
        ask(tr("An error occurred during download."), tr("OK"), QString(), nullptr, nullptr);
        Q_EMIT onDownloadInterrupted();
    }
}

void ZRUpdater::install()
{
    setInstallOnQuit();
    if (!OSHelper::canReplace(m_setup.system, m_setup.application)) {
        ask(tr("The new version has been downloaded, but Veltrix is not allowed to replace itself here. "
               "Please install it yourself:\n%1")
                .arg(m_setup.installerFile),
            tr("OK"), QString(), nullptr, nullptr);
    } else if (m_mandatory) {
        ask(tr("Please press OK to close Veltrix and complete the update process."), tr("OK"), QString(),
            &ZRUpdater::onCloseAllowed, nullptr);
    } else {
        onCloseAllowed();
    }
}

// Makes what was downloaded something that can be started, or deletes it.
bool ZRUpdater::acceptInstaller() const
{
    const QString file = m_setup.installerFile;
    QString fault;
    if (QFileInfo(file).size() == 0) {
        fault = QStringLiteral("it is empty");
    } else {
        fault = SignatureCheck(m_setup.signingKey).faultOf(file, m_updateSignature);
    }
    if (fault.isEmpty() &&
        !QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
        fault = QStringLiteral("it cannot be made executable");
    }
    if (fault.isEmpty()) {
        return true;
    }
    qCWarning(lcNet).noquote() << "[Updater] the installer" << file
                               << "cannot be used and is deleted:" << fault;
    QFile::remove(file);
    return false;
}

void ZRUpdater::onCloseAllowed()
{
    qCInfo(lcNet) << "[Updater] onCloseAllowed";
    if (m_setup.quit) {
        m_setup.quit();
    }
}

void ZRUpdater::aboutToQuit()
{
    if (!m_installOnQuit) {
        return;
    }
    if (!m_complete) {
        qCWarning(lcNet) << "[Updater] the installer did not arrive whole and is not started";
        return;
    }
    m_installOnQuit = false;
    OSHelper::startInstaller(m_setup.system, m_setup.application, m_setup.installerFile);
}

// Objects that live until the process exits must not keep what needs the application object.
void ZRUpdater::release()
{
    delete m_downloader;
    delete m_checkTimer;
    delete m_network;
    m_prompt.clear();
    m_setup.quit = nullptr;
}

bool ZRUpdater::isBusy() const
{
    return m_downloader || m_complete;
}
