#include "ProgramsInFolder.h"
#include "mapping/FileHistory.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QTest>

/// Mappings of programs that come from a file: what is said of them is what is on the disk and acts.
class tst_ProgramsImport : public QObject, private ProgramsInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { end(); }

    void whatWasSwitchedOffGivesWayToOneThatActs();
    void whatIsSwitchedOffThereLeavesWhatIsHere();
    void withoutARunningCopyItIsTheSame();
    void whatGivesWayIsInTheHistoryOrStays();
    void whatWasNotWrittenYetIsHereAlready();
    void nothingComesInWhileWhatIsHereCannotBeWritten();
    void anEarlierVersionTakesThePlaceOfWhatWasNotWritten();
    void whereNoProgramIsToldTheMessageSaysSo();

private:
    QString version() const
    {
        return m_directory->filePath(QStringLiteral("programs-20260101T000000000Z.xml"));
    }
    /// A mapping of Gimp's whose control 3 presses 20.
    QString fromThere(bool acts = true) const
    {
        QString file = m_directory->filePath(QStringLiteral("from there.xml"));
        ProgramsFile::Entry entry{gimp, gimpTitle, acts, QStringLiteral("There"), {}};
        entry.actions[3][Layer::Normal] = key(20);
        ProgramsFile::write(file, {entry});
        return file;
    }
    /// Gimp's own presses 10, and all others 1.
    void giveGimpItsOwn()
    {
        QVERIFY(m_programs->give(gimp, gimpTitle));
        assign(10);
    }
    /// Its file cannot be written, as where the disk is full.
    void block() { QVERIFY(QFile::rename(path(), path() + QStringLiteral(".away")) && QDir().mkdir(path())); }
    void unblock()
    {
        QVERIFY(QDir().rmdir(path()) && QFile::rename(path() + QStringLiteral(".away"), path()));
    }
};

void tst_ProgramsImport::init()
{
    QVERIFY(begin());
    assign(1);
}

void tst_ProgramsImport::whatWasSwitchedOffGivesWayToOneThatActs()
{
    giveGimpItsOwn();
    QVERIFY(m_programs->take(gimp));
    const QByteArray before = contentOf(path());
    const auto outcome = m_session->importFile(fromThere());
    QCOMPARE(outcome.sentence, QStringLiteral("Imported, each for one program: Gimp. What was switched off "
                                              "here is in the history: Gimp"));
    QCOMPARE(outcome.names, QStringList(gimpTitle));
    QVERIFY(m_programs->has(gimp));
    m_programs->use(gimp);
    QCOMPARE(inUse(), 20);
    QCOMPARE(m_session->name(), QStringLiteral("There"));
    QVERIFY(m_session->isKept());
    QVERIFY(!m_session->canTakeBack()); // what was done was done to what is gone
    QCOMPARE(onDisk(), 20);
    // The version of a moment ago does not count: only this one has what was there last.
    const auto versions = FileHistory::versions(path());
    QCOMPARE(contentOf(versions.constFirst().path), before);
    QVERIFY(m_session->restore(versions.constFirst().path));
    QVERIFY(m_programs->give(gimp, gimpTitle));
    QCOMPARE(inUse(), 10);
}

void tst_ProgramsImport::whatIsSwitchedOffThereLeavesWhatIsHere()
{
    giveGimpItsOwn();
    QVERIFY(m_programs->take(gimp));
    const QByteArray before = contentOf(path());
    QVERIFY(m_session->importFile(fromThere(false)).names.isEmpty());
    QCOMPARE(contentOf(path()), before);
    QVERIFY(m_programs->give(gimp, gimpTitle));
    QCOMPARE(inUse(), 10);
}

void tst_ProgramsImport::withoutARunningCopyItIsTheSame()
{
    giveGimpItsOwn();
    QVERIFY(m_programs->take(gimp));
    const auto outcome = ImportedMappings::import(fromThere(), m_session->files());
    QCOMPARE(outcome.names, QStringList(gimpTitle));
    QVERIFY(ProgramsFile::read(path()).entries.at(0).acts);
    QCOMPARE(onDisk(), 20);
}

void tst_ProgramsImport::whatGivesWayIsInTheHistoryOrStays()
{
    const LogCapture log;
    giveGimpItsOwn();
    QVERIFY(m_programs->take(gimp));
    const QByteArray before = contentOf(path());
    QDir history(m_directory->filePath(QStringLiteral("history")));
    QVERIFY(history.removeRecursively());
    writeFile(history.path(), "no folder");
    const auto outcome = m_session->importFile(fromThere());
    QVERIFY(outcome.names.isEmpty());
    QVERIFY2(outcome.sentence.contains(QStringLiteral("was not imported")), qPrintable(outcome.sentence));
    QCOMPARE(contentOf(path()), before);
}

void tst_ProgramsImport::whatWasNotWrittenYetIsHereAlready()
{
    const LogCapture log;
    QVERIFY(m_programs->give(QStringLiteral("editor"), QStringLiteral("Editor")));
    block();
    QVERIFY(!m_programs->give(gimp, gimpTitle));
    assign(10);
    unblock();
    const auto outcome = m_session->importFile(fromThere());
    QCOMPARE(outcome.sentence,
             QString::fromUtf8(
                 "\u201cfrom there.xml\u201d was not imported: these programs have mappings of their own "
                 "here: Gimp."));
    QCOMPARE(inUse(), 10);
    const auto entries = ProgramsFile::read(path()).entries;
    QCOMPARE(entries.size(), std::size_t(2));
    QCOMPARE(entries.at(1).actions[3][Layer::Normal].key1, 10);
}

void tst_ProgramsImport::nothingComesInWhileWhatIsHereCannotBeWritten()
{
    const LogCapture log;
    giveGimpItsOwn();
    QVERIFY(m_programs->take(gimp));
    block();
    QVERIFY(!m_programs->give(gimp, gimpTitle));
    const auto outcome = m_session->importFile(fromThere());
    QVERIFY(outcome.names.isEmpty());
    QVERIFY2(outcome.sentence.contains(QStringLiteral("not a regular file")), qPrintable(outcome.sentence));
    QCOMPARE(inUse(), 10);
    unblock();
    assign(11);
    QCOMPARE(onDisk(), 11);
}

void tst_ProgramsImport::anEarlierVersionTakesThePlaceOfWhatWasNotWritten()
{
    const LogCapture log;
    giveGimpItsOwn();
    QVERIFY(QFile::copy(path(), version()));
    block();
    assign(11);
    unblock();
    QVERIFY(m_session->restore(version()));
    QCOMPARE(inUse(), 10);
    QCOMPARE(onDisk(), 10);
    // What was there last went to the history.
    QVERIFY(m_session->restore(FileHistory::versions(path()).constFirst().path));
    QCOMPARE(inUse(), 11);
}

void tst_ProgramsImport::whereNoProgramIsToldTheMessageSaysSo()
{
    m_programs->setTold(false);
    const QString file = fromThere();
    QCOMPARE(m_session->importFile(file).sentence,
             QStringLiteral("Imported, each for one program: Gimp. They are kept, but cannot act in this "
                            "session, which does not tell which program is in front"));
    QVERIFY(m_programs->has(gimp)); // as in the next session that tells
    QCOMPARE(onDisk(), 20);
    QVERIFY(m_session->importFile(file).sentence.endsWith(QStringLiteral("here: Gimp.")));
}

QTEST_GUILESS_MAIN(tst_ProgramsImport)
#include "tst_ProgramsImport.moc"
