#include "net/HttpReply.h"

#include <QSslConfiguration>
#include <QSslSocket>
#include <QTcpSocket>

#include <algorithm>
#include <cstring>

namespace
{

constexpr qint64 pieceSize = 16LL * 1024;
constexpr qint64 socketBufferSize = 64LL * 1024;
constexpr qint64 progressInterval = 100; // ms

const QLatin1String secureScheme("https");

QTcpSocket *makeSocket(const QUrl &url, QObject *parent)
{
#if QT_CONFIG(ssl)
    if (url.scheme() == secureScheme) {
        return new QSslSocket(parent);
    }
#endif
    Q_UNUSED(url)
    return new QTcpSocket(parent);
}

QNetworkReply::NetworkError errorOf(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return QNetworkReply::ConnectionRefusedError;
    case QAbstractSocket::RemoteHostClosedError:
        return QNetworkReply::RemoteHostClosedError;
    case QAbstractSocket::HostNotFoundError:
        return QNetworkReply::HostNotFoundError;
    case QAbstractSocket::SocketTimeoutError:
        return QNetworkReply::TimeoutError;
    case QAbstractSocket::SslHandshakeFailedError:
        return QNetworkReply::SslHandshakeFailedError;
    default:
        return QNetworkReply::UnknownNetworkError;
    }
}

QNetworkReply::NetworkError errorOfStatus(int status)
{
    if (status < 400) {
        return QNetworkReply::NoError;
    }
    if (status == 404) {
        return QNetworkReply::ContentNotFoundError;
    }
    if (status == 407) {
        return QNetworkReply::ProxyAuthenticationRequiredError;
    }
    return status < 500 ? QNetworkReply::UnknownContentError : QNetworkReply::UnknownServerError;
}

// As a header says it: with the port where it is not the usual one, and an address of IPv6 in brackets.
QByteArray hostOf(const QUrl &url)
{
    const QString host = url.host(QUrl::FullyEncoded);
    QByteArray text =
        (host.contains(QLatin1Char(':')) ? QLatin1Char('[') + host + QLatin1Char(']') : host).toLatin1();
    if (url.port() >= 0) {
        text += ':' + QByteArray::number(url.port());
    }
    return text;
}

// The HTTP proxy that is to be asked instead of the server, if that is the way out.
QNetworkProxy askedProxy(const QUrl &url)
{
    const QNetworkProxy way = QNetworkProxyFactory::proxyForQuery(QNetworkProxyQuery(url)).value(0);
    const bool asked =
        way.type() == QNetworkProxy::HttpProxy || way.type() == QNetworkProxy::HttpCachingProxy;
    return asked ? way : QNetworkProxy(QNetworkProxy::NoProxy);
}

QByteArray credentialsOf(const QNetworkProxy &proxy)
{
    return (proxy.user() + QLatin1Char(':') + proxy.password()).toUtf8().toBase64();
}

} // namespace

HttpReply::HttpReply(const QNetworkRequest &request, QObject *parent)
    : QNetworkReply(parent)
    , m_socket(makeSocket(request.url(), this))
{
    setRequest(request);
    setUrl(request.url());
    setOperation(QNetworkAccessManager::GetOperation);
    QNetworkReply::setReadBufferSize(defaultReadBufferSize);
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);

    m_socket->setReadBufferSize(socketBufferSize);
    connect(m_socket, &QTcpSocket::readyRead, this, &HttpReply::read);
    connect(m_socket, &QTcpSocket::disconnected, this, &HttpReply::onClosed);
    connect(m_socket, &QTcpSocket::errorOccurred, this, &HttpReply::onSocketError);
    m_stall.setSingleShot(true);
    connect(&m_stall, &QTimer::timeout, this, &HttpReply::abort);
    if (request.transferTimeout() > 0) {
        m_stall.start(request.transferTimeout());
    }
    QMetaObject::invokeMethod(this, &HttpReply::connectToServer, Qt::QueuedConnection);
}

HttpReply::~HttpReply()
{
    m_socket->disconnect(this);
    m_socket->abort();
}

bool HttpReply::canFetch(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QLatin1String("http") || url.scheme() == secureScheme);
}

void HttpReply::connectToServer()
{
    if (isFinished()) {
        return; // aborted meanwhile
    }
    if (url().scheme() != secureScheme) {
        connect(m_socket, &QTcpSocket::connected, this, &HttpReply::sendRequest);
        m_proxy = askedProxy(url());
        if (m_proxy.type() == QNetworkProxy::NoProxy) {
            m_socket->connectToHost(url().host(), static_cast<quint16>(url().port(80)));
        } else {
            // The socket itself would ask for a tunnel, which many proxies allow to port 443 only.
            m_socket->setProxy(QNetworkProxy::NoProxy);
            m_socket->connectToHost(m_proxy.hostName(), m_proxy.port());
        }
        return;
    }
#if QT_CONFIG(ssl)
    if (auto *secure = qobject_cast<QSslSocket *>(m_socket)) {
        connect(secure, &QSslSocket::encrypted, this, &HttpReply::sendRequest);
        secure->setSslConfiguration(request().sslConfiguration());
        secure->connectToHostEncrypted(url().host(), static_cast<quint16>(url().port(443)));
        return;
    }
#endif
    end(ProtocolUnknownError, QStringLiteral("Protocol \"%1\" is unknown").arg(secureScheme));
}

void HttpReply::sendRequest()
{
    QByteArray target = url().path(QUrl::FullyEncoded).toLatin1();
    if (target.isEmpty()) {
        target = "/";
    }
    if (url().hasQuery()) {
        target += '?' + url().query(QUrl::FullyEncoded).toLatin1();
    }
    const bool toProxy = m_proxy.type() != QNetworkProxy::NoProxy;
    if (toProxy) {
        target = "http://" + hostOf(url()) + target;
    }
    QByteArray head = "GET " + target + " HTTP/1.1\r\nHost: " + hostOf(url()) +
                      "\r\nAccept-Encoding: identity\r\nConnection: close\r\n";
    if (toProxy && !m_proxy.user().isEmpty()) {
        head += "Proxy-Authorization: Basic " + credentialsOf(m_proxy) + "\r\n";
    }
    const QList<QByteArray> names = request().rawHeaderList();
    for (const QByteArray &name : names) {
        head += name + ": " + request().rawHeader(name) + "\r\n";
    }
    if (!request().hasRawHeader("User-Agent")) {
        head += "User-Agent: Mozilla/5.0\r\n";
    }
    m_socket->write(head + "\r\n");
}

void HttpReply::setReadBufferSize(qint64 size)
{
    QNetworkReply::setReadBufferSize(size);
    readLater();
}

qint64 HttpReply::readData(char *data, qint64 maxSize)
{
    const int size = static_cast<int>(std::min<qint64>(maxSize, m_body.size()));
    if (size == 0) {
        return isFinished() ? -1 : 0;
    }
    std::memcpy(data, m_body.constData(), static_cast<std::size_t>(size));
    m_body.remove(0, size);
    readLater();
    return size;
}

// What has been left in the socket for want of room tells nobody of itself.
void HttpReply::readLater()
{
    if (!isFinished() && !m_readIsDue) {
        m_readIsDue = true;
        QMetaObject::invokeMethod(this, &HttpReply::read, Qt::QueuedConnection);
    }
}

void HttpReply::read()
{
    m_readIsDue = false;
    while (!isFinished() && (readBufferSize() <= 0 || m_body.size() < readBufferSize())) {
        const QByteArray bytes = m_socket->read(pieceSize);
        if (bytes.isEmpty()) {
            break;
        }
        if (m_stall.isActive()) {
            m_stall.start();
        }
        const int before = m_body.size();
        const bool taken = m_response.take(bytes, m_body);
        m_received += m_body.size() - before;
        report();
        if (isFinished()) {
            return; // whoever was told has given it up
        }
        if (!taken) {
            end(ProtocolFailure, m_response.error());
        } else if (m_response.isComplete()) {
            complete();
        }
    }
    if (m_closed && !isFinished() && m_socket->bytesAvailable() == 0) {
        if (m_response.close()) {
            complete();
        } else {
            end(RemoteHostClosedError, m_response.error());
        }
    }
}

void HttpReply::onClosed()
{
    m_closed = true;
    read();
}

void HttpReply::onSocketError(QAbstractSocket::SocketError error)
{
    if (error == QAbstractSocket::RemoteHostClosedError &&
        m_socket->state() != QAbstractSocket::ConnectingState) {
        return; // perhaps the regular end: disconnected() follows
    }
    read();
    if (!isFinished()) {
        end(errorOf(error), m_socket->errorString());
    }
}

void HttpReply::report()
{
    if (m_response.isHeadComplete() && !m_headShown) {
        showHead();
    }
    if (isFinished() || m_received == m_reported) {
        return;
    }
    m_reported = m_received;
    if (m_sinceProgress.elapsed() >= progressInterval) {
        m_sinceProgress.start();
        Q_EMIT downloadProgress(m_received, m_response.length());
    }
    if (!isFinished()) {
        Q_EMIT readyRead();
    }
}

void HttpReply::showHead()
{
    m_headShown = true;
    m_sinceProgress.start();
    setAttribute(QNetworkRequest::HttpStatusCodeAttribute, m_response.status());
    setAttribute(QNetworkRequest::HttpReasonPhraseAttribute, QString::fromLatin1(m_response.reason()));
    for (const auto &header : m_response.headers()) {
        const bool untrue = header.first.compare("Content-Length", Qt::CaseInsensitive) == 0 &&
                            m_response.length() < 0; // of chunks
        if (!untrue) {
            setRawHeader(header.first, header.second);
        }
    }
    Q_EMIT metaDataChanged();
}

void HttpReply::complete()
{
    const NetworkError error = errorOfStatus(m_response.status());
    Q_EMIT downloadProgress(m_received, m_response.length() >= 0 ? m_response.length() : m_received);
    if (isFinished()) {
        return;
    }
    end(error, error == NoError ? QString()
                                : QStringLiteral("Error transferring %1 - server replied: %2")
                                      .arg(url().toString(), QString::fromLatin1(m_response.reason())));
}

void HttpReply::abort()
{
    end(OperationCanceledError, QStringLiteral("Operation canceled"));
}

void HttpReply::end(NetworkError error, const QString &text)
{
    if (isFinished()) {
        return;
    }
    m_stall.stop();
    m_socket->disconnect(this);
    m_socket->abort(); // closed with the answer, whatever is still on its way
    setFinished(true);
    if (error != NoError) {
        setError(error, text);
        Q_EMIT errorOccurred(error);
    }
    Q_EMIT readChannelFinished();
    Q_EMIT finished();
}
