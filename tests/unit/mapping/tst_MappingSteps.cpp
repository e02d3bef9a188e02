#include "StepsInFolder.h"
#include "tests/support/main/Main.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

/// Taking back what was written, and doing it again.
class tst_MappingSteps : public QObject, private StepsInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void aDeletionIsTakenBackByteForByte();
    void aSaveIsTakenBackByteForByte();
    void theFirstSaveIsTakenBackToNoFile();
    void aCapturedShortcutsWorkingCopyIsTakenBack();
    void theFirstWorkingCopyIsTakenBackToNone();
    void whatWasKeptSinceIsWrittenAnew();
    void aKeepOfItsOwnIsNotTakenBack();
    void whatWasKeptTwiceIsTakenBackToWhatTheFileHolds();
    void stepsOfAllKindsGoBackAndForth();
    void whatSomebodyElseWroteStays();
    void whatHappenedIsSaid();
    void aFileThatGrowsIsBounded();
    void aHugeStepTakesTheOneBeforeAway();
    void whatIsKeptElsewhereIsKeptAgain();
    void whatIsKeptElsewhereAtOnceIsKeptOnce();
    void anEditIsOneStep();
    void anEditThatEndsWhereItBeganIsNone();
    void whatComesInBetweenEndsAnEdit();
    void aKeepInBetweenEndsAnEdit();
};

void tst_MappingSteps::aDeletionIsTakenBackByteForByte()
{
    writeFile(path("custom.xml"), byHand);
    load();
    const QStringList before = names();
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QVERIFY(m_session->remove(QStringLiteral("Two")));
    const QByteArray without = custom();
    QCOMPARE(names(), (QStringList{QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")}));
    QVERIFY(m_session->takeBack());
    QCOMPARE(custom(), byHand);
    QCOMPARE(names(), before);
    QCOMPARE(replaced.size(), 0); // what is in use has nothing to do with it
    QVERIFY(m_session->redo());
    QCOMPARE(custom(), without);
    QCOMPARE(names().size(), 3);
}

void tst_MappingSteps::aSaveIsTakenBackByteForByte()
{
    writeFile(path("custom.xml"), byHand);
    load();
    m_session->assign(3, Layer::Normal, key(65));
    QVERIFY(m_session->saveAs(QStringLiteral("Two"))); // over one that exists
    QCOMPARE(names().size(), 5);
    QVERIFY(m_session->takeBack());
    QCOMPARE(custom(), byHand);
    QCOMPARE(m_session->name(), QString());
    QCOMPARE(inUse(), 65); // only the save was taken back
    QVERIFY(m_session->redo());
    QCOMPARE(m_session->name(), QStringLiteral("Two"));
    QCOMPARE(m_session->custom().constLast()->actions[3][Layer::Normal].key1, 65);
}

void tst_MappingSteps::theFirstSaveIsTakenBackToNoFile()
{
    load();
    QVERIFY(m_session->saveAs(QStringLiteral("One")));
    QCOMPARE(names(), QStringList{QStringLiteral("One")});
    QVERIFY(m_session->takeBack());
    QVERIFY(!QFile::exists(path("custom.xml")));
    QCOMPARE(names(), QStringList());
    QVERIFY(m_session->redo());
    QCOMPARE(names(), QStringList{QStringLiteral("One")});
}

void tst_MappingSteps::aCapturedShortcutsWorkingCopyIsTakenBack()
{
    const QByteArray begin = "<ZR> <MAPPING software='current_map'> <!-- by hand --> </MAPPING></ZR>";
    writeFile(path("current.xml"), begin);
    load();
    m_session->assign(4, Layer::Normal, key(80)); // written by nobody
    capture(3, 65);
    const QByteArray first = workingCopy();
    capture(3, 66);
    QVERIFY(m_session->takeBack());
    QCOMPARE(workingCopy(), first);
    QCOMPARE(inUse(), 65);
    QVERIFY(m_session->isKept());
    QVERIFY(m_session->takeBack());
    QCOMPARE(workingCopy(), begin);
    QCOMPARE(inUse(4), 80);
    QVERIFY(!m_session->isKept()); // as before
    QVERIFY(m_session->redo());
    QCOMPARE(workingCopy(), first);
    QVERIFY(m_session->isKept());
}

void tst_MappingSteps::theFirstWorkingCopyIsTakenBackToNone()
{
    load();
    capture(3, 65);
    QVERIFY(m_session->takeBack());
    QVERIFY(!QFile::exists(path("current.xml")));
    QVERIFY(m_session->isKept()); // it is what the program began with
    QVERIFY(m_session->redo());
    QVERIFY(QFile::exists(path("current.xml")));
}

void tst_MappingSteps::whatWasKeptSinceIsWrittenAnew()
{
    load();
    capture(3, 65);
    capture(3, 66);
    m_session->assign(4, Layer::Normal, key(80));
    QVERIFY(m_session->keep());
    QVERIFY(m_session->takeBack());
    QVERIFY(!m_session->isKept());
    QVERIFY(m_session->takeBack()); // the working copy is none of this step's any more
    QCOMPARE(inUse(), 65);
    QVERIFY(m_session->isKept());
    const auto kept = mapsOf(path("current.xml"));
    QCOMPARE(kept.front()->actions[3][Layer::Normal].key1, 65);
    QVERIFY(kept.front()->actions[4][Layer::Normal].key1 != 80);
}

void tst_MappingSteps::aKeepOfItsOwnIsNotTakenBack()
{
    load();
    m_session->assign(3, Layer::Normal, key(65));
    QVERIFY(m_session->keep());
    const QByteArray written = workingCopy();
    QVERIFY(m_session->takeBack());
    QCOMPARE(workingCopy(), written);
    QVERIFY(!m_session->isKept());

    // Nor is there a step of which it could be a part.
    QVERIFY(m_session->saveAs(QStringLiteral("One")));
    QVERIFY(m_session->keepWithLastStep());
    QVERIFY(m_session->takeBack());
    QVERIFY(QFile::exists(path("current.xml")));
    QVERIFY(!QFile::exists(path("custom.xml")));
}

void tst_MappingSteps::whatWasKeptTwiceIsTakenBackToWhatTheFileHolds()
{
    load();
    m_session->assign(3, Layer::Normal, key(65));
    QVERIFY(m_session->keep());
    QVERIFY(m_session->keepWithLastStep());
    QVERIFY(m_session->takeBack());
    QVERIFY(m_session->actions() == ActionTable());
    QCOMPARE(mapsOf(path("current.xml")).front()->actions[3][Layer::Normal].key1, 65);
    QVERIFY(!m_session->isKept()); // the next start begins with something else than what is in use
}

void tst_MappingSteps::stepsOfAllKindsGoBackAndForth()
{
    writeFile(path("custom.xml"), byHand);
    load();
    capture(3, 65);
    QVERIFY(m_session->saveAs(QStringLiteral("Four")));
    m_session->use(*sampleMap(QStringLiteral("Sample")));
    QVERIFY(m_session->remove(QStringLiteral("One")));
    capture(5, 70);
    const QByteArray lastCustom = custom();
    const QByteArray lastWorkingCopy = workingCopy();
    const ActionTable lastActions = m_session->actions();
    for (int times = 0; times < 2; ++times) {
        int steps = 0;
        while (m_session->takeBack()) {
            ++steps;
        }
        QCOMPARE(steps, 5);
        QCOMPARE(custom(), byHand);
        QVERIFY(!QFile::exists(path("current.xml")));
        QVERIFY(m_session->actions() == ActionTable());
        while (m_session->redo()) {
            --steps;
        }
        QCOMPARE(steps, 0);
        QCOMPARE(custom(), lastCustom);
        QCOMPARE(workingCopy(), lastWorkingCopy);
        QVERIFY(m_session->actions() == lastActions);
        QCOMPARE(m_session->name(), QStringLiteral("Sample"));
    }
}

void tst_MappingSteps::whatSomebodyElseWroteStays()
{
    writeFile(path("custom.xml"), byHand);
    load();
    m_session->assign(3, Layer::Normal, key(65));
    QVERIFY(m_session->remove(QStringLiteral("One")));
    writeFile(path("custom.xml"), "<ZR><MAPPING software=\"Theirs\"/></ZR>");
    QSignalSpy forgotten(m_session.get(), &MappingSession::stepForgotten);
    const FileResult result = m_session->takeBack();
    QVERIFY(!result);
    QCOMPARE(forgotten.count(), 1);
    QCOMPARE(result.reason(), QStringLiteral("it has been changed since"));
    QCOMPARE(custom(), QByteArray("<ZR><MAPPING software=\"Theirs\"/></ZR>"));
    QVERIFY(m_session->takeBack()); // the step before is within reach
    QVERIFY(m_session->actions() == ActionTable());
    QVERIFY(!m_session->canTakeBack());
}

void tst_MappingSteps::whatHappenedIsSaid()
{
    load();
    QStringList said;
    connect(m_session.get(), &MappingSession::stepped, this,
            [&](const MappingStep &step, MappingSession::Way way) {
                said << QStringLiteral("%1 %2 %3 %4")
                            .arg(int(way))
                            .arg(int(step.kind))
                            .arg(step.control)
                            .arg(step.name);
            });
    m_session->assign(3, Layer::Normal, key(65));
    m_session->use(*sampleMap(QStringLiteral("Sample")));
    QVERIFY(m_session->saveAs(QStringLiteral("One")));
    QVERIFY(m_session->remove(QStringLiteral("One")));
    QVERIFY(m_session->takeBack());
    QVERIFY(m_session->redo());
    QCOMPARE(said, (QStringList{QStringLiteral("0 0 3 "), QStringLiteral("0 1 -1 Sample"),
                                QStringLiteral("0 2 -1 One"), QStringLiteral("0 3 -1 One"),
                                QStringLiteral("1 3 -1 One"), QStringLiteral("2 3 -1 One")}));
}

void tst_MappingSteps::aFileThatGrowsIsBounded()
{
    MappingSteps steps;
    MappingChange change;
    change.contentBefore = QByteArray(20 * 1024 * 1024, 'x');
    for (int each = 0; each < 5; ++each) {
        steps.add(change);
    }
    int kept = 0;
    while (steps.last() != nullptr) {
        steps.dropLast();
        ++kept;
    }
    QCOMPARE(kept, 3);
    change.contentBefore = QByteArray(static_cast<int>(MappingSteps::mostBytes) + 1, 'x');
    steps.add(change);
    QVERIFY(steps.last() != nullptr); // the last one always goes back
}

void tst_MappingSteps::aHugeStepTakesTheOneBeforeAway()
{
    MappingSteps steps;
    steps.add({});
    MappingChange huge;
    huge.contentAfter = QByteArray(static_cast<int>(MappingSteps::mostBytes) + 1, 'x');
    steps.add(huge);
    QVERIFY(steps.last() != nullptr);
    steps.dropLast();
    QVERIFY(steps.last() == nullptr); // two are already more than the memory is to hold
}

void tst_MappingSteps::whatIsKeptElsewhereIsKeptAgain()
{
    load();
    QVector<qint32> kept;
    bool fails = false;
    MappingSession::Aside aside;
    aside.keeper = [&] {
        if (fails) {
            return FileResult::failed(QStringLiteral("No space left on device"));
        }
        kept << inUse();
        return FileResult::done();
    };
    const MappingSession::Aside general = m_session->exchange(aside);
    capture(3, 65);
    capture(3, 66);
    m_session->assign(4, Layer::Normal, key(80));
    QVERIFY(m_session->takeBack());
    QCOMPARE(kept, (QVector<qint32>{65, 66})); // nobody has written that step
    fails = true;
    QVERIFY(!m_session->takeBack());
    QCOMPARE(inUse(), 66);
    fails = false;
    QVERIFY(m_session->takeBack());
    QVERIFY(m_session->isKept());
    QVERIFY(m_session->redo());
    QCOMPARE(kept, (QVector<qint32>{65, 66, 65, 66}));
    QVERIFY(!QFile::exists(path("current.xml")));
    m_session->exchange(general);
    QVERIFY(!m_session->canTakeBack());
}

void tst_MappingSteps::whatIsKeptElsewhereAtOnceIsKeptOnce()
{
    load();
    int written = 0;
    MappingSession::Aside aside;
    aside.keeper = [&written] {
        ++written;
        return FileResult::done();
    };
    m_session->exchange(aside);
    connect(m_session.get(), &MappingSession::assigned, m_session.get(), [this] { m_session->keep(); });
    capture(3, 65);
    QCOMPARE(written, 1);
    QVERIFY(m_session->isKept());
    QVERIFY(m_session->takeBack());
    QCOMPARE(written, 2);
    QVERIFY(m_session->isKept());
}

void tst_MappingSteps::anEditIsOneStep()
{
    load();
    m_session->assign(3, Layer::Normal, key(65));
    QSignalSpy stepped(m_session.get(), &MappingSession::stepped);
    for (const qint32 code : {6, 60, 61}) {
        m_session->assign(3, {{Layer::Shift1, key(code)}}, 1);
    }
    QCOMPARE(stepped.count(), 3); // each is said
    m_session->assign(3, {{Layer::Shift1, key(7)}}, 2);
    m_session->assign(4, {{Layer::Shift1, key(8)}}, 2); // another control's
    QVERIFY(m_session->takeBack());
    QCOMPARE(m_session->action(4, Layer::Shift1).key1, shortCut().key1);
    QVERIFY(m_session->takeBack());
    QCOMPARE(m_session->action(3, Layer::Shift1).key1, 61);
    QVERIFY(m_session->takeBack());
    QCOMPARE(m_session->action(3, Layer::Shift1).key1, shortCut().key1);
    QCOMPARE(inUse(), 65);
    QVERIFY(m_session->redo());
    QCOMPARE(m_session->action(3, Layer::Shift1).key1, 61);
    QVERIFY(m_session->takeBack());
    QVERIFY(m_session->takeBack());
    QVERIFY(!m_session->canTakeBack());
}

void tst_MappingSteps::anEditThatEndsWhereItBeganIsNone()
{
    load();
    m_session->assign(3, Layer::Normal, key(6));
    m_session->assign(3, {{Layer::Normal, key(60)}}, 1);
    QSignalSpy forgotten(m_session.get(), &MappingSession::stepForgotten);
    m_session->assign(3, {{Layer::Normal, key(6)}}, 1);
    QCOMPARE(forgotten.count(), 1);
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), shortCut().key1);
    QVERIFY(!m_session->canTakeBack());
}

void tst_MappingSteps::aKeepInBetweenEndsAnEdit()
{
    load();
    QVERIFY(!QFile::exists(path("current.xml")));
    m_session->assign(3, {{Layer::Normal, key(6)}}, 1);
    QVERIFY(m_session->keepWithLastStep());
    m_session->assign(3, {{Layer::Normal, key(60)}}, 1);
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), 6);
    QVERIFY(m_session->isKept());
    QVERIFY(m_session->takeBack());
    QVERIFY(!QFile::exists(path("current.xml")));
}

void tst_MappingSteps::whatComesInBetweenEndsAnEdit()
{
    load();
    ZRButtonMap other(QStringLiteral("Other"));
    m_session->assign(3, {{Layer::Normal, key(6)}}, 1);
    m_session->use(other);
    m_session->assign(3, {{Layer::Normal, key(60)}}, 1);
    QVERIFY(m_session->takeBack());
    QCOMPARE(m_session->name(), QStringLiteral("Other"));
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), 6);
    m_session->assign(3, {{Layer::Normal, key(61)}}, 1);
    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), shortCut().key1);
}

QTEST_GUILESS_MAIN(tst_MappingSteps)
#include "tst_MappingSteps.moc"
