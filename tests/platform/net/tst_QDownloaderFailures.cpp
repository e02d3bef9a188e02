#include "tests/platform/net/DownloadRig.h"
#include "tests/support/disk/FullDisk.h"
#include "tests/support/main/Main.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>

namespace
{

constexpr int shortStall = 300; // ms

} // namespace

/// What a download does not put up with, and what it leaves then.
class tst_QDownloaderFailures : public QObject, private DownloadRig
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }

    void cutOffLeavesThePartialFile_data();
    void cutOffLeavesThePartialFile();
    void stallIsFailure_data();
    void stallIsFailure();
    void slowServerIsNoStall();
    void errorStatusIsFailure_data();
    void errorStatusIsFailure();
    void redirectIsFailureAndNotFollowed();
    void nobodyListensIsFailure();
    void addressThatIsNotHttpIsFailure_data();
    void addressThatIsNotHttpIsFailure();
    void diskFullIsFailure();
    void deviceFullIsFailure();
    void missingFolderIsFailure_data();
    void missingFolderIsFailure();
    void tooLargeIsFailure();
    void endThatHasToBeMarkedIsFailureWithTheHead();
    void endThatHasToBeMarkedMayBeByChunks();
    void announcedSizeThatIsTooLargeIsFailureWithTheHead();
    void drippingIsBoundedAsAWhole();
    void createNewRefusesALink();
};

void tst_QDownloaderFailures::cutOffLeavesThePartialFile_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("at the head") << 0;
    QTest::newRow("a few bytes") << 10;
    QTest::newRow("more than a packet") << 120'000;
    QTest::newRow("all but one byte") << 199'999;
}

void tst_QDownloaderFailures::cutOffLeavesThePartialFile()
{
    QFETCH(int, size);
    HttpAnswer answer;
    answer.generatedSize = 200'000;
    answer.breakOffAt = size;
    m_server->setAnswer("/file", answer);
    expectWarning("closed");
    download();
    QCOMPARE(outcome(), QVariant(false));
    QCOMPARE(m_finished->size(), 1);
    QVERIFY(contentOf(path("file")) == HttpServer::generated(0, size));
}

void tst_QDownloaderFailures::stallIsFailure_data()
{
    QTest::addColumn<qint64>("after");
    QTest::newRow("without an answer") << qint64(-1);
    QTest::newRow("behind the head") << qint64(0);
    QTest::newRow("in the body") << qint64(1000);
}

void tst_QDownloaderFailures::stallIsFailure()
{
    QFETCH(qint64, after);
    HttpAnswer answer;
    answer.generatedSize = 5000;
    answer.silent = after < 0;
    answer.stallAt = after;
    m_server->setAnswer("/file", answer);
    m_downloader->setStallTimeout(shortStall);
    expectWarning("canceled");
    download();
    QCOMPARE(outcome(), QVariant(false));
    QCOMPARE(QFile(path("file")).size(), qMax(qint64(0), after));
}

void tst_QDownloaderFailures::slowServerIsNoStall()
{
    HttpAnswer answer;
    answer.generatedSize = 2000;
    answer.pieceSize = 100;
    answer.pause = 50; // a second in all, several times the stall timeout
    m_server->setAnswer("/file", answer);
    m_downloader->setStallTimeout(shortStall);
    download();
    QCOMPARE(outcome(), QVariant(true));
    QVERIFY(contentOf(path("file")) == HttpServer::generated(0, 2000));
}

void tst_QDownloaderFailures::errorStatusIsFailure_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("not found") << 404;
    QTest::newRow("server error") << 500;
    QTest::newRow("unavailable") << 503;
}

void tst_QDownloaderFailures::errorStatusIsFailure()
{
    QFETCH(int, status);
    HttpAnswer answer;
    answer.status = status;
    answer.body = "<html>no</html>";
    m_server->setAnswer("/file", answer);
    expectWarning("server replied");
    download();
    QCOMPARE(outcome(), QVariant(false));
}

void tst_QDownloaderFailures::redirectIsFailureAndNotFollowed()
{
    HttpAnswer answer;
    answer.status = 302;
    answer.headers = {{"Location", m_server->url("/elsewhere").toLatin1()}};
    m_server->setAnswer("/file", answer);
    m_server->setAnswer("/elsewhere", "found");
    expectWarning("status 302");
    download();
    QCOMPARE(outcome(), QVariant(false));
    QTest::qWait(50);
    QCOMPARE(m_server->requestCount("/elsewhere"), 0);
}

void tst_QDownloaderFailures::nobodyListensIsFailure()
{
    const QString url = m_server->url("/file");
    m_server.reset();
    expectWarning("refused");
    m_downloader->download(url, path("file"));
    QCOMPARE(outcome(), QVariant(false));
    QCOMPARE(contentOf(path("file")), QByteArray());
}

void tst_QDownloaderFailures::addressThatIsNotHttpIsFailure_data()
{
    QTest::addColumn<QString>("url");
    QTest::newRow("local file") << QStringLiteral("file:///etc/hostname");
    QTest::newRow("data") << QStringLiteral("data:text/plain,hello");
    QTest::newRow("empty") << QString();
    QTest::newRow("words") << QStringLiteral("not an address");
}

void tst_QDownloaderFailures::addressThatIsNotHttpIsFailure()
{
    QFETCH(QString, url);
    expectWarning("Not an HTTP address");
    expectWarning("Protocol");
    m_downloader->download(url, path("file"));
    QCOMPARE(outcome(), QVariant(false));
    QCOMPARE(m_finished->size(), 1);
    QCOMPARE(contentOf(path("file")), QByteArray());
}

void tst_QDownloaderFailures::diskFullIsFailure()
{
    constexpr rlim_t limit = 100'000;
    HttpAnswer answer;
    answer.generatedSize = 1'000'000;
    m_server->setAnswer("/file", answer);
    expectWarning("File too large|written whole");
    {
        const FullDisk full(limit);
        download();
        QVERIFY(m_finished->wait());
    }
    QCOMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), false);
    QVERIFY(QFile(path("file")).size() <= qint64(limit));
}

void tst_QDownloaderFailures::deviceFullIsFailure()
{
    m_server->setAnswer("/file", "a few bytes");
    expectWarning("No space left");
    m_downloader->download(m_server->url("/file"), QStringLiteral("/dev/full"));
    QCOMPARE(outcome(), QVariant(false));
}

void tst_QDownloaderFailures::missingFolderIsFailure_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("with a body") << QByteArray("body");
    QTest::newRow("with an empty body") << QByteArray();
}

void tst_QDownloaderFailures::missingFolderIsFailure()
{
    QFETCH(QByteArray, body);
    m_server->setAnswer("/file", body);
    expectWarning("No such file or directory");
    m_downloader->download(m_server->url("/file"), path("missing/file"));
    QCOMPARE(outcome(), QVariant(false));
    QCOMPARE(m_finished->size(), 1);
    QVERIFY(!QFile::exists(path("missing")));
}

void tst_QDownloaderFailures::tooLargeIsFailure()
{
    HttpAnswer answer;
    answer.generatedSize = 100'000;
    m_server->setAnswer("/file", answer);
    m_downloader->setMaximumSize(99'999);
    expectWarning("larger than 99999 bytes");
    download();
    QCOMPARE(outcome(), QVariant(false));
    QVERIFY(QFile(path("file")).size() <= 99'999);

    m_downloader->setMaximumSize(100'000);
    download();
    QCOMPARE(outcome(), QVariant(true));
}

void tst_QDownloaderFailures::endThatHasToBeMarkedIsFailureWithTheHead()
{
    HttpAnswer answer;
    answer.generatedSize = gigabyte;
    answer.length = HttpAnswer::Length::Unknown;
    m_server->setAnswer("/file", answer);
    m_downloader->setMarkedEndRequired(true);
    expectWarning("did not tell the length");
    download();
    QCOMPARE(outcome(), QVariant(false));
    QCOMPARE(contentOf(path("file")), QByteArray());
}

void tst_QDownloaderFailures::endThatHasToBeMarkedMayBeByChunks()
{
    HttpAnswer answer;
    answer.generatedSize = 100'000;
    answer.length = HttpAnswer::Length::Chunked;
    m_server->setAnswer("/file", answer);
    m_downloader->setMarkedEndRequired(true);
    download();
    QCOMPARE(outcome(), QVariant(true));
    QVERIFY(contentOf(path("file")) == HttpServer::generated(0, answer.generatedSize));
}

void tst_QDownloaderFailures::announcedSizeThatIsTooLargeIsFailureWithTheHead()
{
    HttpAnswer answer;
    answer.generatedSize = gigabyte;
    answer.stallAt = 0;
    m_server->setAnswer("/file", answer);
    m_downloader->setMaximumSize(1000);
    expectWarning("larger than 1000 bytes");
    download();
    QCOMPARE(outcome(), QVariant(false));
}

void tst_QDownloaderFailures::drippingIsBoundedAsAWhole()
{
    HttpAnswer answer;
    answer.generatedSize = 100'000;
    answer.pieceSize = 1;
    answer.pause = 20;
    m_server->setAnswer("/file", answer);
    m_downloader->setStallTimeout(5000);
    m_downloader->setDeadline(400);
    expectWarning("does not come to an end");
    QElapsedTimer time;
    time.start();
    download();
    QCOMPARE(outcome(), QVariant(false));
    QVERIFY(time.elapsed() < 3000);
}

void tst_QDownloaderFailures::createNewRefusesALink()
{
    QVERIFY(QFile::link(path("target"), path("file")));
    m_server->setAnswer("/file", "body");
    m_downloader->setCreateNew(true);
    expectWarning("exists");
    download();
    QCOMPARE(outcome(), QVariant(false));
    QVERIFY(!QFile::exists(path("target")));
}

QTEST_GUILESS_MAIN(tst_QDownloaderFailures)
#include "tst_QDownloaderFailures.moc"
