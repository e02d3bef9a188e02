#include "ProgramsInFolder.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

/// What is typed in a dialog for a program's mapping is written once, and never later than anything else.
class tst_ProgramsEdit : public QObject, private ProgramsInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { end(); }

    void keystrokesAreWrittenOnce();
    void aRestInTypingWritesThem();
    void anotherChoiceWritesThem();
    void anotherProgramWritesThem();
    void whatIsSwitchedOffIsWrittenBefore();
    void theEndWritesThem();
    void anImportWritesThem();
    void whatIsTypedAndTakenAwayAgainLeavesNothing();
    void takingThemBackWritesWhatWasThere();
    void whatCannotBeWrittenIsNotKept();
    void theGeneralOneIsNotWritten();

private:
    void type(qint32 code) { m_session->assign(3, {{Layer::Normal, key(code)}}, 1); }

    std::unique_ptr<QSignalSpy> m_kept;
    std::unique_ptr<QSignalSpy> m_keptChanged;
};

void tst_ProgramsEdit::init()
{
    QVERIFY(begin());
    QVERIFY(m_programs->give(gimp, gimp));
    m_kept = std::make_unique<QSignalSpy>(m_programs.get(), &ProgramMappings::kept);
    m_keptChanged = std::make_unique<QSignalSpy>(m_session.get(), &MappingSession::keptChanged);
}

void tst_ProgramsEdit::keystrokesAreWrittenOnce()
{
    for (const qint32 code : {1, 12, 127}) {
        type(code);
        QCOMPARE(onDisk(), 0);
        QCOMPARE(m_session->action(3, Layer::Normal).key1, code); // it acts all the same
        QVERIFY(m_session->isKept());
    }
    m_programs->finishEdit();
    QCOMPARE(onDisk(), 127);
    QVERIFY(m_session->isKept());
    m_programs->finishEdit();
    QTest::qWait(ProgramMappings::editRest + 200);
    QCOMPARE(m_kept->count(), 1);
    QCOMPARE(m_keptChanged->count(), 0); // the page says nothing of it
}

void tst_ProgramsEdit::aRestInTypingWritesThem()
{
    type(1);
    QTRY_COMPARE(onDisk(), 1);
    QCOMPARE(m_kept->count(), 1);
    type(12);
    QTRY_COMPARE(onDisk(), 12);
    QCOMPARE(m_kept->count(), 2);
    QCOMPARE(m_keptChanged->count(), 0);
}

void tst_ProgramsEdit::anotherChoiceWritesThem()
{
    type(1);
    m_session->assign(4, Layer::Normal, key(7));
    const auto entries = ProgramsFile::read(path()).entries;
    QCOMPARE(entries.at(0).actions[3][Layer::Normal].key1, 1);
    QCOMPARE(entries.at(0).actions[4][Layer::Normal].key1, 7);
    QCOMPARE(m_kept->count(), 1);
    QVERIFY(m_session->isKept());
}

void tst_ProgramsEdit::anotherProgramWritesThem()
{
    type(1);
    m_programs->use(QString());
    QCOMPARE(onDisk(), 1);
    QVERIFY(m_session->isGeneral());
    QCOMPARE(m_session->action(3, Layer::Normal).key1, 0);
    m_programs->use(gimp);
    QCOMPARE(m_session->action(3, Layer::Normal).key1, 1);
    QVERIFY(m_session->isKept());
    QCOMPARE(m_kept->count(), 1);
}

void tst_ProgramsEdit::whatIsSwitchedOffIsWrittenBefore()
{
    type(1);
    QVERIFY(m_programs->take(gimp));
    QCOMPARE(onDisk(), 1);
    QVERIFY(!ProgramsFile::read(path()).entries.at(0).acts);
}

void tst_ProgramsEdit::theEndWritesThem()
{
    type(1);
    QVERIFY(QMetaObject::invokeMethod(QCoreApplication::instance(), "aboutToQuit",
                                      Qt::DirectConnection)); // only the toolkit emits it
    QCOMPARE(onDisk(), 1);
    type(2);
    m_programs.reset();
    QCOMPARE(onDisk(), 2);
}

void tst_ProgramsEdit::anImportWritesThem()
{
    const QString file = m_directory->filePath(QStringLiteral("from there.xml"));
    ProgramsFile::write(file, {{QStringLiteral("editor"), QStringLiteral("Editor"), true, QString(), {}}});
    type(1);
    QCOMPARE(m_session->importFile(file).names, QStringList(QStringLiteral("Editor")));
    const auto entries = ProgramsFile::read(path()).entries;
    QCOMPARE(entries.size(), std::size_t(2));
    QCOMPARE(onDisk(), 1);
    type(2);
    m_programs->finishEdit();
    QCOMPARE(ProgramsFile::read(path()).entries.size(), std::size_t(2));
}

void tst_ProgramsEdit::whatIsTypedAndTakenAwayAgainLeavesNothing()
{
    type(1);
    m_session->assign(3, {{Layer::Normal, shortCut()}}, 1);
    QVERIFY(m_session->isKept());
    QVERIFY(!m_session->canTakeBack());
    m_programs->finishEdit();
    QVERIFY(m_session->isKept());
    QCOMPARE(onDisk(), 0);
    QCOMPARE(m_keptChanged->count(), 0);
}

void tst_ProgramsEdit::takingThemBackWritesWhatWasThere()
{
    type(1);
    QVERIFY(m_session->takeBack());
    QVERIFY(m_session->isKept());
    QCOMPARE(onDisk(), 0);
    QVERIFY(m_session->redo());
    QCOMPARE(onDisk(), 1);
    QVERIFY(m_session->isKept());
}

void tst_ProgramsEdit::whatCannotBeWrittenIsNotKept()
{
    const LogCapture log;
    QVERIFY(QFile::rename(path(), path() + QStringLiteral(".away")) && QDir().mkdir(path()));
    QString reason;
    connect(m_programs.get(), &ProgramMappings::kept, this,
            [&reason](const FileResult &result) { reason = result.reason(); });
    type(1);
    QVERIFY(m_session->isKept());
    m_programs->finishEdit();
    QVERIFY(!m_session->isKept());
    QCOMPARE(m_keptChanged->count(), 1);
    QCOMPARE(reason, QStringLiteral("not a regular file"));
    m_programs->use(QString());
    m_programs->use(gimp);
    QVERIFY(!m_session->isKept());
    QCOMPARE(log.warnings().size(), 1);
    QVERIFY(QDir().rmdir(path()));
    type(2);
    m_programs->finishEdit();
    QVERIFY(m_session->isKept());
    QCOMPARE(onDisk(), 2);
}

void tst_ProgramsEdit::theGeneralOneIsNotWritten()
{
    m_programs->use(QString());
    type(1);
    QVERIFY(!m_session->isKept());
    m_programs->finishEdit();
    QVERIFY(!m_session->isKept());
    QVERIFY(!QFile::exists(m_session->files().workingCopy()));
    QCOMPARE(m_kept->count(), 0);
}

QTEST_GUILESS_MAIN(tst_ProgramsEdit)
#include "tst_ProgramsEdit.moc"
