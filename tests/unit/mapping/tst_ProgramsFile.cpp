#include "ProgramsInFolder.h"
#include "mapping/FileHistory.h"
#include "mapping/ProgramsFile.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

/// The file of the programs' mappings: when it is written, what is not read as one, its history, and what
/// comes from other computers.
class tst_ProgramsFile : public QObject, private ProgramsInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QVERIFY(beginWithOne()); }
    void cleanup() { end(); }

    void aChangeIsOnTheDiskAtOnce();
    void theFilesOfTheOthersStayAsTheyAre();
    void aChangeThatIsNotWrittenIsSaidAndTriedAgain();
    void theNextChangeWritesWhatAnotherCouldNot();
    void aFileThatIsNoneIsSetAside_data();
    void aFileThatIsNoneIsSetAside();
    void aFileThatCannotBeReadIsNotReplaced();
    void namesOfEveryKindComeBack();
    void whatTheFileHeldGoesToItsHistory();
    void anEarlierVersionOfAllActsAtOnce();
    void anEarlierVersionMayHaveNoneForTheProgramInUse();
    void anEarlierVersionThatDoesNotComeBackChangesNothing();
    void theMappingsOfAnotherComputerComeAlong();
    void whatIsHereStaysWhenOthersCome();

private:
    /// What another computer has: for Gimp, for the browser and for an editor, whose mapping is switched off.
    QString ofAnotherComputer() const
    {
        QString file = m_directory->filePath(QStringLiteral("from there.xml"));
        const auto entry = [](const QString &program, const QString &title, bool acts,
                              const shortCut &action) {
            ProgramsFile::Entry made{program, title, acts, QString(), {}};
            made.actions[3][Layer::Normal] = action;
            return made;
        };
        ProgramsFile::write(
            file, {entry(gimp, gimpTitle, true, knobMidi()), entry(browser, browserTitle, true, key(20)),
                   entry(QStringLiteral("editor"), QStringLiteral("Editor"), false, key(30))});
        return file;
    }
};

void tst_ProgramsFile::aChangeIsOnTheDiskAtOnce()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    QSignalSpy kept(m_programs.get(), &ProgramMappings::kept);
    m_session->assign(4, {{Layer::Normal, key(7)}, {Layer::Shift1, key(8)}, {Layer::Shift2, key(9)}});
    QCOMPARE(kept.count(), 1);
    QVERIFY(m_session->isKept());
    const ProgramsFile::Content content = ProgramsFile::read(path());
    QCOMPARE(content.entries.size(), std::size_t(1));
    QCOMPARE(content.entries[0].actions[4][Layer::Shift2].key1, 9);
    QVERIFY(m_session->takeBack());
    QCOMPARE(ProgramsFile::read(path()).entries[0].actions[4][Layer::Shift2].key1, 0);
}

void tst_ProgramsFile::theFilesOfTheOthersStayAsTheyAre()
{
    const QByteArray workingCopy = contentOf(m_session->files().workingCopy());
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    QVERIFY(m_session->keep());
    QCOMPARE(contentOf(m_session->files().workingCopy()), workingCopy);
    QVERIFY(!QFile::exists(m_session->files().custom()));

    QVERIFY(m_session->saveAs(QStringLiteral("From Gimp")));
    QCOMPARE(m_session->custom().size(), 1);
    QCOMPARE(m_session->custom().first()->actions[3][Layer::Normal].key1, 10);
    const QByteArray programs = contentOf(path());
    QVERIFY(m_session->remove(QStringLiteral("From Gimp")));
    QCOMPARE(inUse(), 10);
    QCOMPARE(contentOf(path()), programs);
    QCOMPARE(contentOf(m_session->files().workingCopy()), workingCopy);
}

void tst_ProgramsFile::aChangeThatIsNotWrittenIsSaidAndTriedAgain()
{
    const LogCapture log;
    QVERIFY(m_programs->give(gimp, gimpTitle));
    QVERIFY(QFile::remove(path()));
    QVERIFY(QDir().mkdir(path()));
    QStringList reasons;
    connect(m_programs.get(), &ProgramMappings::kept, this,
            [&reasons](const FileResult &result) { reasons << result.reason(); });
    assign(10);
    QCOMPARE(reasons, QStringList{QStringLiteral("not a regular file")});
    QVERIFY(!m_session->isKept());
    m_programs->use(QString());
    m_programs->use(gimp);
    QCOMPARE(inUse(), 10);
    QVERIFY(!m_session->isKept());
    QVERIFY(QDir().rmdir(path()));
    QVERIFY(m_session->keep());
    QVERIFY(m_session->isKept());
    QVERIFY(restart());
    m_programs->use(gimp);
    QCOMPARE(inUse(), 10);
    QCOMPARE(log.warnings().size(), 1);
}

void tst_ProgramsFile::theNextChangeWritesWhatAnotherCouldNot()
{
    const LogCapture log;
    QVERIFY(m_programs->give(browser, browserTitle));
    QVERIFY(m_programs->give(gimp, gimpTitle));
    QVERIFY(QFile::remove(path()));
    QVERIFY(QDir().mkdir(path()));
    assign(10);
    QVERIFY(!m_session->isKept());
    m_programs->use(browser);
    QVERIFY(QDir().rmdir(path()));
    assign(20);
    QVERIFY(m_session->isKept());
    m_programs->use(gimp);
    QVERIFY(m_session->isKept());
    QVERIFY(restart());
    m_programs->use(gimp);
    QCOMPARE(inUse(), 10);
}

void tst_ProgramsFile::aFileThatIsNoneIsSetAside_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("usable");
    const QByteArray whole = "<MAPPING program=\"gimp\" software=\"\"><BUTTON id=\"3\"><NORMAL label=\"\">"
                             "<KEY1 type=\"int\">10</KEY1></NORMAL></BUTTON></MAPPING>";
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("cut off") << "<ZR>" + whole + "<MAPPING" << 0;
    QTest::newRow("no mapping file") << QByteArray("<html/>") << 0;
    QTest::newRow("a mapping of nobody") << "<ZR>" + whole + "<MAPPING/></ZR>" << 1;
    QTest::newRow("two of one program") << "<ZR>" + whole + whole + "</ZR>" << 1;
}

void tst_ProgramsFile::aFileThatIsNoneIsSetAside()
{
    QFETCH(QByteArray, content);
    QFETCH(int, usable);
    LogCapture log;
    writeFile(path(), content);
    const FileResult result = restart();
    QVERIFY(!result);
    QCOMPARE(result.reason(), QStringLiteral("it is no mapping file; a copy of it lies beside it"));
    QVERIFY(log.take(QtWarningMsg, QStringLiteral("was not read as a whole")));
    QCOMPARE(contentOf(path() + QStringLiteral(".broken")), content);
    QCOMPARE(m_programs->areUsed(), usable == 1);
    m_programs->use(gimp);
    QCOMPARE(inUse(), usable == 1 ? 10 : 1);
    QVERIFY(m_programs->give(browser, browserTitle));
    QVERIFY(restart());
    QVERIFY(m_programs->has(browser));
    QCOMPARE(m_programs->has(gimp), usable == 1);
}

void tst_ProgramsFile::aFileThatCannotBeReadIsNotReplaced()
{
    LogCapture log;
    QVERIFY(QDir().mkdir(path()));
    QVERIFY(!restart());
    QVERIFY(log.take(QtWarningMsg, QStringLiteral("not a regular file")));
    const FileResult result = m_programs->give(gimp, gimpTitle);
    QCOMPARE(result.reason(), QStringLiteral("not a regular file"));
    assign(10);
    QCOMPARE(m_programs->inUse(), gimp); // it acts all the same
    QVERIFY(!m_session->isKept());
    m_programs->use(browser);
    m_programs->use(gimp);
    QCOMPARE(inUse(), 10);
}

void tst_ProgramsFile::namesOfEveryKindComeBack()
{
    const QString odd = QStringLiteral("a\"<&>' b");
    QVERIFY(m_programs->give(odd, odd));
    assign(10);
    QVERIFY(restart());
    m_programs->use(odd);
    QCOMPARE(inUse(), 10);
    QCOMPARE(m_programs->titleInUse(), odd);
}

void tst_ProgramsFile::whatTheFileHeldGoesToItsHistory()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    const QByteArray before = contentOf(path());
    QVERIFY(QDir(m_directory->filePath(QStringLiteral("history")))
                .removeRecursively());                 // longer ago than a minute
    m_session->use(*sampleMap(QStringLiteral("Mix"))); // by mistake
    assign(11);
    const auto versions = FileHistory::versions(path());
    QCOMPARE(versions.size(), 1); // one a minute, whatever is done in it
    QCOMPARE(contentOf(versions.constFirst().path), before);
    QVERIFY(m_session->restore(versions.constFirst().path));
    QCOMPARE(contentOf(path()), before);
    QCOMPARE(inUse(), 10);
}

void tst_ProgramsFile::anEarlierVersionOfAllActsAtOnce()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    const QString version = m_directory->filePath(QStringLiteral("programs-20260101T000000000Z.xml"));
    QVERIFY(QFile::copy(path(), version));
    assign(11);
    QVERIFY(m_programs->give(browser, browserTitle));
    assign(20);
    m_programs->use(gimp);
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QSignalSpy arrived(m_programs.get(), &ProgramMappings::arrived);
    QVERIFY(m_session->restore(version));
    QCOMPARE(replaced.count(), 1);
    QCOMPARE(arrived.count(), 1);
    QCOMPARE(m_programs->inUse(), gimp);
    QCOMPARE(inUse(), 10);
    QVERIFY(m_session->isKept());
    QVERIFY(!m_session->canTakeBack()); // what was done was done to what is gone
    QVERIFY(!m_programs->has(browser));
    // What is done now is written, and the general one waits as it was.
    assign(12);
    QCOMPARE(ProgramsFile::read(path()).entries.at(0).actions[3][Layer::Normal].key1, 12);
    m_programs->use(QString());
    QCOMPARE(inUse(), 1);
    QVERIFY(m_session->canTakeBack());
    QVERIFY(m_session->isGeneral());
    // The program that has one again is told of too.
    QVERIFY(m_programs->take(gimp));
    QVERIFY(m_session->restore(version));
    QCOMPARE(arrived.count(), 2);
    QVERIFY(m_programs->has(gimp));
    QVERIFY(m_session->isGeneral());
}

void tst_ProgramsFile::anEarlierVersionMayHaveNoneForTheProgramInUse()
{
    QVERIFY(m_programs->give(browser, browserTitle));
    const QString version = m_directory->filePath(QStringLiteral("programs-20260101T000000000Z.xml"));
    QVERIFY(QFile::copy(path(), version));
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    QVERIFY(m_session->restore(version));
    QCOMPARE(m_programs->inUse(), QString());
    QVERIFY(m_session->isGeneral());
    QCOMPARE(inUse(), 1);
    m_programs->use(gimp);
    QCOMPARE(inUse(), 1);
}

void tst_ProgramsFile::anEarlierVersionThatDoesNotComeBackChangesNothing()
{
    const LogCapture log;
    QVERIFY(m_programs->give(gimp, gimpTitle));
    const QString version = m_directory->filePath(QStringLiteral("programs-20260101T000000000Z.xml"));
    QVERIFY(QFile::copy(path(), version));
    assign(10);
    QVERIFY(QFile::remove(path()));
    QVERIFY(QDir().mkdir(path()));
    QVERIFY(!m_session->restore(version));
    QCOMPARE(m_programs->inUse(), gimp);
    QCOMPARE(inUse(), 10);
}

void tst_ProgramsFile::theMappingsOfAnotherComputerComeAlong()
{
    QSignalSpy arrived(m_programs.get(), &ProgramMappings::arrived);
    const auto outcome = m_session->importFile(ofAnotherComputer());
    QCOMPARE(outcome.sentence, QStringLiteral("Imported, each for one program: Gimp, Firefox, Editor"));
    QCOMPARE(outcome.names.size(), 3);
    QVERIFY(outcome.forPrograms);
    QCOMPARE(arrived.count(), 1);
    QVERIFY(m_session->custom().isEmpty());
    QVERIFY(!QFile::exists(m_session->files().custom()));
    for (int time = 0; time < 2; ++time) {
        m_programs->use(gimp);
        QVERIFY(m_session->action(3, Layer::Normal) == knobMidi());
        QCOMPARE(m_programs->titleInUse(), gimpTitle);
        m_programs->use(browser);
        QCOMPARE(inUse(), 20);
        QVERIFY(!m_programs->has(QStringLiteral("editor")));
        QVERIFY(restart()); // and from the file
    }
    QVERIFY(m_programs->give(QStringLiteral("editor"), QStringLiteral("Editor")));
    QCOMPARE(inUse(), 30);
}

void tst_ProgramsFile::whatIsHereStaysWhenOthersCome()
{
    QVERIFY(m_programs->give(gimp, gimpTitle));
    assign(10);
    assign(11);
    auto outcome = m_session->importFile(ofAnotherComputer());
    QCOMPARE(outcome.sentence,
             QStringLiteral("Imported, each for one program: Firefox, Editor. These keep the mappings "
                            "that they have here: Gimp"));
    QCOMPARE(inUse(), 11);
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), 10);
    const QByteArray before = contentOf(path());
    outcome = m_session->importFile(ofAnotherComputer());
    QVERIFY(outcome.names.isEmpty());
    QCOMPARE(outcome.sentence,
             QString::fromUtf8(
                 "\u201cfrom there.xml\u201d was not imported: these programs have mappings of their own "
                 "here: Gimp, Firefox, Editor."));
    QCOMPARE(contentOf(path()), before);
}

QTEST_GUILESS_MAIN(tst_ProgramsFile)
#include "tst_ProgramsFile.moc"
