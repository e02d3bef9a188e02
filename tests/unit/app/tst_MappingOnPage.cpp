#include "app/frame/AppFonts.h"
#include "app/frame/ClickableLabel.h"
#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingReader.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/mapping/MappingSamples.h"
#include "tests/unit/app/PageInWindow.h"
#include "ui/NameLine.h"
#include "ui/SaveDialog.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>

/// The life of the mapping as the page shows it: what it begins with, what is kept, saved, named and taken
/// back.
class tst_MappingOnPage : public QObject, private PageInWindow
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { end(); }

    void withoutAWorkingCopyTheLibrarysDefaultIsUsed();
    void workingCopyWinsOverTheLibrary();
    void brokenWorkingCopyLeavesTheMenusAsStored();
    void withoutAnyMappingTheSettingsActAndStayAsTheyAre();
    void chosenActionActsFromTheNextEvent();
    void onlyACapturedShortcutWritesTheWorkingCopy();
    void whatIsNotKeptIsSaidAndKeptOnRequest();
    void whatCouldNotBeKeptStaysSaid();
    void whatNoFileHoldsOfTheKnobIsSaid();
    void aSaveThatFailedIsSaidWhereTheUserLooks();
    void whatIsTakenBackIsShownStoredAndActs();
    void savingTwiceUnderANameListsBothAndDeletingTakesTheFirst();
    void setMappingActsButWritesNothing();
    void anOlderVersionsActionsAreUpgradedOnce();
    void libraryWithoutMappingsTakesNoneAway();
    void theNameLineNamesWhatIsInUse();
    void theNameLineOutlivesTheProgram();
    void theNameGoesWithTheWorkingCopy();

private:
    QList<ZRButtonMap *> customMaps();

    std::unique_ptr<QObject> m_owner;
};

void tst_MappingOnPage::init()
{
    begin();
    m_owner = std::make_unique<QObject>();
}

QList<ZRButtonMap *> tst_MappingOnPage::customMaps()
{
    QList<ZRButtonMap *> maps;
    XmlMappingReader reader;
    connect(&reader, &XmlMappingReader::newMapListReady, this, [&](const QList<ZRButtonMap *> &list) {
        for (ZRButtonMap *map : list) {
            map->setParent(m_owner.get());
            maps << map;
        }
    });
    reader.readMapList(m_rig->data.filePath(QStringLiteral("custom.xml")), true);
    return maps;
}

void tst_MappingOnPage::withoutAWorkingCopyTheLibrarysDefaultIsUsed()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"),
                     document(mapping("First", 65) + mapping("Second", 66, "default=\"yes\"")));
    makePage();
    press(3);
    QCOMPARE(m_rig->engine.recorder.lines(),
             QStringList({QStringLiteral("key 66 down"), QStringLiteral("key 66 up")}));
    QVERIFY(!QFile::exists(m_rig->data.filePath(QStringLiteral("current.xml"))));
}

void tst_MappingOnPage::workingCopyWinsOverTheLibrary()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("First", 65)));
    m_rig->writeFile(QStringLiteral("current.xml"), document(mapping("current_map", 67)));
    makePage();
    press(3);
    QCOMPARE(m_rig->engine.recorder.lines().constFirst(), QStringLiteral("key 67 down"));
    QCOMPARE(menu(3)->assignment(Layer::Normal).key1, 67);
}

void tst_MappingOnPage::brokenWorkingCopyLeavesTheMenusAsStored()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("First", 65)));
    m_rig->writeFile(QStringLiteral("current.xml"), "<ZR><MAPPING");
    makePage();
    press(3);
    QCOMPARE(m_rig->engine.recorder.lines(), QStringList());
    QCOMPARE(m_rig->readFile(QStringLiteral("current.xml")), QByteArray("<ZR><MAPPING"));
}

void tst_MappingOnPage::withoutAnyMappingTheSettingsActAndStayAsTheyAre()
{
    const QMap<QString, QVariant> stored{{QStringLiteral("tonAction.Normal.key1"), 71},
                                         {QStringLiteral("tonAction.Normal.key2"), -1},
                                         {QStringLiteral("tonAction.Normal.key3"), -1},
                                         {QStringLiteral("tonAction.Shift2.value_on"), 21}};
    for (auto it = stored.begin(); it != stored.end(); ++it) {
        m_rig->store.setValue(it.key(), it.value());
    }
    makePage();
    press(3);
    QCOMPARE(m_rig->engine.recorder.lines(),
             QStringList({QStringLiteral("key 71 down"), QStringLiteral("key 71 up")}));
    QVERIFY(m_page->findChild<QLabel *>(QStringLiteral("notKept"))->isHidden());
    QStringList keys = m_rig->store.allKeys();
    keys.removeOne(QStringLiteral("ZR.ver"));
    QCOMPARE(keys, QStringList(stored.keys()));
}

void tst_MappingOnPage::chosenActionActsFromTheNextEvent()
{
    makePage();
    shortCut vertical;
    vertical.key1 = 68;
    vertical.key2 = -1;
    vertical.key3 = -1;
    vertical.label = QStringLiteral("D");
    menu(3)->getShorcut(0, vertical);
    press(3);
    QCOMPARE(m_rig->engine.recorder.lines(),
             QStringList({QStringLiteral("key 68 down"), QStringLiteral("key 68 up")}));
}

void tst_MappingOnPage::onlyACapturedShortcutWritesTheWorkingCopy()
{
    makePage();
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    QVERIFY(!QFile::exists(m_rig->data.filePath(QStringLiteral("current.xml"))));
    menu(4)->loadShorcut(0, 17, 90, -1, QStringLiteral("Ctrl + Z"));
    const QByteArray written = m_rig->readFile(QStringLiteral("current.xml"));
    QVERIFY(written.contains("software=\"current_map\""));
    QVERIFY(written.contains("label=\"Ctrl + Z\""));
    QCOMPARE(written.count("<MAPPING"), 1);
}

void tst_MappingOnPage::whatIsNotKeptIsSaidAndKeptOnRequest()
{
    makePage();
    auto *line = m_page->findChild<QLabel *>(QStringLiteral("notKept"));
    auto *keep = m_page->findChild<ClickableLabel *>(QStringLiteral("keep"));
    QVERIFY(line->isHidden() && keep->isHidden());
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    QVERIFY(line->isVisible() && keep->isVisible());
    QVERIFY(!QFile::exists(m_rig->data.filePath(QStringLiteral("current.xml"))));
    QTest::mouseClick(keep, Qt::LeftButton);
    QVERIFY(keep->isHidden());
    QVERIFY(line->isHidden());
    QVERIFY(m_rig->readFile(QStringLiteral("current.xml")).contains("type=\"midi\""));
}

void tst_MappingOnPage::whatCouldNotBeKeptStaysSaid()
{
    makePage();
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    QVERIFY(QDir().mkdir(m_rig->data.filePath(QStringLiteral("current.xml"))));
    auto *keep = m_page->findChild<ClickableLabel *>(QStringLiteral("keep"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("was left as it is")));
    QTest::mouseClick(keep, Qt::LeftButton);
    QVERIFY(keep->isVisible());
    QVERIFY(m_page->findChild<QLabel *>(QStringLiteral("notKept"))->isVisible());
    const auto *failure = m_page->findChild<QLabel *>(QStringLiteral("failure"), Qt::FindDirectChildrenOnly);
    QVERIFY(failure->isVisible());
    QCOMPARE(failure->accessibleName(), QStringLiteral("Not kept: not a regular file"));

    QVERIFY(QDir().rmdir(m_rig->data.filePath(QStringLiteral("current.xml"))));
    QTest::mouseClick(keep, Qt::LeftButton);
    QVERIFY(keep->isHidden() && failure->isHidden());
}

void tst_MappingOnPage::whatNoFileHoldsOfTheKnobIsSaid()
{
    makePage();
    menu(3)->loadMidiKnob(0, 1, 17, 127, 0, false, true, 16, false, true, false);
    const auto *line = m_page->findChild<QLabel *>(QStringLiteral("notKept"));
    auto *keep = m_page->findChild<ClickableLabel *>(QStringLiteral("keep"));
    QCOMPARE(line->accessibleName(), QStringLiteral("Your changes end with the program."));
    QTest::mouseClick(keep, Qt::LeftButton);
    QVERIFY(keep->isHidden());
    QVERIFY(line->isVisible());
    QCOMPARE(line->accessibleName(), QStringLiteral("The knob's encoding ends with the program."));
    menu(3)->loadShorcut(0, 65, -1, -1, QStringLiteral("A"));
    QVERIFY(line->isHidden());
}

void tst_MappingOnPage::aSaveThatFailedIsSaidWhereTheUserLooks()
{
    m_rig->writeFile(QStringLiteral("custom.xml"), "<ZR><MAPPING");
    const LogCapture log;
    makePage();
    const auto *failure = m_page->findChild<QLabel *>(QStringLiteral("failure"), Qt::FindDirectChildrenOnly);
    auto *dialog = m_page->findChild<SaveDialog *>();
    dialog->show();
    QTest::keyClick(dialog->findChild<QLineEdit *>(), Qt::Key_Return);
    QVERIFY(dialog->isVisible());
    QCOMPARE(dialog->findChild<QLabel *>(QStringLiteral("failure"))->accessibleName(),
             QStringLiteral("Not saved: it is no mapping file; a copy of it lies beside it"));
    QVERIFY(failure->isHidden());
    dialog->hide();
    m_page->deleteMap(QStringLiteral("mine"));
    QVERIFY(failure->isVisible());
    QVERIFY(failure->accessibleName().startsWith(QStringLiteral("Not deleted: ")));
    QVERIFY(QFile::remove(m_rig->data.filePath(QStringLiteral("custom.xml"))));
    m_page->saveCurrentMap(QStringLiteral("mine"));
    m_page->deleteMap(QStringLiteral("mine"));
    QVERIFY(failure->isHidden());
}

// Whatever changes the mapping, the page and the device follow.
void tst_MappingOnPage::whatIsTakenBackIsShownStoredAndActs()
{
    makePage();
    menu(3)->loadShorcut(0, 65, -1, -1, QStringLiteral("A"));
    menu(3)->loadShorcut(0, 66, -1, -1, QStringLiteral("B"));
    QVERIFY(m_rig->mappings.takeBack());
    QCOMPARE(menu(3)->assignment(Layer::Normal).key1, 65);
    QVERIFY(menu(3)->toolTip().contains(QStringLiteral("Presses A")));
    QCOMPARE(m_rig->store.value(QStringLiteral("tonAction.Normal.label")).toString(), QStringLiteral("A"));
    QVERIFY(m_page->findChild<QLabel *>(QStringLiteral("notKept"))->isVisible());
    press(3);
    QCOMPARE(m_rig->engine.recorder.lines().constFirst(), QStringLiteral("key 65 down"));
    m_rig->mappings.assign(3, Layer::Normal, shortCut());
    QCOMPARE(menu(3)->assignment(Layer::Normal), shortCut());
}

void tst_MappingOnPage::savingTwiceUnderANameListsBothAndDeletingTakesTheFirst()
{
    makePage();
    menu(3)->loadShorcut(0, 65, -1, -1, QStringLiteral("A"));
    m_page->saveCurrentMap(QStringLiteral("Mine"));
    menu(3)->loadShorcut(0, 66, -1, -1, QStringLiteral("B"));
    m_page->saveCurrentMap(QStringLiteral("Mine"));
    QCOMPARE(customMaps().size(), 2);
    m_page->deleteMap(QStringLiteral("Mine"));
    const auto left = customMaps();
    QCOMPARE(left.size(), 1);
    QCOMPARE(left.constFirst()->actions[3][Layer::Normal].key1, 66);
}

void tst_MappingOnPage::setMappingActsButWritesNothing()
{
    makePage();
    ZRButtonMap map(QStringLiteral("Other"));
    map.actions[3][Layer::Normal].key1 = 70;
    map.actions[3][Layer::Normal].key2 = -1;
    map.actions[3][Layer::Normal].key3 = -1;
    m_page->newMap(&map);
    press(3);
    QCOMPARE(m_rig->engine.recorder.lines().constFirst(), QStringLiteral("key 70 down"));
    QVERIFY(!QFile::exists(m_rig->data.filePath(QStringLiteral("current.xml"))));
    QVERIFY(m_page->findChild<QLabel *>(QStringLiteral("notKept"))->isVisible());
}

void tst_MappingOnPage::anOlderVersionsActionsAreUpgradedOnce()
{
    const QString key = QStringLiteral("tonAction.Normal.key1");
    m_rig->store.setValue(QStringLiteral("ZR.ver"), QStringLiteral("1.09"));
    m_rig->store.setValue(key, 17);
    makePage();
    QCOMPARE(m_rig->store.value(key).toInt(), SPECIAL_ACTION);
    QCOMPARE(menu(3)->assignment(Layer::Normal).key1, SPECIAL_ACTION);
    m_rig->store.setValue(key, 17); // by this version, so it is meant
    makePage();
    QCOMPARE(m_rig->store.value(key).toInt(), 17);
}

void tst_MappingOnPage::libraryWithoutMappingsTakesNoneAway()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("First", 65) + mapping("Second", 66)));
    makePage();
    m_rig->writeFile(QStringLiteral("ZR.xml"), "<html><body><p>Sign in</p></body></html>");
    QTest::ignoreMessage(QtWarningMsg, "The library holds no mapping: the selector keeps those that it has");
    Q_EMIT m_rig->mapUpdate.dowloadFinished(true);
    QCOMPARE(m_rig->mappings.library().size(), 2);
    QCOMPARE(m_rig->mappings.defaultMapping()->name, QStringLiteral("First"));
}

void tst_MappingOnPage::theNameLineNamesWhatIsInUse()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("First", 65) + mapping("Second", 66)));
    makePage();
    const auto *line = m_page->findChild<QLabel *>(QStringLiteral("nameLine"));
    QVERIFY(QRect(60, 120, 780, 490).contains(line->geometry())); // what is printed
    QCOMPARE(line->text(), QStringLiteral("First"));
    m_page->newMap(m_rig->mappings.library().at(1));
    QCOMPARE(line->text(), QStringLiteral("Second"));
    m_rig->mappings.assign(4, Layer::Normal, shortCut{67, -1, -1, QStringLiteral("C")});
    QCOMPARE(line->text(), QString::fromUtf8("Second \u2022"));
    QVERIFY(line->accessibleName().contains(QLatin1String("changed")));
    QVERIFY(m_rig->mappings.saveAs(QStringLiteral("Mine")));
    QCOMPARE(line->text(), QStringLiteral("Mine"));

    shortCut vertical;
    vertical.key1 = SPECIAL_ACTION;
    vertical.key2 = static_cast<int>(SpecialAction::Vertical);
    m_rig->mappings.assign(5, Layer::Normal, vertical);
    press(5);
    QVERIFY(line->text().endsWith(QLatin1String("Knob: Vertical")));
}

void tst_MappingOnPage::theNameLineOutlivesTheProgram()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("First", 65) + mapping("Second", 66)));
    makePage();
    m_page->newMap(m_rig->mappings.library().at(1));
    QVERIFY(m_rig->mappings.keep());
    QCOMPARE(m_rig->store.value(QStringLiteral("Extra.Mapping")).toString(), QStringLiteral("Second"));
    m_page->newMap(m_rig->mappings.library().at(0)); // not kept
    QCOMPARE(m_rig->store.value(QStringLiteral("Extra.Mapping")).toString(), QStringLiteral("Second"));
}

void tst_MappingOnPage::theNameGoesWithTheWorkingCopy()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("Work", 65) + mapping("Other", 66)));
    m_rig->writeFile(QStringLiteral("current.xml"), document(mapping("current_map", 65)));
    m_rig->store.setValue(QStringLiteral("Extra.Mapping"), QStringLiteral("Work"));
    makePage();
    MappingSession &mappings = m_rig->mappings;
    const auto names = [&] {
        return QStringList{mappings.name(), m_page->findChild<NameLine *>()->text(),
                           m_rig->store.value(QStringLiteral("Extra.Mapping")).toString()};
    };
    const QString work = QStringLiteral("Work");
    const QStringList isWork{work, work, work};
    QCOMPARE(names(), isWork);

    m_page->newMap(mappings.library().at(1));
    QVERIFY(mappings.keepWithLastStep());
    QCOMPARE(mappings.name(), QStringLiteral("Other"));
    QVERIFY(mappings.takeBack());
    QCOMPARE(names(), isWork);

    QVERIFY(QDir(m_rig->data.path()).mkdir(QStringLiteral("copy")));
    m_rig->writeFile(QStringLiteral("copy/current.xml"), document(mapping("current_map", 70)));
    QVERIFY(mappings.restore(m_rig->data.filePath(QStringLiteral("copy/current.xml"))));
    QCOMPARE(mappings.name(), QString());
    QVERIFY(!names().contains(work));
    QVERIFY(mappings.takeBack());
    QCOMPARE(names(), isWork);
}

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    AppFonts::load();
    tst_MappingOnPage test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_MappingOnPage.moc"
