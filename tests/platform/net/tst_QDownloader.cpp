#include "tests/platform/net/DownloadRig.h"
#include "tests/support/main/Main.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

namespace
{

#ifdef VELTRIX_ADDRESS_SANITIZER
constexpr qint64 allowedGrowth = 320LL * 1024 * 1024; // the sanitizer keeps 256 MiB of what has been freed
#else
constexpr qint64 allowedGrowth = 32LL * 1024 * 1024;
#endif

qint64 residentBytes()
{
    QFile status(QStringLiteral("/proc/self/statm"));
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    return status.readAll().split(' ').value(1).toLongLong() * 4096;
}

} // namespace

/// What arrives, what is said of it meanwhile, and how a download is stopped or followed by another.
class tst_QDownloader : public QObject, private DownloadRig
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }

    void wholeFileArrives();
    void progressIsAFraction();
    void unknownLengthGivesNegativeProgress();
    void unknownLength_data();
    void unknownLength();
    void existingFileIsEmptiedAtOnce();
    void emptyBodyIsSuccess();
    void cancelBeforeAnyData();
    void cancelHalfWayThroughAGigabyteIsBoundedInMemory();
    void cancelWithoutADownloadDoesNothing();
    void createNewIsForThisUserAlone();
    void usedAgainReportsEachEndOnce();
    void startedFromWithinTheReport();
    void startedWhileAnotherRuns();
    void goneWhileItRuns();
};

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
