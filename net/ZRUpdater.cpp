#include "net/ZRUpdater.h"

#include "net/Alarm.h"
#include "net/HttpManager.h"
#include "net/NetLog.h"
#include "net/QDownloader.h"
#include "net/SignatureCheck.h"
#include "net/WebService.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

namespace
{

constexpr int firstCheckDelay = 1; // ms

} // namespace

ZRUpdater::Setup::Setup()
    : serviceUrl(WebService::baseUrl())
    , installerFile(OSHelper::installerFile())
    , application(OSHelper::applicationFile())
    , prompt(nullptr)
    , quit([] { QCoreApplication::quit(); })
    , system(OSHelper::thisSystem())
    , signingKey(SignatureCheck::builtInKey())
    , mode(QLatin1String(VELTRIX_UPDATES) == QLatin1String("tell") ? Mode::Tell : Mode::Install)
    , network(nullptr)
    , alarm(nullptr)
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
    m_network = setup.network;
}

void ZRUpdater::arm()
{
    if (!m_setup.alarm) {
        m_ownAlarm = std::make_unique<TimerAlarm>();
        m_setup.alarm = m_ownAlarm.get();
    }
    m_setup.alarm->set(firstCheckDelay, [this] { startCheckingPeriodically(); });
}

void ZRUpdater::startCheckingPeriodically()
{
    if (m_setup.alarm) {
        m_setup.alarm->set(m_setup.checkInterval, [this] { startCheckingPeriodically(); });
    }
    // One of its own goes with the answer: a manager of the toolkit looks at the network's state every ten
    // seconds for as long as it lives.
    QNetworkAccessManager *network = m_network ? m_network.data() : new HttpManager(this);
    QNetworkRequest request(WebService::query(m_setup.serviceUrl, QStringLiteral("zrversion")));
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QStringLiteral("application/x-www-form-urlencoded"));
    request.setRawHeader("User-Agent", "Mozilla/5.0");
    request.setRawHeader("Accept-Language", "en-US,en;q=0.5");
    disconnect(network, &QNetworkAccessManager::finished, nullptr, nullptr);
    connect(network, &QNetworkAccessManager::finished, this, &ZRUpdater::onUpdateResponse);
    if (!m_network) {
        connect(network, &QNetworkAccessManager::finished, network, &QObject::deleteLater);
    }
    WebService::limit(network->get(request), m_setup.answerDeadline);
}

void ZRUpdater::onUpdateResponse(QNetworkReply *reply)
{
    reply->deleteLater();
    if (reply->error() != QNetworkReply::NoError) {
        qCDebug(lcNet).noquote() << "[Updater]" << reply->errorString();
        if (WebService::limitOf(reply) != WebService::Limit::Size) { // there, but it says too much
            Q_EMIT onNoInet();
        }
        return;
    }
    const UpdateAnswer answer = readUpdateAnswer(WebService::body(reply), m_setup.version);
    if (!answer.newer) {
        Q_EMIT onNoUpdate();
    } else if (answer.offer && m_state == State::Idle) { // what is on its way stays what it is
        take(*answer.offer);
    }
}

void ZRUpdater::take(const UpdateOffer &offer)
{
    if (m_setup.mode == Mode::Tell) {
        tell(offer);
        return;
    }
    m_offer = offer;
    switch (offer.priority) {
    case UpdateOffer::Priority::Low:
        Q_EMIT onUpdateAvailable(m_offer.version);
        break;
    case UpdateOffer::Priority::Mid:
        if (!(m_prompt && m_prompt->isVisible())) {
            ask(tr("A new version of Veltrix is available. Do you want to install it?"), tr("OK"),
                tr("Cancel"), &ZRUpdater::onUpdateAllowed, &ZRUpdater::onUpdateCanceled);
        }
        break;
    case UpdateOffer::Priority::High:
        ask(tr("A new version of Veltrix is available. Press OK to install it"), tr("OK"), QString(),
            &ZRUpdater::onUpdateAllowed, nullptr);
        break;
    case UpdateOffer::Priority::Mandatory:
        startDownload();
        break;
    }
}

void ZRUpdater::tell(const UpdateOffer &offer)
{
    if (offer.version == m_toldVersion) {
        return;
    }
    m_toldVersion = offer.version;
    ask(tr("A new version of Veltrix is available. Please install it in the way in which this copy was "
           "installed: %1")
            .arg(offer.version),
        tr("OK"), QString(), nullptr, nullptr);
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
    if (m_state != State::Idle) {
        return; // offered in several places, taken once
    }
    Q_EMIT onDownloadStart();
    startDownload();
}

void ZRUpdater::onUpdateCanceled()
{
    if (m_state == State::Idle) { // else a question that was left standing
        Q_EMIT onUpdateAvailable(m_offer.version);
    }
}

void ZRUpdater::startDownload()
{
    if (m_state != State::Idle) {
        return;
    }
    m_state = State::Downloading;
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
    m_downloader->setMarkedEndRequired(true);
    m_downloader->setDeadline(downloadDeadline);
    m_downloader->setMaximumSize(maximumInstallerSize);
    m_downloader->download(m_offer.url, file);
}

void ZRUpdater::cancelDownload()
{
    if (m_state != State::Downloading || !m_downloader) {
        return;
    }
    m_state = State::Cancelled;
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
    const State before = std::exchange(m_state, State::Idle);
    if (m_downloader) {
        m_downloader->deleteLater();
        m_downloader.clear();
        success = success && acceptInstaller();
        m_state = success ? State::Complete : State::Idle;
    }
    if (success) {
        if (m_offer.priority == UpdateOffer::Priority::Mandatory) {
            install();
        } else {
            Q_EMIT onDownloadComplete();
        }
    } else if (before == State::Downloading) {
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
    } else if (m_offer.priority == UpdateOffer::Priority::Mandatory) {
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
        fault = SignatureCheck(m_setup.signingKey)
                    .faultOf(file, SignatureCheck::Kind::Installer, m_offer.version, m_offer.signature);
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
    if (m_state != State::Complete) {
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
    qDeleteAll(findChildren<HttpManager *>(QString(), Qt::FindDirectChildrenOnly));
    m_network.clear();
    if (m_setup.alarm == m_ownAlarm.get()) {
        m_setup.alarm = nullptr;
    }
    m_ownAlarm.reset();
    m_prompt.clear();
    m_setup.quit = nullptr;
}
