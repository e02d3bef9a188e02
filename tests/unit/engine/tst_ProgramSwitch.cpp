#include "engine/ProgramSwitch.h"
#include "engine/platform/recording/RecordingFocus.h"
#include "mapping/ProgramMappings.h"
#include "tests/support/main/Main.h"
#include "tests/support/mapping/MappingSamples.h"
#include "tests/support/script/EngineRig.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace
{

const QString gimp = QStringLiteral("gimp");
const QString browser = QStringLiteral("firefox");

} // namespace

/// Which mapping acts when another program gets the focus, on the engine with a recording backend.
class tst_ProgramSwitch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void nothingIsWatchedUntilItIsUsed();
    void theMappingOfTheProgramActs();
    void aHeldButtonIsReleasedByWhatPressedIt();
    void theLastProgramCountsWhenAllIsLetGo();
    void aTouchedKnobHasTheChangeWait();
    void aLostDeviceLetsTheChangeHappen();
    void whatIsChosenIsChosenForWhatTheUserSees();
    void theProgramInFrontAtTheStartCounts();
    void whatComesBackActsForTheProgramInFront();

private:
    void press(int button) { m_rig->dispatcher->onButtonpress(button, true); }
    void release(int button) { m_rig->dispatcher->onButtonpress(button, false); }
    QStringList did() { return m_rig->recorder.takeLines(); }
    void giveBoth();

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<EngineRig> m_rig;
    std::unique_ptr<MappingSession> m_session;
    std::unique_ptr<ProgramMappings> m_programs;
    std::unique_ptr<RecordingFocus> m_focus;
    std::unique_ptr<ProgramSwitch> m_switch;
};

void tst_ProgramSwitch::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_rig = std::make_unique<EngineRig>();
    m_session = std::make_unique<MappingSession>(m_directory->path());
    m_rig->dispatcher->follow(*m_session);
    m_session->load([] {}, [] { return ActionTable(); });
    m_programs = std::make_unique<ProgramMappings>(*m_session);
    m_focus = std::make_unique<RecordingFocus>();
    m_switch = std::make_unique<ProgramSwitch>(*m_focus, *m_rig->dispatcher, *m_programs);
    m_session->assign(3, Layer::Normal, key(65));
}

void tst_ProgramSwitch::cleanup()
{
    m_switch.reset();
    m_focus.reset();
    m_programs.reset();
    m_rig.reset();
    m_session.reset();
    m_directory.reset();
}

// Gimp has the key 71 on button 3, the browser 70, all others 65.
void tst_ProgramSwitch::giveBoth()
{
    QVERIFY(m_programs->give(gimp, gimp));
    m_session->assign(3, Layer::Normal, key(71));
    QVERIFY(m_programs->give(browser, browser));
    m_session->assign(3, Layer::Normal, key(70));
    m_focus->focus(QStringLiteral("editor"));
    QCOMPARE(m_programs->inUse(), QString());
}

void tst_ProgramSwitch::nothingIsWatchedUntilItIsUsed()
{
    QVERIFY(m_switch->isOffered());
    QVERIFY(!m_focus->isWatched());
    m_focus->focus(gimp);
    QCOMPARE(m_switch->last().id, QString());

    QSignalSpy changed(m_switch.get(), &ProgramSwitch::lastChanged);
    m_switch->setPageShown(true);
    QVERIFY(m_focus->isWatched());
    QCOMPARE(m_switch->last().id, gimp);
    QCOMPARE(m_switch->last().name, QStringLiteral("Gimp"));
    QCOMPARE(changed.count(), 1);
    m_switch->setPageShown(false);
    QVERIFY(!m_focus->isWatched());

    QVERIFY(m_programs->give(gimp, gimp));
    QVERIFY(m_focus->isWatched());
    QVERIFY(m_programs->take(gimp));
    QVERIFY(!m_focus->isWatched());
}

void tst_ProgramSwitch::theMappingOfTheProgramActs()
{
    giveBoth();
    for (const auto &[program, code] : {std::pair(gimp, 71), {browser, 70}, {QStringLiteral("other"), 65}}) {
        m_focus->focus(program);
        press(3);
        release(3);
        QCOMPARE(did(), (QStringList{QStringLiteral("key %1 down").arg(code),
                                     QStringLiteral("key %1 up").arg(code)}));
    }
}

void tst_ProgramSwitch::aHeldButtonIsReleasedByWhatPressedIt()
{
    giveBoth();
    press(3);
    m_focus->focus(gimp);
    press(4); // another one, held longer
    QCOMPARE(did(), QStringList{QStringLiteral("key 65 down")});
    release(3);
    QCOMPARE(did(), QStringList{QStringLiteral("key 65 up")});
    QCOMPARE(m_programs->inUse(), QString());
    release(4);
    QCOMPARE(m_programs->inUse(), gimp);
    press(3);
    QCOMPARE(did(), QStringList{QStringLiteral("key 71 down")});
    release(3);
}

void tst_ProgramSwitch::theLastProgramCountsWhenAllIsLetGo()
{
    giveBoth();
    press(3);
    m_focus->focus(gimp);
    m_focus->focus(browser);
    release(3);
    QCOMPARE(m_programs->inUse(), browser);
    press(3);
    m_focus->focus(gimp);
    m_focus->focus(browser);
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    release(3);
    QCOMPARE(replaced.count(), 0);
}

void tst_ProgramSwitch::aTouchedKnobHasTheChangeWait()
{
    giveBoth();
    m_rig->dispatcher->onKnobevent('D');
    m_focus->focus(gimp);
    m_rig->dispatcher->onKnobevent('R');
    QCOMPARE(m_programs->inUse(), QString());
    m_rig->dispatcher->onKnobevent('U');
    QCOMPARE(m_programs->inUse(), gimp);
    QVERIFY(did().contains(QStringLiteral("left up")));
}

void tst_ProgramSwitch::aLostDeviceLetsTheChangeHappen()
{
    giveBoth();
    m_rig->dispatcher->onKnobevent('D');
    press(3);
    m_focus->focus(gimp);
    release(3); // as the link does before it reports the loss
    QCOMPARE(m_programs->inUse(), QString());
    m_rig->dispatcher->onDeviceLost();
    QCOMPARE(m_programs->inUse(), gimp);
}

void tst_ProgramSwitch::whatIsChosenIsChosenForWhatTheUserSees()
{
    giveBoth();
    m_focus->focus(gimp);
    m_switch->setChoosing(true);
    m_focus->focus(browser);
    m_session->assign(5, Layer::Normal, key(99));
    QCOMPARE(m_programs->inUse(), gimp);
    press(3);
    m_switch->setChoosing(false);
    QCOMPARE(m_programs->inUse(), gimp);
    release(3);
    QCOMPARE(m_programs->inUse(), browser);
    QCOMPARE(m_session->action(5, Layer::Normal).key1, 0);
    m_focus->focus(gimp);
    QCOMPARE(m_session->action(5, Layer::Normal).key1, 99);
}

void tst_ProgramSwitch::theProgramInFrontAtTheStartCounts()
{
    giveBoth();
    m_switch.reset();
    m_focus->setWatched(false);
    m_focus->focus(gimp);
    m_switch = std::make_unique<ProgramSwitch>(*m_focus, *m_rig->dispatcher, *m_programs);
    QCOMPARE(m_programs->inUse(), gimp);
}

void tst_ProgramSwitch::whatComesBackActsForTheProgramInFront()
{
    giveBoth();
    const QString version = m_directory->filePath(QStringLiteral("old.xml/programs.xml"));
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("old.xml")));
    QVERIFY(QFile::copy(m_session->files().programs(), version));
    m_focus->focus(gimp);
    QVERIFY(m_programs->take(gimp));
    press(3);
    QVERIFY(m_session->restore(version));
    QCOMPARE(m_programs->inUse(), QString());
    release(3);
    QCOMPARE(did(), QStringList({QStringLiteral("key 65 down"), QStringLiteral("key 65 up")}));
    QCOMPARE(m_programs->inUse(), gimp);
}

QTEST_GUILESS_MAIN(tst_ProgramSwitch)
#include "tst_ProgramSwitch.moc"
