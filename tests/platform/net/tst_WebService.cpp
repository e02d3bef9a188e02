#include "net/HttpManager.h"
#include "net/WebService.h"
#include "tests/support/http/HttpServer.h"
#include "tests/support/main/Main.h"

#include <QAbstractEventDispatcher>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

class tst_WebService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { qunsetenv("VELTRIX_API_URL"); }
    void cleanup() { qunsetenv("VELTRIX_API_URL"); }
    void addressIsReservedByDefault();
    void environmentWins_data();
    void environmentWins();
    void environmentThatIsNoAddressIsIgnored_data();
    void environmentThatIsNoAddressIsIgnored();
    void queryNamesItsCall();
    void answerOfTheLargestSizeIsRead();
    void largerAnswerCountsAsNone_data();
    void largerAnswerCountsAsNone();
    void answerThatDoesNotEndCountsAsNone_data();
    void answerThatDoesNotEndCountsAsNone();
    void nothingWaitsForADeadlineOnceTheAnswerIsGone();

private:
    std::unique_ptr<QNetworkReply> get(const HttpAnswer &answer, int deadline);

    HttpServer m_server;
    HttpManager m_network;
};

void tst_WebService::addressIsReservedByDefault()
{
    QCOMPARE(WebService::baseUrl(), QStringLiteral("http://api.veltrix.invalid/api/"));
}

void tst_WebService::environmentWins_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("as it is") << QByteArray("http://127.0.0.1:81/api/")
                              << QStringLiteral("http://127.0.0.1:81/api/");
    QTest::newRow("slash added") << QByteArray("https://example.org/api")
                                 << QStringLiteral("https://example.org/api/");
}

void tst_WebService::environmentWins()
{
    QFETCH(QByteArray, value);
    QFETCH(QString, expected);
    qputenv("VELTRIX_API_URL", value);
    QCOMPARE(WebService::baseUrl(), expected);
}

void tst_WebService::environmentThatIsNoAddressIsIgnored_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("file") << QByteArray("file:///etc/");
    QTest::newRow("words") << QByteArray("somewhere");
    QTest::newRow("no host") << QByteArray("http:///api/");
}

void tst_WebService::environmentThatIsNoAddressIsIgnored()
{
    QFETCH(QByteArray, value);
    qputenv("VELTRIX_API_URL", value);
    QTest::ignoreMessage(QtWarningMsg, ("VELTRIX_API_URL is not a web address: " + value).constData());
    QCOMPARE(WebService::baseUrl(), QStringLiteral("http://api.veltrix.invalid/api/"));
}

void tst_WebService::queryNamesItsCall()
{
    QCOMPARE(WebService::query(QStringLiteral("http://h/api/"), QStringLiteral("zrversion")).toEncoded(),
             QByteArray("http://h/api/?call=zrversion"));
}

std::unique_ptr<QNetworkReply> tst_WebService::get(const HttpAnswer &answer, int deadline)
{
    m_server.setAnswer("/", answer);
    std::unique_ptr<QNetworkReply> reply(m_network.get(QNetworkRequest(QUrl(m_server.url("/")))));
    WebService::limit(reply.get(), deadline);
    QSignalSpy finished(reply.get(), &QNetworkReply::finished);
    finished.wait(20000);
    return reply;
}

void tst_WebService::answerOfTheLargestSizeIsRead()
{
    HttpAnswer answer;
    answer.generatedSize = WebService::maximumAnswerSize;
    const auto reply = get(answer, WebService::answerDeadline);
    QVERIFY(WebService::limitOf(reply.get()) == WebService::Limit::None);
    QVERIFY(WebService::body(reply.get()) == HttpServer::generated(0, WebService::maximumAnswerSize));
}

void tst_WebService::largerAnswerCountsAsNone_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<int>("length");
    const qint64 limit = WebService::maximumAnswerSize;
    const qint64 large = 10LL * 1024 * 1024;
    QTest::newRow("by a byte") << limit + 1 << int(HttpAnswer::Length::Given);
    QTest::newRow("by a byte, chunked") << limit + 1 << int(HttpAnswer::Length::Chunked);
    QTest::newRow("10 MB") << large << int(HttpAnswer::Length::Given);
    QTest::newRow("10 MB, chunked") << large << int(HttpAnswer::Length::Chunked);
    QTest::newRow("10 MB, length unknown") << large << int(HttpAnswer::Length::Unknown);
    QTest::newRow("without an end") << (qint64(1) << 40U) << int(HttpAnswer::Length::Unknown);
}

void tst_WebService::largerAnswerCountsAsNone()
{
    QFETCH(qint64, size);
    QFETCH(int, length);
    HttpAnswer answer;
    answer.generatedSize = size;
    answer.length = HttpAnswer::Length(length);
    QTest::ignoreMessage(QtWarningMsg, "The answer of 127.0.0.1 is too long");
    const auto reply = get(answer, WebService::answerDeadline);
    QVERIFY(reply->isFinished());
    QVERIFY(WebService::limitOf(reply.get()) == WebService::Limit::Size);
    QCOMPARE(WebService::body(reply.get()), QByteArray());
}

void tst_WebService::answerThatDoesNotEndCountsAsNone_data()
{
    QTest::addColumn<bool>("silent");
    QTest::addColumn<int>("pause");
    QTest::newRow("nothing comes") << true << 0;
    QTest::newRow("a byte now and then") << false << 20;
}

void tst_WebService::answerThatDoesNotEndCountsAsNone()
{
    QFETCH(bool, silent);
    QFETCH(int, pause);
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.silent = silent;
    answer.pieceSize = 1;
    answer.pause = pause;
    QTest::ignoreMessage(QtWarningMsg, "The answer of 127.0.0.1 does not come to an end");
    const auto reply = get(answer, 200);
    QVERIFY(reply->isFinished());
    QVERIFY(WebService::limitOf(reply.get()) == WebService::Limit::Deadline);
    QCOMPARE(WebService::body(reply.get()), QByteArray());
}

void tst_WebService::nothingWaitsForADeadlineOnceTheAnswerIsGone()
{
    // A timer that nobody owns belongs to the dispatcher, and wakes the program when its time has come.
    const QObject *dispatcher = QAbstractEventDispatcher::instance();
    const int before = dispatcher->children().size();
    HttpAnswer answer;
    answer.generatedSize = 1;
    auto reply = get(answer, WebService::answerDeadline);
    QCOMPARE(WebService::body(reply.get()).size(), 1);
    reply.reset();
    QCOMPARE(dispatcher->children().size(), before);
}

QTEST_GUILESS_MAIN(tst_WebService)
#include "tst_WebService.moc"
