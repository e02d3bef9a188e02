#include "StepsInFolder.h"
#include "mapping/FileHistory.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

/// Steps and the files' history: what is overwritten goes there, and comes back from there by a step.
class tst_MappingStepsHistory : public QObject, private StepsInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void whatIsOverwrittenGoesToTheHistory();
    void whatTakingBackOverwritesGoesToTheHistory();
    void anEarlierVersionIsBroughtBackAndTakenBack();
    void anEarlierWorkingCopyIsInUseAtOnce();
    void whatWasNotKeptIsNotLostByRestoring();
    void aVersionThatIsNoneChangesNothing();
};

void tst_MappingStepsHistory::whatIsOverwrittenGoesToTheHistory()
{
    writeFile(path("custom.xml"), byHand);
    writeFile(path("current.xml"), "<ZR/>");
    load();
    capture(3, 65);
    QVERIFY(m_session->saveAs(QStringLiteral("Four")));
    QVERIFY(m_session->remove(QStringLiteral("Four"))); // within the minute
    const auto customs = FileHistory::versions(path("custom.xml"));
    const auto currents = FileHistory::versions(path("current.xml"));
    QCOMPARE(customs.size(), 1);
    QCOMPARE(contentOf(customs.constFirst().path), byHand);
    QCOMPARE(currents.size(), 1);
    QCOMPARE(contentOf(currents.constFirst().path), QByteArray("<ZR/>"));

    // Without a history the save is done all the same.
    QVERIFY(QDir(path("history")).removeRecursively());
    writeFile(path("history"), "in the way");
    LogCapture log;
    QVERIFY(m_session->saveAs(QStringLiteral("Five")));
    QCOMPARE(log.linesHolding(QStringLiteral("No earlier version")).size(), 1);
    QVERIFY(names().contains(QStringLiteral("Five")));
}

void tst_MappingStepsHistory::whatTakingBackOverwritesGoesToTheHistory()
{
    load();
    QVERIFY(m_session->saveAs(QStringLiteral("One")));
    const QByteArray saved = custom();
    QVERIFY(m_session->takeBack());
    QVERIFY(!QFile::exists(path("custom.xml")));
    const auto versions = FileHistory::versions(path("custom.xml"));
    QCOMPARE(versions.size(), 1);
    QCOMPARE(contentOf(versions.constFirst().path), saved);
}

void tst_MappingStepsHistory::anEarlierVersionIsBroughtBackAndTakenBack()
{
    writeFile(path("custom.xml"), byHand);
    load();
    QVERIFY(m_session->remove(QStringLiteral("One")));
    const QByteArray without = custom();
    const QString version = FileHistory::versions(path("custom.xml")).constFirst().path;
    QVERIFY(m_session->restore(version));
    QCOMPARE(custom(), byHand);
    QCOMPARE(names().size(), 4);
    QCOMPARE(contentOf(FileHistory::versions(path("custom.xml")).constFirst().path), without);
    QVERIFY(m_session->takeBack());
    QCOMPARE(custom(), without);
    QCOMPARE(names().size(), 3);
}

void tst_MappingStepsHistory::anEarlierWorkingCopyIsInUseAtOnce()
{
    load();
    capture(3, 65);
    capture(3, 66);
    const QByteArray present = workingCopy();
    QVERIFY(FileHistory::noteAnyway(path("current.xml")));
    capture(3, 67);
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QVERIFY(m_session->restore(FileHistory::versions(path("current.xml")).constFirst().path));
    QCOMPARE(inUse(), 66);
    QCOMPARE(replaced.size(), 1);
    QVERIFY(m_session->isKept());
    QCOMPARE(workingCopy(), present);
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), 67);
    QVERIFY(m_session->isKept());
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), 66);
}

void tst_MappingStepsHistory::whatWasNotKeptIsNotLostByRestoring()
{
    load();
    capture(3, 65);
    QVERIFY(FileHistory::noteAnyway(path("current.xml")));
    const QString version = FileHistory::versions(path("current.xml")).constFirst().path;
    const shortCut kept = m_session->action(3, Layer::Normal);
    shortCut edited = kept;
    edited.key1 = 66;
    m_session->assign(3, Layer::Normal, edited);
    QSignalSpy stepped(m_session.get(), &MappingSession::stepped);
    QSignalSpy keptChanged(m_session.get(), &MappingSession::keptChanged);
    QVERIFY(m_session->restore(version)); // what the file holds anyway
    QCOMPARE(keptChanged.size(), 1);
    QCOMPARE(inUse(), 65);
    QCOMPARE(stepped.size(), 1);
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), 66);
    QVERIFY(!m_session->isKept());
    QVERIFY(m_session->redo());
    QCOMPARE(inUse(), 65);
    QVERIFY(m_session->restore(version)); // nothing changes at all
    QCOMPARE(stepped.size(), 3);
}

void tst_MappingStepsHistory::aVersionThatIsNoneChangesNothing()
{
    writeFile(path("custom.xml"), byHand);
    load();
    QVERIFY(QDir().mkdir(path("copy")));
    writeFile(path("copy/custom.xml"), "<ZR><MAPPING");
    writeFile(path("copy/current.xml"), "<ZR/>");
    QSignalSpy generalNeeded(m_session.get(), &MappingSession::generalNeeded);
    QVERIFY(!m_session->restore(path("copy/current.xml")));
    QVERIFY(!m_session->restore(QStringLiteral("nonsense")));
    QCOMPARE(generalNeeded.size(), 0);
    QVERIFY(!m_session->restore(path("copy/custom.xml")));
    QVERIFY(!m_session->restore(path("copy/mine.xml")));
    QCOMPARE(custom(), byHand);
    QCOMPARE(names().size(), 4);
    QVERIFY(!m_session->canTakeBack());
}

QTEST_GUILESS_MAIN(tst_MappingStepsHistory)
#include "tst_MappingStepsHistory.moc"
