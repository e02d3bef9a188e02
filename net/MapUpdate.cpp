#include "net/MapUpdate.h"

#include "net/HttpManager.h"
#include "net/LibraryOffer.h"
#include "net/NetLog.h"

#include <QFile>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSettings>

#include <filesystem>
#include <system_error>
#include <utility>

namespace
{

const QLatin1String versionKey("ZR_VERSION");
const QLatin1String addressKey("ZR_URL");

// In one step, whether there is a file at @p target or not.
bool replaceFile(const QString &source, const QString &target)
{
    std::error_code error;
    std::filesystem::rename(source.toStdU16String(), target.toStdU16String(), error);
    return !error;
}

} // namespace

MapUpdate::MapUpdate(QString libraryFile, QSettings *settings, QString serviceUrl,
                     const QByteArray &signingKey, QObject *parent)
    : QObject(parent)
    , m_libraryFile(std::move(libraryFile))
    , m_settings(settings)
    , m_serviceUrl(std::move(serviceUrl))
    , m_signatureCheck(signingKey)
    , m_downloadFile(m_libraryFile + QStringLiteral(".download"))
{
    if (QFile::remove(m_downloadFile)) {
        setFetched({}, {}); // the program ended while it was fetched
    }
}

void MapUpdate::check()
{
    qCInfo(lcNet) << "Checking server for updates...";
    auto *manager = new HttpManager(this);
    connect(manager, &QNetworkAccessManager::finished, this, &MapUpdate::replyFinished);
    connect(manager, &QNetworkAccessManager::finished, manager, &QObject::deleteLater);
    const QNetworkRequest request(WebService::query(m_serviceUrl, QStringLiteral("zrsettingsversion")));
    WebService::limit(manager->get(request));
}

void MapUpdate::replyFinished(QNetworkReply *reply)
{
    reply->deleteLater();
    const LibraryOffer offer = readLibraryAnswer(WebService::body(reply));
    const QString local = m_settings->value(versionKey).toString();
    qCInfo(lcNet).noquote().nospace() << "local settings ver:" << local << " server ver:" << offer.version;
    if (!offer.isNewerThan(local)) {
        return;
    }
    qCInfo(lcNet).noquote() << "Update requiered" << offer.version << offer.address;
    if (!m_downloader) { // else what stands in the settings does not count yet
        m_versionBefore = local;
        m_addressBefore = m_settings->value(addressKey).toString();
    }
    m_version = offer.version;
    m_signature = offer.signature;
    startDownload(offer.address);
    setFetched(offer.version, offer.address);
    Q_EMIT updateStarted();
}

void MapUpdate::startDownload(const QString &address)
{
    if (!m_downloader) {
        m_downloader = new QDownloader(this);
        m_downloader->setMaximumSize(maximumLibrarySize);
        m_downloader->setDeadline(downloadDeadline);
        m_downloader->setStallTimeout(m_stallTimeout);
        connect(m_downloader, &QDownloader::dowloadFinished, this, &MapUpdate::onDownloaded);
    }
    m_downloader->download(address, m_downloadFile);
}

void MapUpdate::setFetched(const QString &version, const QString &address)
{
    if (version.isEmpty()) {
        m_settings->remove(versionKey);
        m_settings->remove(addressKey);
    } else {
        m_settings->setValue(versionKey, version);
        m_settings->setValue(addressKey, address);
    }
}

void MapUpdate::onDownloaded(bool success)
{
    m_downloader->deleteLater();
    m_downloader.clear();
    success = success && acceptDownload();
    if (!success) {
        QFile::remove(m_downloadFile);
        setFetched(m_versionBefore, m_addressBefore);
    }
    Q_EMIT dowloadFinished(success);
}

bool MapUpdate::acceptDownload() const
{
    QString fault =
        m_signatureCheck.faultOf(m_downloadFile, SignatureCheck::Kind::Library, m_version, m_signature);
    if (fault.isEmpty() && !replaceFile(m_downloadFile, m_libraryFile)) {
        fault = QStringLiteral("it cannot take the place of ") + m_libraryFile;
    }
    if (!fault.isEmpty()) {
        qCWarning(lcNet).noquote() << "The library that was downloaded is not used and is deleted:" << fault;
    }
    return fault.isEmpty();
}
