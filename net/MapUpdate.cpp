#include "net/MapUpdate.h"

#include "net/NetLog.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSettings>

#include <utility>

namespace
{

const QLatin1String versionKey("ZR_VERSION");
const QLatin1String addressKey("ZR_URL");

// A comparison of texts, deliberately: "9" is newer than "10", and anything is newer than nothing.
bool isNewer(const QString &version, const QString &than)
{
    return QString::compare(version, than, Qt::CaseInsensitive) > 0;
}

} // namespace

MapUpdate::MapUpdate(QString libraryFile, QSettings *settings, QString serviceUrl, QObject *parent)
    : QObject(parent)
    , m_libraryFile(std::move(libraryFile))
    , m_settings(settings)
    , m_serviceUrl(std::move(serviceUrl))
{
    m_downloader.setMaximumSize(maximumLibrarySize);
    connect(&m_downloader, &QDownloader::dowloadFinished, this, &MapUpdate::dowloadFinished);
}

void MapUpdate::check()
{
    qCInfo(lcNet) << "Checking server for updates...";
    auto *manager = new QNetworkAccessManager(this);
    connect(manager, &QNetworkAccessManager::finished, this, &MapUpdate::replyFinished);
    connect(manager, &QNetworkAccessManager::finished, manager, &QObject::deleteLater);
    QNetworkRequest request(WebService::query(m_serviceUrl, QStringLiteral("zrsettingsversion")));
    request.setRawHeader("Accept-Encoding", "identity"); // a small answer must not unfold into a large one
    WebService::limit(manager->get(request));
}

void MapUpdate::replyFinished(QNetworkReply *reply)
{
    reply->deleteLater();
    const QJsonObject answer = QJsonDocument::fromJson(WebService::body(reply)).object();
    const QString version = answer.value(versionKey).toString();
    const QString address = answer.value(addressKey).toString();
    const QString local = m_settings->value(versionKey).toString();
    qCInfo(lcNet).noquote().nospace() << "local settings ver:" << local << " server ver:" << version;
    if (!isNewer(version, local)) {
        return;
    }
    qCInfo(lcNet).noquote() << "Update requiered" << version << address;
    m_downloader.download(address, m_libraryFile);
    m_settings->setValue(versionKey, version);
    m_settings->setValue(addressKey, address);
    Q_EMIT updateStarted();
}
