#include "MappingFixtures.h"
#include "SessionInFolder.h"
#include "mapping/SpecialAction.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

/// The life of the mapping in use, from the first start to the last choice, without a widget.
class tst_MappingSession : public QObject, private SessionInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void theFilesHaveTheirNames();

    void withoutAWorkingCopyItBeginsWithTheLibrarysDefault();
    void theWorkingCopyWinsOverTheLibrary();
    void theWorkingCopyIsCalledWhatLoadingSays();
    void aBrokenWorkingCopyLeavesWhatTheSettingsSay_data();
    void aBrokenWorkingCopyLeavesWhatTheSettingsSay();
    void withoutAnyMappingTheSettingsAreInUse();
    void aDefaultOutsideTheListIsNone();
    void readingWritesNoFileOfTheUsers();
    void aLibraryThatIsNoneIsPutBackFirst();

    void anAssignmentActsAndIsSaidOnce();
    void anAssignmentWritesNothing();
    void severalLayersAreOneStep();
    void whatChangesNothingIsNotSaid();
    void aControlThatDoesNotExistIsIgnored();

    void usingAMappingCopiesIt();
    void usingTheSameMappingAgainIsSaidButIsNoStep();
    void keepingWritesTheWorkingCopyAlone();
    void keptIsWhatTheNextStartBeginsWith();
    void aKeepThatFailedKeepsNothing();
    void aFileThatHoldsTheKnobsFieldsIsNotNeededToKeepThem();

    void whatNoFileHoldsOfTheKnobIsSaidWhenAllElseIsKept();
    void whatAFileHoldsOtherwiseCountsAsKept();

    void stepsAreTakenBackAndDoneAgain();
    void twentyStepsAreKept();
    void takingBackWritesNothing();
};

void tst_MappingSession::theFilesHaveTheirNames()
{
    const MappingFiles &files = m_session->files();
    QCOMPARE(files.directory(), m_directory->path());
    QCOMPARE(files.library(), path("ZR.xml"));
    QCOMPARE(files.custom(), path("custom.xml"));
    QCOMPARE(files.workingCopy(), path("current.xml"));
}

void tst_MappingSession::withoutAWorkingCopyItBeginsWithTheLibrarysDefault()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65) + mapping("Second", 66, "default=\"yes\"")));
    writeFile(path("custom.xml"), document(mapping("Mine", 67, "default=\"yes\"")));
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QSignalSpy lists(m_session.get(), &MappingSession::listChanged);
    load();
    QCOMPARE(inUse(), 66);
    QCOMPARE(m_session->name(), QStringLiteral("Second"));
    QCOMPARE(m_session->defaultMapping()->name, QStringLiteral("Second"));
    QVERIFY(m_session->isKept());
    QVERIFY(!m_session->canTakeBack());
    QCOMPARE(replaced.size(), 1);
    QCOMPARE(lists.size(), 2);
    QCOMPARE(lists.at(0).at(1).toBool(), false);
    QCOMPARE(lists.at(0).at(2).toInt(), 1);
    QCOMPARE(lists.at(1).at(1).toBool(), true);
    QCOMPARE(names(m_session->library()), (QStringList{QStringLiteral("First"), QStringLiteral("Second")}));
    QCOMPARE(names(m_session->custom()), QStringList{QStringLiteral("Mine")});
}

void tst_MappingSession::theWorkingCopyIsCalledWhatLoadingSays()
{
    const auto loadCalled = [this](const QString &name) {
        m_session->load([] {}, [] { return ActionTable(); }, name);
    };
    loadCalled(QStringLiteral("Work"));
    QCOMPARE(m_session->name(), QString()); // there is none

    writeFile(path("current.xml"), document(mapping("current_map", 68)));
    restart();
    loadCalled(QStringLiteral("Work"));
    QCOMPARE(inUse(), 68);
    QCOMPARE(m_session->name(), QStringLiteral("Work"));
    QVERIFY(m_session->isKept());
}

void tst_MappingSession::theWorkingCopyWinsOverTheLibrary()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    writeFile(path("current.xml"), document(mapping("current_map", 68)));
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    load();
    QCOMPARE(inUse(), 68);
    QCOMPARE(m_session->name(), QString());
    QVERIFY(m_session->isKept());
    QCOMPARE(replaced.size(), 1);
}

void tst_MappingSession::aBrokenWorkingCopyLeavesWhatTheSettingsSay_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("malformed") << QByteArray("<ZR><MAPPING");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no mapping") << QByteArray("<ZR/>");
}

void tst_MappingSession::aBrokenWorkingCopyLeavesWhatTheSettingsSay()
{
    QFETCH(QByteArray, content);
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    writeFile(path("current.xml"), content);
    ActionTable stored;
    stored[3][Layer::Normal] = key(70);
    const LogCapture log;
    load(stored);
    QCOMPARE(inUse(), 70);
    QCOMPARE(contentOf(path("current.xml")), content);
    QVERIFY(m_session->isKept());
}

void tst_MappingSession::withoutAnyMappingTheSettingsAreInUse()
{
    ActionTable stored;
    stored[3][Layer::Normal] = key(70);
    stored[9][Layer::Shift2].knobcc = 20;
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QSignalSpy assigned(m_session.get(), &MappingSession::assigned);
    load(stored);
    QVERIFY(m_session->actions() == stored);
    QVERIFY(m_session->isKept());
    QVERIFY(!m_session->canTakeBack());
    // It is no mapping, that would be stored into the settings again.
    QCOMPARE(replaced.size(), 0);
    QCOMPARE(assigned.size(), 2);
    QCOMPARE(assigned.at(0).at(0).toInt(), 3);
    QCOMPARE(assigned.at(0).at(1).value<Layer>(), Layer::Normal);
    QCOMPARE(assigned.at(1).at(0).toInt(), 9);
    QCOMPARE(assigned.at(1).at(1).value<Layer>(), Layer::Shift2);
}

void tst_MappingSession::aDefaultOutsideTheListIsNone()
{
    QVERIFY(m_session->defaultMapping() == nullptr);
    writeFile(path("custom.xml"), document(mapping("Mine", 67, "default=\"yes\"")));
    load();
    QVERIFY(m_session->defaultMapping() == nullptr);
    QVERIFY(m_session->actions() == ActionTable());
}

void tst_MappingSession::readingWritesNoFileOfTheUsers()
{
    load();
    QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList());
}

void tst_MappingSession::aLibraryThatIsNoneIsPutBackFirst()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    load(); // keeps it
    restart();
    writeFile(path("ZR.xml"), "<html>Sign in</html>");
    const LogCapture log;
    load();
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("First")});
    QCOMPARE(contentOf(path("ZR.xml")), document(mapping("First", 65)));
}

void tst_MappingSession::anAssignmentActsAndIsSaidOnce()
{
    load();
    QSignalSpy assigned(m_session.get(), &MappingSession::assigned);
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QSignalSpy kept(m_session.get(), &MappingSession::keptChanged);
    m_session->assign(7, Layer::Shift1, key(65));
    QCOMPARE(m_session->action(7, Layer::Shift1), key(65));
    QCOMPARE(m_session->action(7, Layer::Normal), shortCut());
    QCOMPARE(assigned.size(), 1);
    QCOMPARE(replaced.size(), 0);
    QCOMPARE(kept.size(), 1);
    QCOMPARE(kept.at(0).at(0).toBool(), false);
    m_session->assign(7, Layer::Shift1, key(66));
    QCOMPARE(kept.size(), 1); // nothing new about that
    m_session->assign(7, Layer::Shift1, shortCut());
    QCOMPARE(kept.size(), 2); // as it was: there is nothing to keep
    QVERIFY(m_session->isKept());
}

void tst_MappingSession::anAssignmentWritesNothing()
{
    load();
    m_session->assign(7, Layer::Shift1, key(65));
    QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList());
}

void tst_MappingSession::severalLayersAreOneStep()
{
    load();
    QSignalSpy assigned(m_session.get(), &MappingSession::assigned);
    bool complete = true;
    connect(m_session.get(), &MappingSession::assigned, this, [&](int control) {
        for (const Layer layer : Layers::all) {
            complete = complete && m_session->action(control, layer) == key(65);
        }
    });
    m_session->assign(2, {{Layer::Normal, key(65)}, {Layer::Shift1, key(65)}, {Layer::Shift2, key(65)}});
    QCOMPARE(assigned.size(), 3);
    QVERIFY(complete); // at each of them
    QVERIFY(m_session->takeBack());
    QVERIFY(m_session->actions() == ActionTable());
    QVERIFY(!m_session->canTakeBack());
}

void tst_MappingSession::whatChangesNothingIsNotSaid()
{
    load();
    m_session->assign(2, Layer::Normal, key(65));
    QSignalSpy assigned(m_session.get(), &MappingSession::assigned);
    m_session->assign(2, Layer::Normal, key(65));
    QCOMPARE(assigned.size(), 0);
    m_session->takeBack();
    QVERIFY(!m_session->canTakeBack());
}

void tst_MappingSession::aControlThatDoesNotExistIsIgnored()
{
    load();
    QSignalSpy assigned(m_session.get(), &MappingSession::assigned);
    for (const int control : {-1, 10, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        m_session->assign(control, Layer::Normal, key(65));
    }
    QCOMPARE(assigned.size(), 0);
    QVERIFY(m_session->actions() == ActionTable());
    QVERIFY(!m_session->canTakeBack());
}

void tst_MappingSession::usingAMappingCopiesIt()
{
    load();
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    auto map = std::make_unique<ZRButtonMap>(QStringLiteral("Other"));
    map->actions[3][Layer::Normal] = key(70);
    map->actions[3][Layer::Normal].knobcc = 20;
    m_session->use(*map);
    map.reset();
    QCOMPARE(inUse(), 70);
    QCOMPARE(m_session->action(3, Layer::Normal).knobcc, 20);
    QCOMPARE(m_session->name(), QStringLiteral("Other"));
    QCOMPARE(replaced.size(), 1);
    QVERIFY(!m_session->isKept());
    QVERIFY(!QFile::exists(path("current.xml")));
}

void tst_MappingSession::usingTheSameMappingAgainIsSaidButIsNoStep()
{
    load();
    const auto map = sampleMap(QStringLiteral("Sample"));
    m_session->use(*map);
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    m_session->use(*map);
    QCOMPARE(replaced.size(), 1); // whoever shows it may show it anew
    QVERIFY(m_session->takeBack());
    QVERIFY(!m_session->canTakeBack());
}

void tst_MappingSession::keepingWritesTheWorkingCopyAlone()
{
    writeFile(path("custom.xml"), document(mapping("Mine", 67)));
    load();
    m_session->use(*sampleMap(QStringLiteral("Sample")));
    QSignalSpy kept(m_session.get(), &MappingSession::keptChanged);
    QVERIFY(m_session->keep());
    QVERIFY(m_session->keep()); // once more does not add another
    QCOMPARE(kept.size(), 1);
    QCOMPARE(kept.at(0).at(0).toBool(), true);
    const auto written = mapsOf(path("current.xml"));
    QCOMPARE(written.size(), std::size_t(1));
    QCOMPARE(written.front()->name, QStringLiteral("current_map"));
    QCOMPARE(contentOf(path("custom.xml")), document(mapping("Mine", 67)));
    QCOMPARE(m_session->name(), QStringLiteral("Sample")); // it is still that
}

void tst_MappingSession::keptIsWhatTheNextStartBeginsWith()
{
    load();
    m_session->use(*sampleMap(QStringLiteral("Sample")));
    m_session->assign(9, Layer::Shift2, key(90));
    QVERIFY(m_session->keep());
    const ActionTable before = m_session->actions();
    m_session->assign(9, Layer::Shift2, key(91)); // not kept
    restart();
    load();
    for (int control = 0; control < ActionTable::controlCount; ++control) {
        for (const Layer layer : Layers::all) {
            QCOMPARE(m_session->action(control, layer), asReadBack(before[control][layer]));
        }
    }
    QVERIFY(m_session->isKept());
}

void tst_MappingSession::aKeepThatFailedKeepsNothing()
{
    load();
    QVERIFY(QDir().mkdir(path("current.xml")));
    m_session->assign(3, Layer::Normal, key(65));
    QSignalSpy kept(m_session.get(), &MappingSession::keptChanged);
    const LogCapture log;
    const FileResult result = m_session->keep();
    QVERIFY(!result);
    QCOMPARE(result.reason(), QStringLiteral("not a regular file"));
    QVERIFY(!m_session->isKept());
    QCOMPARE(kept.size(), 0);
    QVERIFY(QDir().rmdir(path("current.xml")));
    QVERIFY(m_session->keep());
    QCOMPARE(kept.size(), 1);
}

void tst_MappingSession::aFileThatHoldsTheKnobsFieldsIsNotNeededToKeepThem()
{
    load();
    shortCut knob = key(MIDI_KNOB_ACTION);
    knob.channel = 1;
    knob.knobcc = 20;
    knob.m3fh = true;
    m_session->assign(3, Layer::Normal, knob);
    QVERIFY(m_session->keep());
    QVERIFY(m_session->isKept());
    QVERIFY(contentOf(path("current.xml")).contains("knobcc=\"20\""));
    QVERIFY(contentOf(path("current.xml")).contains("m3fh=\"1\""));
    restart();
    load();
    QCOMPARE(m_session->action(3, Layer::Normal).knobcc, 0); // what is read never has them
}

void tst_MappingSession::whatNoFileHoldsOfTheKnobIsSaidWhenAllElseIsKept()
{
    load();
    shortCut knob = key(MIDI_KNOB_ACTION);
    knob.channel = 1;
    m_session->assign(3, Layer::Normal, knob);
    QVERIFY(m_session->keep());
    QVERIFY(!m_session->endsKnobFields());
    QSignalSpy kept(m_session.get(), &MappingSession::keptChanged);
    QSignalSpy ends(m_session.get(), &MappingSession::endsKnobFieldsChanged);
    knob.m3fh = true;
    m_session->assign(3, Layer::Normal, knob);
    QVERIFY(m_session->isKept()); // there is nothing that keeping could add
    QVERIFY(m_session->endsKnobFields());
    QVERIFY(m_session->keep());
    QVERIFY(m_session->endsKnobFields());
    QCOMPARE(kept.size(), 0);
    QCOMPARE(ends.size(), 1);
    QCOMPARE(ends.at(0).at(0).toBool(), true);
    m_session->assign(3, Layer::Normal, key(65)); // no action of the knob any more
    QVERIFY(!m_session->isKept());
    QVERIFY(!m_session->endsKnobFields());
}

void tst_MappingSession::whatAFileHoldsOtherwiseCountsAsKept()
{
    load();
    shortCut special;
    special.key1 = SPECIAL_ACTION;
    special.key2 = static_cast<int>(SpecialAction::Vertical);
    special.key3 = 0;                               // read back as -1
    special.label = QStringLiteral("Vertical\x01"); // which XML cannot carry
    special.channel = 5;                            // left from a MIDI action
    m_session->assign(3, Layer::Normal, special);
    const LogCapture log;
    QVERIFY(!m_session->isKept());
    QVERIFY(m_session->keep());
    QVERIFY(m_session->isKept());
}

void tst_MappingSession::stepsAreTakenBackAndDoneAgain()
{
    load();
    QVERIFY(!m_session->takeBack());
    QVERIFY(!m_session->redo());
    m_session->assign(3, Layer::Normal, key(65));
    m_session->use(*sampleMap(QStringLiteral("Sample")));
    const ActionTable sample = m_session->actions();
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QSignalSpy kept(m_session.get(), &MappingSession::keptChanged);

    QVERIFY(m_session->takeBack());
    QCOMPARE(inUse(), 65);
    QCOMPARE(m_session->name(), QString());
    QVERIFY(m_session->takeBack());
    QVERIFY(m_session->actions() == ActionTable());
    QCOMPARE(kept.size(), 1); // it is what the program began with
    QVERIFY(!m_session->canTakeBack() && !m_session->takeBack());

    QVERIFY(m_session->redo());
    QCOMPARE(inUse(), 65);
    QVERIFY(m_session->redo());
    QVERIFY(m_session->actions() == sample);
    QCOMPARE(m_session->name(), QStringLiteral("Sample"));
    QVERIFY(!m_session->canRedo());
    QCOMPARE(replaced.size(), 4);

    m_session->takeBack();
    m_session->assign(4, Layer::Normal, key(80)); // another way from here
    QVERIFY(!m_session->canRedo() && !m_session->redo());
}

void tst_MappingSession::twentyStepsAreKept()
{
    load();
    for (int step = 1; step <= 25; ++step) {
        m_session->assign(3, Layer::Normal, key(step));
    }
    int taken = 0;
    while (m_session->takeBack()) {
        ++taken;
    }
    QCOMPARE(taken, 20);
    QCOMPARE(inUse(), 5);
    while (m_session->redo()) {
        --taken;
    }
    QCOMPARE(taken, 0);
    QCOMPARE(inUse(), 25);
}

void tst_MappingSession::takingBackWritesNothing()
{
    load();
    m_session->assign(3, Layer::Normal, key(65));
    QVERIFY(m_session->keep());
    const QByteArray written = contentOf(path("current.xml"));
    QVERIFY(m_session->takeBack());
    QCOMPARE(contentOf(path("current.xml")), written);
    QVERIFY(!m_session->isKept());
    QVERIFY(m_session->redo());
    QVERIFY(m_session->isKept());
}

QTEST_GUILESS_MAIN(tst_MappingSession)
#include "tst_MappingSession.moc"
