#include "net/QDownloader.h"
#include "tests/support/disk/FullDisk.h"
#include "tests/support/http/HttpServer.h"
#include "tests/support/main/Main.h"

#include <QElapsedTimer>
#include <QFile>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace
{

constexpr int shortStall = 300; // ms
#ifdef VELTRIX_ADDRESS_SANITIZER
constexpr qint64 allowedGrowth = 320LL * 1024 * 1024; // the sanitizer keeps 256 MiB of what has been freed
#else
constexpr qint64 allowedGrowth = 32LL * 1024 * 1024;
#endif
constexpr qint64 gigabyte = qint64(1024) * 1024 * 1024;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

qint64 residentBytes()
{
    QFile status(QStringLiteral("/proc/self/statm"));
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    return status.readAll().split(' ').value(1).toLongLong() * 4096;
}

void expectWarning(const char *pattern)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromLatin1(pattern)));
}

} // namespace

class tst_QDownloader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void wholeFileArrives();
    void progressIsAFraction();
    void unknownLengthGivesNegativeProgress();
    void unknownLength_data();
    void unknownLength();
    void existingFileIsEmptiedAtOnce();
    void emptyBodyIsSuccess();
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
    void cancelBeforeAnyData();
    void cancelHalfWayThroughAGigabyteIsBoundedInMemory();
    void cancelWithoutADownloadDoesNothing();
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
    void createNewIsForThisUserAlone();
    void usedAgainReportsEachEndOnce();
    void startedFromWithinTheReport();
    void startedWhileAnotherRuns();
    void goneWhileItRuns();

private:
    QString path(const char *name) const { return m_dir->filePath(QString::fromLatin1(name)); }
    void download() { m_downloader->download(m_server->url("/file"), path("file")); }
    // What the next report of an end says; nothing when there is none.
    QVariant outcome() { return m_finished->wait() ? m_finished->last().first() : QVariant(); }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<QDownloader> m_downloader;
    std::unique_ptr<QSignalSpy> m_finished;
};

void tst_QDownloader::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_server = std::make_unique<HttpServer>();
    m_downloader = std::make_unique<QDownloader>();
    m_finished = std::make_unique<QSignalSpy>(m_downloader.get(), &QDownloader::dowloadFinished);
}

void tst_QDownloader::wholeFileArrives()
{
    HttpAnswer answer;
    answer.generatedSize = 3'000'001;
    m_server->setAnswer("/file", answer);
    QVERIFY(!m_downloader->isRunning());
    download();
    QVERIFY(m_downloader->isRunning());
    QCOMPARE(outcome(), QVariant(true));
    QCOMPARE(m_finished->size(), 1);
    QVERIFY(!m_downloader->isRunning());
    QVERIFY(contentOf(path("file")) == HttpServer::generated(0, answer.generatedSize));
    QCOMPARE(m_server->requests().first().method, QByteArray("GET"));
    QCOMPARE(m_server->requests().first().target, QByteArray("/file"));
}

void tst_QDownloader::progressIsAFraction()
{
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.pieceSize = 100;
    answer.pause = 60;
    m_server->setAnswer("/file", answer);
    QSignalSpy progress(m_downloader.get(), &QDownloader::downloadProgress);
    download();
    QVERIFY(m_finished->wait());
    QVERIFY(progress.size() > 2);
    float last = 0;
    for (const QList<QVariant> &each : qAsConst(progress)) {
        const float value = each.first().toFloat();
        QVERIFY2(value >= last && value <= 1.0F, qPrintable(QString::number(double(value))));
        last = value;
    }
    QCOMPARE(last, 1.0F);
    QVERIFY(progress.first().first().toFloat() < 0.5F);
}

void tst_QDownloader::unknownLengthGivesNegativeProgress()
{
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.length = HttpAnswer::Length::Unknown;
    answer.pieceSize = 500;
    answer.pause = 120;
    m_server->setAnswer("/file", answer);
    QSignalSpy progress(m_downloader.get(), &QDownloader::downloadProgress);
    download();
    QCOMPARE(outcome(), QVariant(true));
    QVERIFY(!progress.isEmpty());
    QCOMPARE(progress.first().first().toFloat(), -1000.0F); // 1000 bytes of -1
    QCOMPARE(progress.last().first().toFloat(), 1.0F);      // the end is known when it is there
}

void tst_QDownloader::unknownLength_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("ends with the connection") << int(HttpAnswer::Length::Unknown);
    QTest::newRow("chunked") << int(HttpAnswer::Length::Chunked);
}

void tst_QDownloader::unknownLength()
{
    QFETCH(int, length);
    HttpAnswer answer;
    answer.generatedSize = 500'000;
    answer.length = HttpAnswer::Length(length);
    m_server->setAnswer("/file", answer);
    download();
    QCOMPARE(outcome(), QVariant(true));
    QVERIFY(contentOf(path("file")) == HttpServer::generated(0, answer.generatedSize));
}

void tst_QDownloader::existingFileIsEmptiedAtOnce()
{
    QFile file(path("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("old and much longer than the new one");
    file.close();
    m_server->setAnswer("/file", "new");
    download();
    QCOMPARE(contentOf(path("file")), QByteArray());
    QVERIFY(m_finished->wait());
    QCOMPARE(contentOf(path("file")), QByteArray("new"));
}

void tst_QDownloader::emptyBodyIsSuccess()
{
    m_server->setAnswer("/file", "");
    download();
    QCOMPARE(outcome(), QVariant(true));
    QCOMPARE(contentOf(path("file")), QByteArray());
}

void tst_QDownloader::cutOffLeavesThePartialFile_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("at the head") << 0;
    QTest::newRow("a few bytes") << 10;
    QTest::newRow("more than a packet") << 120'000;
    QTest::newRow("all but one byte") << 199'999;
}

void tst_QDownloader::cutOffLeavesThePartialFile()
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

void tst_QDownloader::stallIsFailure_data()
{
    QTest::addColumn<qint64>("after");
    QTest::newRow("without an answer") << qint64(-1);
    QTest::newRow("behind the head") << qint64(0);
    QTest::newRow("in the body") << qint64(1000);
}

void tst_QDownloader::stallIsFailure()
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

void tst_QDownloader::slowServerIsNoStall()
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

void tst_QDownloader::errorStatusIsFailure_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("not found") << 404;
    QTest::newRow("server error") << 500;
    QTest::newRow("unavailable") << 503;
}

void tst_QDownloader::errorStatusIsFailure()
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

void tst_QDownloader::redirectIsFailureAndNotFollowed()
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

void tst_QDownloader::nobodyListensIsFailure()
{
    const QString url = m_server->url("/file");
    m_server.reset();
    expectWarning("refused");
    m_downloader->download(url, path("file"));
    QCOMPARE(outcome(), QVariant(false));
    QCOMPARE(contentOf(path("file")), QByteArray());
}

void tst_QDownloader::addressThatIsNotHttpIsFailure_data()
{
    QTest::addColumn<QString>("url");
    QTest::newRow("local file") << QStringLiteral("file:///etc/hostname");
    QTest::newRow("data") << QStringLiteral("data:text/plain,hello");
    QTest::newRow("empty") << QString();
    QTest::newRow("words") << QStringLiteral("not an address");
}

void tst_QDownloader::addressThatIsNotHttpIsFailure()
{
    QFETCH(QString, url);
    expectWarning("Not an HTTP address");
    expectWarning("Protocol");
    m_downloader->download(url, path("file"));
    QCOMPARE(outcome(), QVariant(false));
    QCOMPARE(m_finished->size(), 1);
    QCOMPARE(contentOf(path("file")), QByteArray());
}

void tst_QDownloader::cancelBeforeAnyData()
{
    HttpAnswer answer;
    answer.silent = true;
    m_server->setAnswer("/file", answer);
    QSignalSpy requested(m_server.get(), &HttpServer::requested);
    download();
    QVERIFY(requested.wait());
    expectWarning("canceled");
    Q_EMIT m_downloader->cancelDownload();
    QTRY_COMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), false);
    QCOMPARE(contentOf(path("file")), QByteArray());
    QTest::qWait(50);
    QCOMPARE(m_finished->size(), 1);
}

void tst_QDownloader::cancelHalfWayThroughAGigabyteIsBoundedInMemory()
{
    HttpAnswer answer;
    answer.generatedSize = gigabyte;
    answer.pieceSize = 128LL * 1024;
    m_server->setAnswer("/file", answer);
    const qint64 before = residentBytes();
    qint64 most = before;
    bool cancelled = false;
    connect(m_downloader.get(), &QDownloader::downloadProgress, m_downloader.get(), [&](float progress) {
        most = qMax(most, residentBytes());
        if (progress > 0.5F && !cancelled) {
            cancelled = true;
            expectWarning("canceled");
            Q_EMIT m_downloader->cancelDownload();
        }
    });
    // A sink that keeps nothing: the disk of the machine has no part in this.
    m_downloader->download(m_server->url("/file"), QStringLiteral("/dev/null"));
    QVERIFY(m_finished->wait(60000));
    QCOMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), false);
    QVERIFY(m_server->bytesSent() >= gigabyte / 2);
    QVERIFY(m_server->bytesSent() < gigabyte);
    const qint64 grown = most - before;
    QVERIFY2(grown < allowedGrowth, qPrintable(QString::number(grown)));
}

void tst_QDownloader::cancelWithoutADownloadDoesNothing()
{
    Q_EMIT m_downloader->cancelDownload();
    m_server->setAnswer("/file", "x");
    download();
    QVERIFY(m_finished->wait());
    Q_EMIT m_downloader->cancelDownload();
    QTest::qWait(20);
    QCOMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), true);
}

void tst_QDownloader::diskFullIsFailure()
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

void tst_QDownloader::deviceFullIsFailure()
{
    m_server->setAnswer("/file", "a few bytes");
    expectWarning("No space left");
    m_downloader->download(m_server->url("/file"), QStringLiteral("/dev/full"));
    QCOMPARE(outcome(), QVariant(false));
}

void tst_QDownloader::missingFolderIsFailure_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("with a body") << QByteArray("body");
    QTest::newRow("with an empty body") << QByteArray();
}

void tst_QDownloader::missingFolderIsFailure()
{
    QFETCH(QByteArray, body);
    m_server->setAnswer("/file", body);
    expectWarning("No such file or directory");
    m_downloader->download(m_server->url("/file"), path("missing/file"));
    QCOMPARE(outcome(), QVariant(false));
    QCOMPARE(m_finished->size(), 1);
    QVERIFY(!QFile::exists(path("missing")));
}

void tst_QDownloader::tooLargeIsFailure()
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

void tst_QDownloader::endThatHasToBeMarkedIsFailureWithTheHead()
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

void tst_QDownloader::endThatHasToBeMarkedMayBeByChunks()
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

void tst_QDownloader::announcedSizeThatIsTooLargeIsFailureWithTheHead()
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

void tst_QDownloader::drippingIsBoundedAsAWhole()
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

void tst_QDownloader::createNewRefusesALink()
{
    QVERIFY(QFile::link(path("target"), path("file")));
    m_server->setAnswer("/file", "body");
    m_downloader->setCreateNew(true);
    expectWarning("exists");
    download();
    QCOMPARE(outcome(), QVariant(false));
    QVERIFY(!QFile::exists(path("target")));
}

void tst_QDownloader::createNewIsForThisUserAlone()
{
    m_server->setAnswer("/file", "body");
    m_downloader->setCreateNew(true);
    download();
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QCOMPARE(QFile(path("file")).permissions() & (others | QFile::ExeOwner), QFile::Permissions());
    QVERIFY(m_finished->wait());
    QCOMPARE(QFile(path("file")).permissions() & (others | QFile::ExeOwner), QFile::Permissions());
    QCOMPARE(contentOf(path("file")), QByteArray("body"));
}

void tst_QDownloader::usedAgainReportsEachEndOnce()
{
    m_server->setAnswer("/file", "body");
    for (int i = 1; i <= 3; ++i) {
        download();
        QVERIFY(m_finished->wait());
        QTest::qWait(20);
        QCOMPARE(m_finished->size(), i);
    }
}

void tst_QDownloader::startedFromWithinTheReport()
{
    m_server->setAnswer("/first", "first");
    m_server->setAnswer("/second", "second");
    connect(m_downloader.get(), &QDownloader::dowloadFinished, m_downloader.get(), [&] {
        if (!QFile::exists(path("second"))) {
            m_downloader->download(m_server->url("/second"), path("second"));
        }
    });
    m_downloader->download(m_server->url("/first"), path("first"));
    QTRY_COMPARE(m_finished->size(), 2);
    QCOMPARE(m_finished->at(0).first().toBool(), true);
    QCOMPARE(m_finished->at(1).first().toBool(), true);
    QCOMPARE(contentOf(path("first")), QByteArray("first"));
    QCOMPARE(contentOf(path("second")), QByteArray("second"));
}

void tst_QDownloader::startedWhileAnotherRuns()
{
    HttpAnswer answer;
    answer.generatedSize = 5000;
    answer.stallAt = 1000;
    m_server->setAnswer("/first", answer);
    m_server->setAnswer("/second", "second");
    m_downloader->download(m_server->url("/first"), path("file"));
    QTRY_COMPARE(QFile(path("file")).size(), 1000);
    m_downloader->download(m_server->url("/second"), path("file"));
    QVERIFY(m_finished->wait());
    QTest::qWait(50);
    QCOMPARE(m_finished->size(), 1);
    QCOMPARE(m_finished->first().first().toBool(), true);
    QCOMPARE(contentOf(path("file")), QByteArray("second"));
}

void tst_QDownloader::goneWhileItRuns()
{
    HttpAnswer answer;
    answer.generatedSize = 5000;
    answer.stallAt = 1000;
    m_server->setAnswer("/file", answer);
    download();
    QTRY_COMPARE(QFile(path("file")).size(), 1000);
    m_downloader.reset();
    QTest::qWait(20);
    QCOMPARE(m_finished->size(), 0);
    QCOMPARE(QFile(path("file")).size(), 1000);
}

QTEST_GUILESS_MAIN(tst_QDownloader)
#include "tst_QDownloader.moc"
