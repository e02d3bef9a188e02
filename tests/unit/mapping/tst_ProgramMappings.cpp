#include "ProgramsInFolder.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

/// The mappings of programs beside the general one: nothing of any is lost, whatever the order of things.
class tst_ProgramMappings : public QObject, private ProgramsInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QVERIFY(beginWithOne()); }
    void cleanup() { end(); }

    void withoutAnyNothingIsWritten();
    void aProgramBeginsWithACopyOfWhatIsInUse();
    void eachKeepsItsOwnChanges();
    void unkeptChangesOfTheGeneralOneSurvive();
    void theKnobsFieldsComeBack();
    void aMappingThatIsSetBelongsToTheProgram();
    void keepingWritesWhatIsInUse();
    void stepsBelongToTheirMapping();
    void whatIsKeptWithAStepIsKeptWhereItBelongs();
    void anEarlierWorkingCopyComesBackForAllPrograms();
    void anEarlierWorkingCopyThatDoesNotComeBackChangesNothing();
    void whatWasSwitchedOffComesBack();
    void oneExchangeIsToldOnce();
    void theLogIsNoTraceOfWhatTheUserWorksIn();
    void whoeverShowsThemIsToldOfEachChange();
};

void tst_ProgramMappings::withoutAnyNothingIsWritten()
{
    QVERIFY(!m_programs->areUsed());
    m_programs->use(gimp);
    m_programs->use(browser);
    assign(2);
    QVERIFY(m_programs->take(gimp));
    QVERIFY(m_session->isGeneral());
    QCOMPARE(m_programs->inUse(), QString());
    QVERIFY(!QFile::exists(path()));
}

void tst_ProgramMappings::aProgramBeginsWithACopyOfWhatIsInUse()
{
    assign(2);
    QVERIFY(m_programs->give(gimp, gimpTitle));
    QVERIFY(m_programs->areUsed());
    QVERIFY(m_programs->has(gimp));
    QVERIFY(!m_programs->has(browser));
    QCOMPARE(m_programs->inUse(), gimp);
    QCOMPARE(m_programs->titleInUse(), gimpTitle);
    QVERIFY(!m_session->isGeneral());
    QCOMPARE(inUse(), 2);
    QVERIFY(m_session->isKept());
    QVERIFY(QFile::exists(path()));
}

void tst_ProgramMappings::eachKeepsItsOwnChanges()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    QVERIFY(m_programs->give(browser, browserTitle));
    assign(20);
    m_programs->use(QStringLiteral("editor"));
    QCOMPARE(inUse(), 1);
    m_programs->use(gimp);
    QCOMPARE(inUse(), 10);
    m_programs->use(browser);
    QCOMPARE(inUse(), 20);
    m_programs->use(QString());
    QCOMPARE(inUse(), 1);

    QVERIFY(restart());
    QCOMPARE(m_programs->inUse(), QString());
    QCOMPARE(inUse(), 1);
    m_programs->use(browser);
    QCOMPARE(inUse(), 20);
    QCOMPARE(m_programs->titleInUse(), browserTitle);
    m_programs->use(gimp);
    QCOMPARE(inUse(), 10);
}

void tst_ProgramMappings::unkeptChangesOfTheGeneralOneSurvive()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    m_programs->use(QString());
    assign(5);
    QVERIFY(!m_session->isKept());
    QSignalSpy kept(m_session.get(), &MappingSession::keptChanged);
    m_programs->use(gimp);
    QCOMPARE(inUse(), 1);
    QVERIFY(m_session->isKept());
    m_programs->use(QString());
    QCOMPARE(inUse(), 5);
    QVERIFY(!m_session->isKept());
    QCOMPARE(kept.count(), 2);
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), 1);
}

void tst_ProgramMappings::theKnobsFieldsComeBack()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    m_session->assign(8, Layer::Normal, knobMidi());
    QVERIFY(m_session->isKept());
    QVERIFY(!m_session->endsKnobFields());
    QVERIFY(restart());
    m_programs->use(gimp);
    QCOMPARE(m_session->action(8, Layer::Normal).knobcc, 20);
    QVERIFY(m_session->action(8, Layer::Normal).m01h);
    QVERIFY(!m_session->endsKnobFields());
}

void tst_ProgramMappings::aMappingThatIsSetBelongsToTheProgram()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    const auto mix = sampleMap(QStringLiteral("Mix"));
    m_session->use(*mix);
    m_programs->use(QString());
    QCOMPARE(inUse(), 1);
    QCOMPARE(m_session->name(), QString());
    m_programs->use(gimp);
    QVERIFY(m_session->saveAs(QStringLiteral("My Mix")));
    QVERIFY(restart());
    m_programs->use(gimp);
    QCOMPARE(m_session->name(), QStringLiteral("My Mix"));
    QCOMPARE(m_session->action(0, Layer::Normal).key1, mix->actions[0][Layer::Normal].key1);
}

void tst_ProgramMappings::keepingWritesWhatIsInUse()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    m_programs->use(QString());
    assign(2);
    QVERIFY(m_session->keep());
    QVERIFY(m_session->isKept());
    QVERIFY(restart());
    QCOMPARE(inUse(), 2);
}

void tst_ProgramMappings::stepsBelongToTheirMapping()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    QVERIFY(!m_session->canTakeBack());
    assign(10);
    m_programs->use(QString());
    QVERIFY(m_session->takeBack()); // the one of init()
    QCOMPARE(inUse(), 0);
    m_programs->use(gimp);
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), 1);
    QVERIFY(m_session->redo());
    QCOMPARE(inUse(), 10);
}

void tst_ProgramMappings::whatIsKeptWithAStepIsKeptWhereItBelongs()
{
    const QByteArray workingCopy = contentOf(m_session->files().workingCopy());
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    QVERIFY(m_session->keepWithLastStep());
    QCOMPARE(contentOf(m_session->files().workingCopy()), workingCopy);
    QVERIFY(m_session->takeBack());
    QCOMPARE(contentOf(m_session->files().workingCopy()), workingCopy);
    QCOMPARE(inUse(), 1);
    QVERIFY(restart());
    m_programs->use(gimp);
    QCOMPARE(inUse(), 1);
}

void tst_ProgramMappings::anEarlierWorkingCopyComesBackForAllPrograms()
{
    const QString version = m_directory->filePath(QStringLiteral("old/current.xml"));
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("old")));
    QVERIFY(QFile::copy(m_session->files().workingCopy(), version));
    assign(2);
    QVERIFY(m_session->keep());
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    QVERIFY(!m_session->restore(QStringLiteral("nonsense")));
    QCOMPARE(inUse(), 10);
    QVERIFY(m_session->restore(version));
    QVERIFY(m_session->isGeneral());
    QCOMPARE(inUse(), 1);
    // It is a step of the general one's.
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), 2);
    QVERIFY(m_session->isKept());
    QVERIFY(m_session->redo());
    m_programs->use(gimp);
    QCOMPARE(inUse(), 10);
}

void tst_ProgramMappings::anEarlierWorkingCopyThatDoesNotComeBackChangesNothing()
{
    const QString version = m_directory->filePath(QStringLiteral("old/current.xml"));
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("old")));
    QVERIFY(QFile::copy(m_session->files().workingCopy(), version));
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    QVERIFY(QFile::remove(m_session->files().workingCopy()));
    QVERIFY(QDir().mkdir(m_session->files().workingCopy())); // what cannot be replaced
    const LogCapture log;
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QVERIFY(!m_session->restore(version));
    QCOMPARE(replaced.count(), 0);
    QCOMPARE(m_programs->inUse(), gimp);
    QCOMPARE(inUse(), 10);
}

void tst_ProgramMappings::whatWasSwitchedOffComesBack()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    QVERIFY(m_programs->take(gimp));
    QCOMPARE(inUse(), 1);
    QVERIFY(!m_programs->has(gimp));
    QVERIFY(!m_programs->areUsed());
    QVERIFY(restart());
    QVERIFY(!m_programs->areUsed());
    m_programs->use(gimp);
    QCOMPARE(inUse(), 1);
    QVERIFY(m_programs->give(gimp, gimpTitle));
    QCOMPARE(inUse(), 10);
    QVERIFY(restart());
    QVERIFY(m_programs->has(gimp));
}

void tst_ProgramMappings::oneExchangeIsToldOnce()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    QVERIFY(m_programs->give(browser, browserTitle));
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QSignalSpy kept(m_programs.get(), &ProgramMappings::kept);
    m_programs->use(gimp);
    QCOMPARE(replaced.count(), 1);
    m_programs->use(gimp);
    QCOMPARE(replaced.count(), 1);
    QCOMPARE(kept.count(), 0);
}

void tst_ProgramMappings::theLogIsNoTraceOfWhatTheUserWorksIn()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    LogCapture log;
    m_programs->use(QString());
    m_programs->use(gimp);
    log.takeAll(QtDebugMsg); // for whoever asks for every event
    QCOMPARE(log.takeLines(), QStringList());
}

void tst_ProgramMappings::whoeverShowsThemIsToldOfEachChange()
{
    ProgramMappings none(*m_session);
    QSignalSpy changedNone(&none, &ProgramMappings::changed);
    QVERIFY(none.load());
    QCOMPARE(changedNone.count(), 0);

    QSignalSpy changed(m_programs.get(), &ProgramMappings::changed);
    QVERIFY(m_programs->give(gimp, gimpTitle));
    QCOMPARE(changed.count(), 1);
    QVERIFY(m_programs->give(gimp, gimpTitle)); // it has one
    QVERIFY(m_programs->give(QString(), gimpTitle));
    m_programs->use(gimp);
    QCOMPARE(changed.count(), 1);
    m_programs->use(QString());
    QCOMPARE(changed.count(), 2);

    ProgramMappings one(*m_session);
    QSignalSpy changedOne(&one, &ProgramMappings::changed);
    QVERIFY(one.load());
    QCOMPARE(changedOne.count(), 1);

    QVERIFY(m_programs->take(gimp));
    QCOMPARE(changed.count(), 3);
    QVERIFY(m_programs->take(gimp)); // it has none
    QCOMPARE(changed.count(), 3);
}

QTEST_GUILESS_MAIN(tst_ProgramMappings)
#include "tst_ProgramMappings.moc"
