#include "net/QDownloader.h"

#include "net/HttpManager.h"
#include "net/HttpReply.h"
#include "net/NetLog.h"

#include <QFile>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

QDownloader::QDownloader(QObject *parent)
    : QObject(parent)
    , m_manager(new HttpManager)
{
    connect(m_manager, &QNetworkAccessManager::finished, this, &QDownloader::onFinished);
    m_deadline.setSingleShot(true);
    m_deadline.setInterval(defaultDeadline);
    connect(&m_deadline, &QTimer::timeout, this,
            [this] { abortWith(QStringLiteral("The download does not come to an end")); });
}

QDownloader::~QDownloader()
{
    forgetDownload();
    m_manager->deleteLater();
}

void QDownloader::download(const QString &url, const QString &filePath)
{
    forgetDownload();
    openFile(filePath);

    QUrl address(url, QUrl::TolerantMode);
    if (address.scheme() != QLatin1String("http") && address.scheme() != QLatin1String("https")) {
        qCWarning(lcNet).noquote() << "Not an HTTP address:" << url;
        address.clear(); // local files are no downloads; without an address the request fails
    }
    QNetworkRequest request(address);
    request.setTransferTimeout(m_stallTimeout);
    m_reply = m_manager->get(request);
    m_deadline.start();

    connect(m_reply, &QNetworkReply::metaDataChanged, this, &QDownloader::onHead);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &QDownloader::onDownloadProgress);
    connect(m_reply, &QNetworkReply::readyRead, this, &QDownloader::onReadyRead);
    connect(m_reply, &QNetworkReply::finished, this, &QDownloader::onReplyFinished);
    connect(this, &QDownloader::cancelDownload, m_reply, &QNetworkReply::abort);
}

void QDownloader::openFile(const QString &filePath)
{
    m_file = new QFile(filePath, this);
    const auto mode = QIODevice::WriteOnly | (m_createNew ? QIODevice::NewOnly : QIODevice::NotOpen);
    if (!m_file->open(mode)) {
        m_error = m_file->errorString(); // reported with the end
    } else if (m_createNew) {
        m_file->setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    }
}

// What cannot end well is not fetched at all.
void QDownloader::onHead()
{
    const auto *reply = qobject_cast<const HttpReply *>(m_reply.data());
    const qint64 length = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (m_markedEndRequired && reply && !reply->isEndMarked()) {
        abortWith(QStringLiteral("The server did not tell the length of the file"));
    } else if (m_maximumSize > 0 && length > m_maximumSize) {
        abortWith(QStringLiteral("The file is larger than %1 bytes").arg(m_maximumSize));
    }
}

void QDownloader::onReadyRead()
{
    if (!m_reply || m_reply->bytesAvailable() == 0) {
        return;
    }
    if (!m_file || !m_error.isEmpty()) {
        abortWith(m_error);
        return;
    }
    const QByteArray data = m_reply->readAll();
    m_received += data.size();
    if (m_maximumSize > 0 && m_received > m_maximumSize) {
        abortWith(QStringLiteral("The file is larger than %1 bytes").arg(m_maximumSize));
    } else if (m_file->write(data) != data.size() || !m_file->flush()) {
        // What is left of a full disk takes a part of the data without calling that an error.
        abortWith(QStringLiteral("The file could not be written whole: ") + m_file->errorString());
    }
}

void QDownloader::abortWith(const QString &error)
{
    m_error = error;
    if (m_reply && m_reply->isRunning()) {
        m_reply->abort(); // ends in onFinished()
    }
}

void QDownloader::onDownloadProgress(qint64 received, qint64 total)
{
    qCDebug(lcNet).noquote().nospace() << received << " - " << total;
    Q_EMIT downloadProgress(static_cast<float>(static_cast<double>(received) / static_cast<double>(total)));
}

void QDownloader::onReplyFinished()
{
    closeFile();
}

void QDownloader::onFinished(QNetworkReply *reply)
{
    if (reply != m_reply) {
        return; // of a download that has been given up
    }
    onReadyRead(); // what arrived with the end
    closeFile();
    const QString error = whatFailed(*reply);
    m_deadline.stop();
    reply->disconnect(this); // a listener may start the next download from within the report
    reply->deleteLater();
    m_reply.clear();
    m_error.clear();

    if (error.isEmpty()) {
        qCInfo(lcNet) << "file downloaded successfully";
    } else {
        qCWarning(lcNet).noquote() << error;
    }
    Q_EMIT dowloadFinished(error.isEmpty());
}

// An empty text if nothing did.
QString QDownloader::whatFailed(const QNetworkReply &reply) const
{
    if (!m_error.isEmpty()) {
        return m_error;
    }
    if (reply.error() != QNetworkReply::NoError) {
        return reply.errorString();
    }
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status / 100 != 2) {
        return QStringLiteral("The server answered with status %1").arg(status);
    }
    return {};
}

void QDownloader::closeFile()
{
    if (!m_file) {
        return;
    }
    if (m_file->isOpen()) {
        m_file->close();
        if (m_file->error() != QFile::NoError && m_error.isEmpty()) {
            m_error = m_file->errorString();
        }
    }
    m_file->deleteLater();
    m_file.clear();
}

void QDownloader::forgetDownload()
{
    if (QNetworkReply *const reply = m_reply.data()) {
        m_reply.clear();
        reply->disconnect(this);
        disconnect(reply);
        reply->deleteLater(); // ends the transfer
    }
    closeFile();
    m_deadline.stop();
    m_error.clear();
    m_received = 0;
}
