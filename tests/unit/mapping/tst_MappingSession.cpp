#include "MappingFixtures.h"
#include "mapping/LibraryKeeper.h"
#include "mapping/MappingSession.h"
#include "mapping/SpecialAction.h"
#include "tests/support/log/LogCapture.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

shortCut key(qint32 code)
{
    shortCut action;
    action.key1 = code;
    action.key2 = -1;
    action.key3 = -1;
    action.label = QString::number(code);
    return action;
}

QByteArray mapping(const char *name, int code, const char *attributes = "")
{
    return QByteArray("<MAPPING software=\"") + name + "\" " + attributes +
           "><BUTTON id=\"3\"><NORMAL label=\"key\"><KEY1 type=\"int\">" + QByteArray::number(code) +
           "</KEY1></NORMAL></BUTTON></MAPPING>";
}

QByteArray document(const QByteArray &mappings)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?><ZR>" + mappings + "</ZR>";
}

} // namespace

/// The life of the mappings, from the first start to the last choice, without a widget.
class tst_MappingSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

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

    void savingTwiceUnderANameListsBothAndDeletingTakesTheFirst();
    void aMappingWithoutANameIsDeletedAndNoOther();
    void aFileThatIsNoneIsCopiedAsideBeforeASave();
    void aChosenFileShowsAsTheLibrary();
    void withNothingKeptTheSeedIsTheLibrary();
    void savingLeavesTheWorkingCopyAlone();
    void aSaveThatFailedSaysWhy();
    void aDeletionThatFailedSaysWhy();

    void aNewLibraryReplacesTheList();
    void aLibraryWithoutMappingsTakesNoneAway();
    void theListsAreOwnedAndTheOldOnesGoLater();
    void whoeverTakesAnOldMapOverKeepsIt();

    void stepsAreTakenBackAndDoneAgain();
    void twentyStepsAreKept();
    void takingBackWritesNothing();

private:
    QString path(const char *name) const { return m_directory->filePath(QString::fromLatin1(name)); }
    void load(const ActionTable &stored = {})
    {
        m_session->load(
            [this] {
                if (const ZRButtonMap *map = m_session->defaultMapping()) {
                    m_session->use(*map);
                }
            },
            [stored] { return stored; });
    }
    qint32 inUse(int control = 3) const { return m_session->action(control, Layer::Normal).key1; }
    QStringList names(const QList<ZRButtonMap *> &maps) const
    {
        QStringList found;
        for (const ZRButtonMap *map : maps) {
            found << map->name;
        }
        return found;
    }
    void restart() { m_session = std::make_unique<MappingSession>(m_directory->path()); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<MappingSession> m_session;
};

void tst_MappingSession::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    restart();
}

void tst_MappingSession::cleanup()
{
    m_session.reset();
    m_directory.reset();
}

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

void tst_MappingSession::aMappingWithoutANameIsDeletedAndNoOther()
{
    const QByteArray none = "<MAPPING default=\"1\"/>";
    const QByteArray empty = "<MAPPING software=\"\"/>";
    for (const QByteArray &nameless : {none, empty}) {
        for (const bool first : {true, false}) {
            const QByteArray unknown = mapping("Unknown", 67);
            writeFile(path("custom.xml"), document(first ? nameless + unknown : unknown + nameless));
            restart();
            load();
            QCOMPARE(m_session->custom().size(), 2);
            const ZRButtonMap &map = *m_session->custom().at(first ? 0 : 1);
            QCOMPARE(map.name, QStringLiteral("Unknown"));
            QVERIFY(XmlMappingReader::isNameless(map));
            QVERIFY(!XmlMappingReader::isNameless(*m_session->custom().at(first ? 1 : 0)));
            QVERIFY(m_session->remove(QString())); // as the selector says it
            QCOMPARE(m_session->custom().size(), 1);
            QCOMPARE(m_session->custom().constFirst()->actions[3][Layer::Normal].key1, 67);
        }
    }
    writeFile(path("custom.xml"), document(none + mapping("Mine", 68)));
    restart();
    load();
    QVERIFY(m_session->remove(QStringLiteral("Unknown"))); // as the reader calls it
    QCOMPARE(names(m_session->custom()), QStringList{QStringLiteral("Mine")});
}

void tst_MappingSession::aFileThatIsNoneIsCopiedAsideBeforeASave()
{
    const QByteArray broken = "<ZR><MAPPING software=\"mine\">";
    writeFile(path("custom.xml"), broken);
    const LogCapture log;
    load();
    for (int times = 0; times < 3; ++times) { // once is enough
        const FileResult result = m_session->saveAs(QStringLiteral("new"));
        QVERIFY(!result);
        QCOMPARE(result.reason(), QStringLiteral("it is no mapping file; a copy of it lies beside it"));
        QVERIFY(contentOf(path("custom.xml")).startsWith(broken + "<?xml"));
        QCOMPARE(contentOf(path("custom.xml.broken")), broken);
    }
    writeFile(path("custom.xml"), "another");
    QVERIFY(!m_session->saveAs(QStringLiteral("new")));
    QCOMPARE(contentOf(path("custom.xml.broken")), broken);
    QCOMPARE(contentOf(path("custom.xml.broken2")), QByteArray("another"));

    // Without a copy nothing is added.
    writeFile(path("custom.xml"), "a third");
    QVERIFY(QDir().mkdir(path("custom.xml.broken3")));
    QVERIFY(!m_session->saveAs(QStringLiteral("new")));
    QCOMPARE(contentOf(path("custom.xml.broken4")), QByteArray("a third"));
}

void tst_MappingSession::aChosenFileShowsAsTheLibrary()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    writeFile(path("elsewhere.xml"), document(mapping("Elsewhere", 66)));
    load();
    m_session->openXml(); // nobody to ask: as if cancelled
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("First")});
    QString title;
    m_session->setFileChooser([&](const QString &asked, const QString &, const QString &) {
        title = asked;
        return path("elsewhere.xml");
    });
    m_session->openXml();
    QCOMPARE(title, QStringLiteral("Open Xml"));
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("Elsewhere")});
    QCOMPARE(contentOf(LibraryKeeper::keptFile(path("ZR.xml"))), document(mapping("First", 65)));
}

void tst_MappingSession::withNothingKeptTheSeedIsTheLibrary()
{
    const QTemporaryDir seeds;
    writeFile(seeds.filePath(QStringLiteral("ZR.xml")), document(mapping("Seed", 65)));
    writeFile(path("ZR.xml"), "<html>Sign in</html>");
    const LogCapture log;
    m_session = std::make_unique<MappingSession>(MappingFiles(m_directory->path(), seeds.path()));
    load();
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("Seed")});
    QCOMPARE(inUse(), 65);
}

void tst_MappingSession::savingTwiceUnderANameListsBothAndDeletingTakesTheFirst()
{
    load();
    const QString mine = QStringLiteral("Mine");
    QSignalSpy lists(m_session.get(), &MappingSession::listChanged);
    m_session->assign(3, Layer::Normal, key(65));
    QVERIFY(m_session->saveAs(mine));
    m_session->assign(3, Layer::Normal, key(66));
    QVERIFY(m_session->saveAs(mine));
    QCOMPARE(lists.size(), 2);
    QCOMPARE(names(m_session->custom()), (QStringList{mine, mine}));
    QCOMPARE(m_session->name(), mine);
    QVERIFY(m_session->remove(mine));
    QCOMPARE(lists.size(), 3);
    QCOMPARE(m_session->custom().size(), 1);
    QCOMPARE(m_session->custom().constFirst()->actions[3][Layer::Normal].key1, 66);
    QVERIFY(m_session->remove(QStringLiteral("no such"))); // not there afterwards: as it should be
    QCOMPARE(m_session->custom().size(), 1);
}

void tst_MappingSession::savingLeavesTheWorkingCopyAlone()
{
    load();
    m_session->assign(3, Layer::Normal, key(65));
    QVERIFY(m_session->saveAs(QString())); // a name is not asked for
    QVERIFY(!m_session->isKept());
    QVERIFY(!QFile::exists(path("current.xml")));
    QCOMPARE(names(m_session->custom()), QStringList{QStringLiteral("Unknown")});
}

void tst_MappingSession::aSaveThatFailedSaysWhy()
{
    writeFile(path("custom.xml"), "<ZR><MAPPING");
    const LogCapture log;
    load();
    const FileResult result = m_session->saveAs(QStringLiteral("Mine"));
    QVERIFY(!result);
    QVERIFY(!result.reason().isEmpty());
    QCOMPARE(m_session->name(), QString());
    QVERIFY(m_session->custom().isEmpty());

    writeFile(path("custom.xml"), "<OTHER/>");
    QVERIFY(!m_session->saveAs(QStringLiteral("Mine"))); // dropped: it must not look like a success
}

void tst_MappingSession::aDeletionThatFailedSaysWhy()
{
    const LogCapture log;
    load();
    QVERIFY(!m_session->remove(QStringLiteral("Mine"))); // there is no file
    writeFile(path("custom.xml"), "<ZR><MAPPING");
    const FileResult result = m_session->remove(QStringLiteral("Mine"));
    QVERIFY(!result && !result.reason().isEmpty());
}

void tst_MappingSession::aNewLibraryReplacesTheList()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    load();
    writeFile(path("ZR.xml"), document(mapping("New", 66)));
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QVERIFY(m_session->reloadLibrary());
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("New")});
    QCOMPARE(replaced.size(), 0); // what is in use stays
    QCOMPARE(inUse(), 65);
    QCOMPARE(contentOf(LibraryKeeper::keptFile(path("ZR.xml"))), document(mapping("New", 66)));
}

void tst_MappingSession::aLibraryWithoutMappingsTakesNoneAway()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    load();
    QSignalSpy lists(m_session.get(), &MappingSession::listChanged);
    writeFile(path("ZR.xml"), "<html><body/></html>");
    {
        LogCapture log;
        m_session->reloadLibrary();
        QCOMPARE(log.linesHolding(QStringLiteral("The library holds no mapping")).size(), 1);
    }
    writeFile(path("ZR.xml"), "<ZR");
    const LogCapture log;
    QVERIFY(!m_session->reloadLibrary());
    QCOMPARE(lists.size(), 0);
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("First")});
}

void tst_MappingSession::theListsAreOwnedAndTheOldOnesGoLater()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    writeFile(path("custom.xml"), document(mapping("Mine", 66)));
    load();
    const QPointer<ZRButtonMap> old = m_session->library().constFirst();
    QVERIFY(m_session->reloadLibrary());
    QVERIFY(old); // somebody may have it in hand
    QTRY_VERIFY(!old);
    const QPointer<ZRButtonMap> library = m_session->library().constFirst();
    const QPointer<ZRButtonMap> custom = m_session->custom().constFirst();
    m_session.reset();
    QVERIFY(!library && !custom);
}

void tst_MappingSession::whoeverTakesAnOldMapOverKeepsIt()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    load();
    QObject taker;
    const QPointer<ZRButtonMap> old = m_session->library().constFirst();
    connect(m_session.get(), &MappingSession::listChanged, &taker, [&] { old->setParent(&taker); });
    QVERIFY(m_session->reloadLibrary());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(old);
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
