#pragma once

#include "net/QDownloader.h"
#include "net/SignatureCheck.h"
#include "net/WebService.h"

#include <QObject>
#include <QPointer>
#include <QString>

class QNetworkReply;
class QSettings;

/// Asks the web service for a newer library of mappings and downloads it. Knows nothing of what is in it.
///
/// The settings "ZR_VERSION" and "ZR_URL" name the library that was fetched last. They are written as soon as
/// a download starts, and count only when its file was stored: a download that failed, or that the program's
/// end cut off, takes them back.
///
/// The download goes into a file beside the library, which takes the library's place once it has arrived
/// whole, with a signing key once its signature ("ZR_SIGNATURE" of the answer) has been verified too, and is
/// deleted otherwise. GUI thread only.
class MapUpdate : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MapUpdate)

public:
    /// A library that is larger is not fetched to its end.
    static constexpr qint64 maximumLibrarySize = 4LL * 1024 * 1024;

    /// One that takes longer is given up.
    static constexpr int downloadDeadline = 600000; ///< ms

    /// @p libraryFile is replaced by a download. @p settings stays the caller's and must outlive this object.
    MapUpdate(QString libraryFile, QSettings *settings, QString serviceUrl = WebService::baseUrl(),
              const QByteArray &signingKey = SignatureCheck::builtInKey(), QObject *parent = nullptr);

    /// Asks the service. Each call sends a query of its own.
    void check();

    void setStallTimeout(int milliseconds) { m_stallTimeout = milliseconds; }

Q_SIGNALS:
    /// A newer library is being fetched.
    void updateStarted();

    /// The end of what updateStarted() announced. When false, the library file is as it was before.
    void dowloadFinished(bool success);

public Q_SLOTS:
    /// Takes the answer to the query. One that names no version, as a failed one mostly does, leads to
    /// nothing; its status is not looked at.
    void replyFinished(QNetworkReply *reply);

private:
    void startDownload(const QString &address);
    void onDownloaded(bool success);
    bool acceptDownload() const;
    void setFetched(const QString &version, const QString &address);

    QString m_libraryFile;
    QSettings *m_settings;
    QString m_serviceUrl;
    SignatureCheck m_signatureCheck;
    QString m_downloadFile;
    QString m_version; // of what is being downloaded, as is the next
    QString m_signature;
    QString m_versionBefore;
    QString m_addressBefore;
    int m_stallTimeout = QDownloader::defaultStallTimeout;
    QPointer<QDownloader> m_downloader; // only while there is something to fetch
};
