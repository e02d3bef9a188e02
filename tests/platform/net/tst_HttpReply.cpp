#include "net/HttpManager.h"
#include "net/WebService.h"
#include "tests/support/http/HttpServer.h"
#include "tests/support/main/Main.h"

#include <QElapsedTimer>
#include <QFile>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QProcess>
#include <QSignalSpy>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

namespace
{

constexpr int deadline = 400; // ms

qint64 residentBytes()
{
    QFile status(QStringLiteral("/proc/self/statm"));
    return status.open(QIODevice::ReadOnly) ? status.readAll().split(' ').value(1).toLongLong() * 4096 : 0;
}

/// Answers with a beginning and then goes on with the same bytes for as long as somebody takes them: as fast
/// as they are taken, or one each millisecond.
class EndlessServer : public QTcpServer
{
public:
    EndlessServer(const QByteArray &beginning, const QByteArray &goesOn, bool drips)
    {
        connect(this, &QTcpServer::newConnection, this, [=] {
            QTcpSocket *socket = nextPendingConnection();
            socket->write(beginning);
            const auto more = [this, socket, goesOn] {
                socket->write(goesOn);
                sent += goesOn.size();
            };
            if (drips) {
                auto *timer = new QTimer(socket);
                connect(timer, &QTimer::timeout, socket, more);
                timer->start(1);
            } else {
                connect(socket, &QTcpSocket::bytesWritten, socket, [socket, more] {
                    while (socket->state() == QAbstractSocket::ConnectedState &&
                           socket->bytesToWrite() < 100'000) {
                        more();
                    }
                });
            }
            connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
                closed = true;
                socket->deleteLater();
            });
        });
        listen(QHostAddress::LocalHost);
    }

    QUrl url() const { return QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(serverPort())); }

    qint64 sent = 0;
    bool closed = false;
};

/// Answers over TLS with a certificate of its own making.
class SecureServer : public QTcpServer
{
public:
    explicit SecureServer(const QString &folder)
        : m_key(folder + QStringLiteral("/key"))
        , m_certificate(folder + QStringLiteral("/certificate"))
    {
        const QStringList words =
            QStringLiteral("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
                           "-subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1")
                .split(QLatin1Char(' '));
        QProcess openssl;
        openssl.start(QStringLiteral("openssl"), words + QStringList{QStringLiteral("-keyout"), m_key,
                                                                     QStringLiteral("-out"), m_certificate});
        openssl.waitForFinished();
        listen(QHostAddress::LocalHost);
    }

    QUrl url() const { return QUrl(QStringLiteral("https://127.0.0.1:%1/").arg(serverPort())); }
    QList<QSslCertificate> certificates() const { return QSslCertificate::fromPath(m_certificate); }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto *socket = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        socket->setPrivateKey(m_key, QSsl::Ec);
        socket->setLocalCertificate(m_certificate);
        connect(socket, &QSslSocket::readyRead, socket, [socket] {
            socket->readAll();
            socket->write("HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nsecret");
        });
        socket->startServerEncryption();
    }

private:
    QString m_key;
    QString m_certificate;
};

} // namespace

/// What the toolkit's own replies have no bound for. See tst_WebService and tst_QDownloader for the rest.
class tst_HttpReply : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answerWithoutAnEndIsBounded_data();
    void answerWithoutAnEndIsBounded();
    void connectionEndsWithTheAnswer();
    void aReaderThatDoesNotReadSlowsTheServerDown();
    void abortBeforeTheConnectionIsMade();
    void certificateDecidesOverTls_data();
    void certificateDecidesOverTls();
    void hostThatIsNoneIsAnError();
    void anHttpProxyIsAskedInThePlaceOfTheServer_data();
    void anHttpProxyIsAskedInThePlaceOfTheServer();
};

void tst_HttpReply::answerWithoutAnEndIsBounded_data()
{
    QTest::addColumn<QByteArray>("beginning");
    QTest::addColumn<QByteArray>("goesOn");
    QTest::addColumn<bool>("drips");
    const QByteArray chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (const bool drips : {false, true}) {
        const QByteArray how = drips ? ", dripping" : ", in a flood";
        const QByteArray fill(drips ? 1 : 10'000, 'x');
        const auto row = [&](const char *name, const QByteArray &beginning, const QByteArray &goesOn) {
            QTest::newRow(name + how) << beginning << goesOn << drips;
        };
        row("status line", "HTTP/1.1 200 ", fill);
        row("header", "HTTP/1.1 200 OK\r\nA: ", fill);
        row("headers", "HTTP/1.1 200 OK\r\n", "A: b\r\n");
        row("interim answers", "H", "TTP/1.1 100 Continue\r\n\r\nH");
        row("chunk size", chunked, drips ? QByteArray("0") : QByteArray(10'000, '0'));
        row("chunk extension", chunked + "5;", fill);
        row("trailers", chunked + "0\r\n", "A: b\r\n");
    }
}

void tst_HttpReply::answerWithoutAnEndIsBounded()
{
    QFETCH(QByteArray, beginning);
    QFETCH(QByteArray, goesOn);
    QFETCH(bool, drips);
    EndlessServer server(beginning, goesOn, drips);
    HttpManager network;
    const qint64 before = residentBytes();
    if (drips) {
        QTest::ignoreMessage(QtWarningMsg, "The answer of 127.0.0.1 does not come to an end");
    }
    QElapsedTimer time;
    time.start();
    const std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest(server.url())));
    WebService::limit(reply.get(), deadline);
    QTRY_VERIFY(reply->isFinished());
    QVERIFY(time.elapsed() < 5 * deadline);
    QVERIFY(reply->error() != QNetworkReply::NoError);
    QCOMPARE(WebService::body(reply.get()), QByteArray());

    QTRY_VERIFY(server.closed); // at once, though there is more to come
    const qint64 sent = server.sent;
    QTest::qWait(20);
    QCOMPARE(server.sent, sent);
    QVERIFY2(sent < 16'000'000, qPrintable(QString::number(sent))); // most of it in the system's sockets
    const qint64 grown = residentBytes() - before;
    QVERIFY2(grown < 16'000'000, qPrintable(QString::number(grown)));
}

void tst_HttpReply::connectionEndsWithTheAnswer()
{
    EndlessServer server("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello", "and more ", false);
    HttpManager network;
    const std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest(server.url())));
    QTRY_VERIFY(reply->isFinished());
    QCOMPARE(reply->error(), QNetworkReply::NoError);
    QCOMPARE(reply->readAll(), QByteArray("hello"));
    QTRY_VERIFY(server.closed);
}

void tst_HttpReply::aReaderThatDoesNotReadSlowsTheServerDown()
{
    EndlessServer server("HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\n", QByteArray(10'000, 'x'),
                         false);
    HttpManager network;
    const std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest(server.url())));
    reply->setReadBufferSize(100'000);
    QTRY_VERIFY(reply->bytesAvailable() >= 100'000);
    QTest::qWait(100);
    QVERIFY(reply->bytesAvailable() < 200'000);
    QVERIFY(server.sent < 16'000'000);
    const qint64 sent = server.sent;
    qint64 read = 0;
    QTRY_VERIFY((read += reply->readAll().size()) > sent + 1'000'000); // it goes on when it is read
}

void tst_HttpReply::abortBeforeTheConnectionIsMade()
{
    HttpManager network;
    const std::unique_ptr<QNetworkReply> reply(
        network.get(QNetworkRequest(QUrl(QStringLiteral("http://127.0.0.1:1/")))));
    const QSignalSpy finished(reply.get(), &QNetworkReply::finished);
    reply->abort();
    QCOMPARE(finished.size(), 1);
    QCOMPARE(reply->error(), QNetworkReply::OperationCanceledError);
    QTest::qWait(30);
    QCOMPARE(finished.size(), 1);
}

void tst_HttpReply::certificateDecidesOverTls_data()
{
    QTest::addColumn<bool>("trusted");
    QTest::newRow("trusted") << true;
    QTest::newRow("unknown") << false;
}

void tst_HttpReply::certificateDecidesOverTls()
{
    QFETCH(bool, trusted);
    const QTemporaryDir folder;
    SecureServer server(folder.path());
    QCOMPARE(server.certificates().size(), 1);
    QNetworkRequest request(server.url());
    if (trusted) {
        QSslConfiguration configuration = request.sslConfiguration();
        configuration.setCaCertificates(server.certificates());
        request.setSslConfiguration(configuration);
    }
    HttpManager network;
    const std::unique_ptr<QNetworkReply> reply(network.get(request));
    QTRY_VERIFY(reply->isFinished());
    QCOMPARE(reply->error(), trusted ? QNetworkReply::NoError : QNetworkReply::SslHandshakeFailedError);
    QCOMPARE(reply->readAll(), trusted ? QByteArray("secret") : QByteArray());
}

void tst_HttpReply::hostThatIsNoneIsAnError()
{
    HttpManager network;
    const std::unique_ptr<QNetworkReply> reply(
        network.get(QNetworkRequest(QUrl(QStringLiteral("http://host.invalid/")))));
    QTRY_VERIFY_WITH_TIMEOUT(reply->isFinished(), 30000);
    QCOMPARE(reply->error(), QNetworkReply::HostNotFoundError);
}

void tst_HttpReply::anHttpProxyIsAskedInThePlaceOfTheServer_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QByteArray>("credentials");
    QTest::newRow("without a user") << QString() << QByteArray();
    QTest::newRow("with a user") << QStringLiteral("me")
                                 << QByteArray("Basic " + QByteArray("me:secret").toBase64());
}

void tst_HttpReply::anHttpProxyIsAskedInThePlaceOfTheServer()
{
    QFETCH(QString, user);
    QFETCH(QByteArray, credentials);
    HttpServer proxy;
    proxy.setAnswer("http://library.invalid:8080/maps", "through the proxy");
    const QUrl place(proxy.url("/"));
    QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, place.host(), quint16(place.port()), user,
                                        user.isEmpty() ? QString() : QStringLiteral("secret")});
    HttpManager network;
    const std::unique_ptr<QNetworkReply> reply(
        network.get(QNetworkRequest(QUrl(QStringLiteral("http://library.invalid:8080/maps?v=1#part")))));
    QTRY_VERIFY(reply->isFinished());
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    QCOMPARE(reply->readAll(), QByteArray("through the proxy"));
    QCOMPARE(proxy.requests().size(), 1);
    const HttpRequest &request = proxy.requests().constFirst();
    QCOMPARE(request.method, QByteArray("GET"));
    QCOMPARE(request.target, QByteArray("http://library.invalid:8080/maps?v=1"));
    QCOMPARE(request.header("Host"), QByteArray("library.invalid:8080"));
    QCOMPARE(request.header("Proxy-Authorization"), credentials);
}

QTEST_GUILESS_MAIN(tst_HttpReply)
#include "tst_HttpReply.moc"
