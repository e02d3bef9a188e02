#include "tests/platform/net/FileContent.h"
#include "tests/platform/net/UpdaterRig.h"
#include "tests/platform/net/UpdaterTexts.h"
#include "tests/support/main/Main.h"
#include "tests/support/signing/SigningKey.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

/// From the beginning of a download to an installer that waits, or does not.
class tst_UpdateDownload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void nothingElseStartsWhileADownloadRuns();
    void nothingElseStartsWhileAnInstallerWaits();
    void questionLeftStandingDoesNotDisturbADownload();
    void progressIsHandedOn();
    void cancelGivesTheDownloadUp();
    void cancelWithoutADownloadDoesNothing();
    void cutOffIsInterruptedAndOfferedAgain();
    void lengthThatIsMissingIsInterrupted();
    void lengthThatIsMissingIsNoticedWithTheHead();
    void installerInChunksIsAccepted();
    void chunksThatAreCutOffAreInterrupted();
    void emptyInstallerIsInterrupted();
    void installerNeedsTheSignatureOfItsKey_data();
    void installerNeedsTheSignatureOfItsKey();
    void withoutAKeyASignatureIsNotLookedAt();
    void whatLiesThereFromBeforeIsNotStarted();
    void installerIsCreatedNew();
    void installerIsExecutableOnlyWhenComplete();
    void installerPlaceOpenToOthersIsRefused();
    void goneWhileItDownloads();

private:
    QString url() const { return m_rig->server.url("/installer"); }
    void stallInstaller();

    std::unique_ptr<UpdaterRig> m_rig;
};

void tst_UpdateDownload::init()
{
    m_rig = std::make_unique<UpdaterRig>();
    m_rig->server.setAnswer("/installer", installerBody);
}

void tst_UpdateDownload::stallInstaller()
{
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.stallAt = 100;
    m_rig->server.setAnswer("/installer", answer);
}

void tst_UpdateDownload::nothingElseStartsWhileADownloadRuns()
{
    stallInstaller();
    m_rig->setOffer("2", "MAN", url());
    m_rig->check();
    QTRY_COMPARE(m_rig->server.requestCount("/installer"), 1);
    for (const char *priority : {"LOW", "MID", "HIGH", "MAN"}) {
        m_rig->setOffer("3", priority, url());
        m_rig->check();
    }
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->updater->onUpdateAllowed();
    QTest::qWait(30);
    QCOMPARE(m_rig->signalsSeen, QStringList());
    QVERIFY(m_rig->prompt->questions.isEmpty());
    QCOMPARE(m_rig->server.requestCount("/installer"), 1);
}

void tst_UpdateDownload::nothingElseStartsWhileAnInstallerWaits()
{
    m_rig->setOffer("2", "LOW", url());
    m_rig->check();
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->updater->onUpdateAllowed();
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    m_rig->signalsSeen.clear();
    for (const char *priority : {"LOW", "MID", "HIGH", "MAN"}) {
        m_rig->setOffer("3", priority, url());
        m_rig->check();
    }
    QTest::qWait(30);
    QCOMPARE(m_rig->signalsSeen, QStringList());
    QVERIFY(m_rig->prompt->questions.isEmpty());
    QCOMPARE(m_rig->server.requestCount("/installer"), 1);
}

void tst_UpdateDownload::questionLeftStandingDoesNotDisturbADownload()
{
    HttpAnswer answer;
    answer.body = installerBody;
    answer.pieceSize = 1;
    answer.pause = 20;
    m_rig->server.setAnswer("/installer", answer);
    m_rig->setOffer("2", "MID", url());
    m_rig->check();
    m_rig->setOffer("2", "MAN", url());
    m_rig->check();
    QVERIFY(m_rig->updater->isDownloading());
    m_rig->prompt->press(1); // the question of before
    QVERIFY(m_rig->updater->isDownloading());
    QCOMPARE(m_rig->signalsSeen, QStringList());
    QTRY_COMPARE(m_rig->prompt->questions.last(), asked(pleaseClose, "OK"));
}

void tst_UpdateDownload::progressIsHandedOn()
{
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.pieceSize = 100;
    answer.pause = 40;
    m_rig->server.setAnswer("/installer", answer);
    m_rig->setOffer("2", "MAN", url());
    m_rig->check();
    QTRY_COMPARE(m_rig->prompt->questions.size(), 1);
    QVERIFY(m_rig->progressReports >= 2);
    QCOMPARE(m_rig->lastProgress, 1.0F);
}

void tst_UpdateDownload::cancelGivesTheDownloadUp()
{
    stallInstaller();
    m_rig->setOffer("2", "LOW", url());
    m_rig->check();
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->updater->onUpdateAllowed();
    QTRY_COMPARE(QFileInfo(m_rig->installer()).size(), 100);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("canceled")));
    m_rig->updater->cancelDownload();
    QTest::qWait(30);
    QCOMPARE(m_rig->signalsSeen, seen({"available 2", "start", "canceled"}));
    QVERIFY(m_rig->prompt->questions.isEmpty());
    QVERIFY(!m_rig->updater->isDownloading());

    // It may be had again.
    m_rig->server.setAnswer("/installer", installerBody);
    QTest::ignoreMessage(QtInfoMsg, "[Updater] onUpdateAllowed");
    m_rig->updater->onUpdateAllowed();
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    QCOMPARE(contentOf(m_rig->installer()), installerBody);
}

void tst_UpdateDownload::cancelWithoutADownloadDoesNothing()
{
    m_rig->updater->cancelDownload();
    QCOMPARE(m_rig->signalsSeen, QStringList());
}

void tst_UpdateDownload::cutOffIsInterruptedAndOfferedAgain()
{
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.breakOffAt = 500;
    m_rig->server.setAnswer("/installer", answer);
    m_rig->setOffer("2", "MAN", url());
    for (int round = 1; round <= 2; ++round) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("closed")));
        m_rig->signalsSeen.clear();
        m_rig->check();
        QVERIFY(m_rig->waitFor(QStringLiteral("interrupted")));
        QCOMPARE(m_rig->prompt->questions.size(), round);
        QCOMPARE(m_rig->prompt->questions.last(), asked(failed, "OK"));
        QVERIFY(!m_rig->updater->isDownloading());
        QCOMPARE(m_rig->server.requestCount("/installer"), round);
    }
    QVERIFY(!QFileInfo(m_rig->installer()).isExecutable());

    // Not even when somebody asks for it.
    m_rig->updater->setInstallOnQuit();
    QTest::ignoreMessage(QtWarningMsg, "[Updater] the installer did not arrive whole and is not started");
    m_rig->updater->aboutToQuit();
}

void tst_UpdateDownload::lengthThatIsMissingIsInterrupted()
{
    HttpAnswer answer;
    answer.body = installerBody;
    answer.length = HttpAnswer::Length::Unknown;
    m_rig->server.setAnswer("/installer", answer);
    m_rig->setOffer("2", "MAN", url());
    QTest::ignoreMessage(QtWarningMsg, "The server did not tell the length of the file");
    m_rig->check();
    QVERIFY(m_rig->waitFor(QStringLiteral("interrupted")));
}

void tst_UpdateDownload::lengthThatIsMissingIsNoticedWithTheHead()
{
    HttpAnswer answer;
    answer.generatedSize = 100'000'000;
    answer.length = HttpAnswer::Length::Unknown;
    m_rig->server.setAnswer("/installer", answer);
    m_rig->setOffer("2", "MAN", url());
    QTest::ignoreMessage(QtWarningMsg, "The server did not tell the length of the file");
    m_rig->check();
    QVERIFY(m_rig->waitFor(QStringLiteral("interrupted")));
    QCOMPARE(contentOf(m_rig->installer()), QByteArray());
    QVERIFY(m_rig->server.bytesSent() < 10'000'000); // what fits between two sockets
}

void tst_UpdateDownload::installerInChunksIsAccepted()
{
    HttpAnswer answer;
    answer.body = installerBody;
    answer.length = HttpAnswer::Length::Chunked;
    answer.pieceSize = 3;
    m_rig->server.setAnswer("/installer", answer);
    m_rig->setOffer("2", "MAN", url());
    m_rig->check();
    QTRY_COMPARE(m_rig->prompt->questions, QList<QStringList>{asked(pleaseClose, "OK")});
    QCOMPARE(contentOf(m_rig->installer()), installerBody);
}

void tst_UpdateDownload::chunksThatAreCutOffAreInterrupted()
{
    HttpAnswer answer;
    answer.body = installerBody;
    answer.length = HttpAnswer::Length::Chunked;
    answer.breakOffAt = installerBody.size(); // only the mark of the end is missing
    m_rig->server.setAnswer("/installer", answer);
    m_rig->setOffer("2", "MAN", url());
    for (int round = 0; round < 30; ++round) {
        QTest::ignoreMessage(QtWarningMsg, "Connection closed within the answer");
        m_rig->signalsSeen.clear();
        m_rig->check();
        QVERIFY(m_rig->waitFor(QStringLiteral("interrupted")));
    }
    QVERIFY(!QFileInfo(m_rig->installer()).isExecutable());
}

void tst_UpdateDownload::emptyInstallerIsInterrupted()
{
    m_rig->server.setAnswer("/installer", "");
    m_rig->setOffer("2", "MAN", url());
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("cannot be used and is deleted: it is empty$")));
    m_rig->check();
    QVERIFY(m_rig->waitFor(QStringLiteral("interrupted")));
}

void tst_UpdateDownload::installerNeedsTheSignatureOfItsKey_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QString>("fault");
    const QByteArray genuine = SigningKey().signFile("installer", "2", installerBody);
    const QString wrong = QStringLiteral("its signature does not verify");
    QTest::newRow("genuine") << genuine << QString();
    QTest::newRow("none") << QByteArray() << QStringLiteral("it is not signed");
    QTest::newRow("garbage") << QByteArray("c2lnbmF0dXJl!") << QStringLiteral("its signature is not one");
    QTest::newRow("another key's") << SigningKey(2).signFile("installer", "2", installerBody) << wrong;
    QTest::newRow("of an older version") << SigningKey().signFile("installer", "1.9", installerBody) << wrong;
    QTest::newRow("a library's") << SigningKey().signFile("library", "2", installerBody) << wrong;
    QTest::newRow("of another installer")
        << SigningKey().signFile("installer", "2", "#!/bin/sh\nexit 1\n") << wrong;
}

void tst_UpdateDownload::installerNeedsTheSignatureOfItsKey()
{
    QFETCH(QByteArray, signature);
    QFETCH(QString, fault);
    ZRUpdater::Setup setup = m_rig->setup();
    setup.signingKey = SigningKey().publicKey();
    m_rig->build(setup);
    m_rig->setOffer("2", "MAN", url(), signature);
    m_rig->check();
    if (fault.isEmpty()) {
        QTRY_COMPARE(m_rig->prompt->questions, QList<QStringList>{asked(pleaseClose, "OK")});
        QCOMPARE(contentOf(m_rig->installer()), installerBody);
        return;
    }
    const QString line = QStringLiteral("[Updater] the installer %1 cannot be used and is deleted: ");
    QTest::ignoreMessage(QtWarningMsg, qPrintable(line.arg(m_rig->installer()) + fault));
    QVERIFY(m_rig->waitFor(QStringLiteral("interrupted")));
    QCOMPARE(m_rig->prompt->questions, QList<QStringList>{asked(failed, "OK")});
    QVERIFY(!QFile::exists(m_rig->installer()));

    m_rig->updater->setInstallOnQuit();
    QTest::ignoreMessage(QtWarningMsg, "[Updater] the installer did not arrive whole and is not started");
    m_rig->updater->aboutToQuit();

    // What comes next may be the maker's again.
    m_rig->setOffer("2", "MAN", url(), SigningKey().signFile("installer", "2", installerBody));
    m_rig->check();
    QTRY_COMPARE(m_rig->prompt->questions.last(), asked(pleaseClose, "OK"));
}

void tst_UpdateDownload::withoutAKeyASignatureIsNotLookedAt()
{
    m_rig->setOffer("2", "MAN", url(), "nonsense");
    m_rig->check();
    QTRY_COMPARE(m_rig->prompt->questions, QList<QStringList>{asked(pleaseClose, "OK")});
}

void tst_UpdateDownload::whatLiesThereFromBeforeIsNotStarted()
{
    QVERIFY(QDir(m_rig->dir.path()).mkdir(QStringLiteral("update")));
    QFile file(m_rig->installer());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(installerBody);
    file.close();
    m_rig->updater->setInstallOnQuit();
    QTest::ignoreMessage(QtWarningMsg, "[Updater] the installer did not arrive whole and is not started");
    m_rig->updater->aboutToQuit();
}

void tst_UpdateDownload::installerIsCreatedNew()
{
    const QString bystander = m_rig->dir.filePath(QStringLiteral("bystander"));
    QFile file(bystander);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("precious");
    file.close();
    QVERIFY(QDir(m_rig->dir.path()).mkdir(QStringLiteral("update")));
    QFile(m_rig->dir.filePath(QStringLiteral("update")))
        .setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QVERIFY(QFile::link(bystander, m_rig->installer()));
    m_rig->setOffer("2", "MAN", url());
    m_rig->check();
    QTRY_COMPARE(m_rig->prompt->questions.size(), 1);
    QCOMPARE(contentOf(bystander), QByteArray("precious"));
    QVERIFY(!QFileInfo(m_rig->installer()).isSymLink());
    QCOMPARE(contentOf(m_rig->installer()), installerBody);
}

void tst_UpdateDownload::installerIsExecutableOnlyWhenComplete()
{
    HttpAnswer answer;
    answer.body = installerBody;
    answer.pieceSize = 4;
    answer.pause = 20;
    m_rig->server.setAnswer("/installer", answer);
    m_rig->setOffer("2", "MAN", url());
    m_rig->check();
    QTRY_VERIFY(QFileInfo(m_rig->installer()).size() > 0);
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QCOMPARE(QFile(m_rig->installer()).permissions() & (others | QFile::ExeOwner), QFile::Permissions());
    QTRY_COMPARE(m_rig->prompt->questions.size(), 1);
    QCOMPARE(QFile(m_rig->installer()).permissions() & others, QFile::Permissions());
    QVERIFY(QFile(m_rig->installer()).permissions() & QFile::ExeOwner);
    QCOMPARE(QFile(QFileInfo(m_rig->installer()).path()).permissions() & others, QFile::Permissions());
}

void tst_UpdateDownload::installerPlaceOpenToOthersIsRefused()
{
    const QString place = QFileInfo(m_rig->installer()).path();
    QVERIFY(QDir().mkpath(place));
    QFile(place).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::WriteOther |
                                QFile::ReadOther | QFile::ExeOther);
    m_rig->setOffer("2", "MAN", url());
    QTest::ignoreMessage(
        QtWarningMsg,
        qPrintable(QStringLiteral("[Updater] no safe place for the installer: ") + m_rig->installer()));
    m_rig->check();
    QVERIFY(m_rig->waitFor(QStringLiteral("interrupted")));
    QCOMPARE(m_rig->server.requestCount("/installer"), 0);
    QVERIFY(!QFile::exists(m_rig->installer()));
}

void tst_UpdateDownload::goneWhileItDownloads()
{
    stallInstaller();
    m_rig->setOffer("2", "MAN", url());
    m_rig->check();
    QTRY_COMPARE(QFileInfo(m_rig->installer()).size(), 100);
    m_rig->updater->startCheckingPeriodically();
    m_rig->updater.reset();
    QTest::qWait(30);
    QCOMPARE(m_rig->signalsSeen, QStringList());
}

QTEST_GUILESS_MAIN(tst_UpdateDownload)
#include "tst_UpdateDownload.moc"
