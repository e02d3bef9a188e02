#include "app/frame/AppFonts.h"
#include "app/frame/ClickableLabel.h"
#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingReader.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/page/PageRig.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"
#include "ui/DeviceIndicators.h"
#include "ui/DevicePicture.h"
#include "ui/NameLine.h"
#include "ui/SaveDialog.h"
#include "ui/ShortcutKey.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QGraphicsEffect>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSlider>
#include <QToolTip>
#include <QtTest>

class tst_DeviceZR : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void widgetsStandWhereTheyBelong();
    void marksStandOverTheirControls();
    void marksFollowTheDevice();
    void marksChangeAtMostOnceAFrame();
    void marksOfAHiddenPageAreRightWhenItIsShown();
    void withoutStoredSlidersBothStandAtOne();
    void aFirstStartStoresWhatTheSlidersShow();
    void movedSliderIsStoredAndReadAgain();
    void slowEndIsAtTheLeft();
    void printerButtonIsNotDimmedAtRest();
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
    void settingsThatCannotBeStoredAreSaid();
    void theStartupBoxShowsWhatIsSo();
    void whatIsTakenBackIsShownStoredAndActs();
    void savingTwiceUnderANameListsBothAndDeletingTakesTheFirst();
    void setMappingActsButWritesNothing();
    void anOlderVersionsActionsAreUpgradedOnce();
    void versionIsStoredWhenThePageIsBuilt();
    void startupBoxFollowsTheEntryWheneverThePageShows();
    void dimmingEndsWhenADialogHides();
    void noticeStandsOnTheBottomLine();
    void dialogsAskThePagesDesktopForKeys();
    void lostDeviceClosesTheDialogs();
    void updateNoticeFollowsTheDownload();
    void libraryWithoutMappingsTakesNoneAway();
    void drawingTellsWhatItsControlsDoAlsoWithoutAMapping();
    void controlsTellWhatTheyDoInEachLayer();
    void everyControlHasANameForScreenReaders();
    void refusedInputIsSaidAtTheBottom();
    void theNameLineNamesWhatIsInUse();
    void theNameLineOutlivesTheProgram();
    void theNameGoesWithTheWorkingCopy();
    void theHeldLayerAndThePressedBoxStandOut();
    void whatWasSentIsSaidForTwoSeconds();
    void whatHasNoWordsTakesNoneAway();
    void aHiddenPageSaysNothing();

private:
    void makePage();
    void press(int button)
    {
        Q_EMIT m_serial->onButtonpress(button, true);
        Q_EMIT m_serial->onButtonpress(button, false);
    }
    ComboMenu *menu(int control) const
    {
        for (ComboMenu *each : m_page->findChildren<ComboMenu *>()) {
            if (each->id() == control) {
                return each;
            }
        }
        return nullptr;
    }
    QList<ZRButtonMap *> customMaps();
    static QByteArray mapping(const char *name, int key, const char *attributes = "");
    static QByteArray document(const QByteArray &mappings);

    std::unique_ptr<PageRig> m_rig;
    std::unique_ptr<SerialProtocol> m_serial;
    std::unique_ptr<QWidget> m_window;
    DeviceZR *m_page = nullptr;
    std::unique_ptr<QObject> m_owner;
};

QByteArray tst_DeviceZR::mapping(const char *name, int key, const char *attributes)
{
    return QByteArray("<MAPPING software=\"") + name + "\" " + attributes +
           "><BUTTON id=\"3\"><NORMAL label=\"key\"><KEY1 type=\"int\">" + QByteArray::number(key) +
           "</KEY1></NORMAL></BUTTON></MAPPING>";
}

QByteArray tst_DeviceZR::document(const QByteArray &mappings)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?><ZR>" + mappings + "</ZR>";
}

void tst_DeviceZR::init()
{
    m_rig = std::make_unique<PageRig>();
    m_serial = PageRig::makeSerial();
    m_window = std::make_unique<QWidget>();
    m_window->resize(900, 650);
    m_owner = std::make_unique<QObject>();
}

void tst_DeviceZR::cleanup()
{
    m_window.reset();
    m_serial.reset();
    m_rig.reset();
}

void tst_DeviceZR::makePage()
{
    m_page = m_rig->makePage(m_window.get(), m_serial.get(), nullptr);
    m_page->resize(900, 650);
    m_window->show();
}

QList<ZRButtonMap *> tst_DeviceZR::customMaps()
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

void tst_DeviceZR::widgetsStandWhereTheyBelong()
{
    makePage();
    for (int row = 0; row < 5; ++row) {
        QCOMPARE(menu(row)->geometry(), QRect(88, 239 + 47 * row, 160, 41));
        QCOMPARE(menu(row + 5)->geometry(), QRect(650, 239 + 47 * row, 160, 41));
    }
    const auto *picture = m_page->findChild<DevicePicture *>();
    QCOMPARE(picture->geometry(), QRect(248, 258, 402, 192));
    QCOMPARE(picture->styleSheet(), QStringLiteral("background-image: url(:/icons/zr.png)"));
    QCOMPARE(m_page->findChild<ComboMapping *>()->geometry(), QRect(680, 12, 160, 51));
    const auto *printer = m_page->findChild<ClickableLabel *>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(printer->geometry(), QRect(630, 12, 41, 41));
    QCOMPARE(printer->styleSheet(),
             QStringLiteral("background-color: rgb(73, 90, 232);background-image: url(:/icons/printer.png);"
                            "background-position: center center;background-repeat: no"));
    const auto *startup = m_page->findChild<QCheckBox *>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(startup->geometry(), QRect(24, 625, 200, 15));
    QCOMPARE(startup->text(), QStringLiteral("Launch on startup"));
    QCOMPARE(startup->styleSheet(), QStringLiteral("QCheckBox { color : rgba(255,255,255,0.40); }"));
    QCOMPARE(startup->font().family(), QStringLiteral("Source Sans Pro"));
    QCOMPARE(startup->font().pointSize(), 10);
    QCOMPARE(startup->font().weight(), 50);
    const auto sliders = m_page->findChildren<QSlider *>();
    QCOMPARE(sliders.at(0)->geometry(), QRect(362, 527, 176, 16));
    QCOMPARE(sliders.at(1)->geometry(), QRect(362, 568, 176, 16));

    const struct {
        const char *text;
        QRect place;
        int size;
        int weight;
        const char *alpha;
    } rows[] = {
        {"VELTRIX", {260, 129, 378, 44}, 37, 25, "0.87"},
        {"Knob and buttons settings.", {295, 185, 301, 60}, 20, 25, "0.57"},
        {"Knob sensitivity adjustment", {349, 490, 200, 20}, 13, 50, "0.87"},
        {"NORMAL", {315, 524, 38, 11}, 8, 50, "0.87"},
        {"SHIFT 1", {315, 564, 34, 11}, 8, 50, "0.87"},
        {"Slow", {359, 590, 30, 14}, 11, 50, "0.60"},
        {"Fast", {520, 590, 26, 14}, 11, 50, "0.60"},
        {"MIDI: Not Available", {690, 625, 200, 15}, 10, 50, "0.40"},
    };
    for (const auto &row : rows) {
        const QLabel *found = nullptr;
        for (const QLabel *label : m_page->findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly)) {
            found = label->text() == QLatin1String(row.text) ? label : found;
        }
        QVERIFY2(found, row.text);
        QCOMPARE(found->geometry(), row.place);
        QCOMPARE(found->font().family(), QStringLiteral("Source Sans Pro"));
        QCOMPARE(found->font().pointSize(), row.size);
        QCOMPARE(found->font().weight(), row.weight);
        QCOMPARE(found->styleSheet(),
                 QStringLiteral("QLabel { color : rgba(255,255,255,%1); }").arg(QLatin1String(row.alpha)));
    }
}

void tst_DeviceZR::marksStandOverTheirControls()
{
    makePage();
    const QPoint places[] = {{417, 338}, {392, 322}, {366, 338}, {366, 368}, {417, 368},
                             {463, 338}, {488, 338}, {513, 338}, {502, 368}, {476, 368}};
    const int pictures[] = {5, 5, 5, 7, 7, 4, 2, 3, 1, 1};
    const auto marks = m_page->findChildren<QLabel *>(QStringLiteral("controlMark"));
    QCOMPARE(marks.size(), 10);
    for (int control = 0; control < 10; ++control) {
        QCOMPARE(marks[control]->mapTo(m_page, QPoint()), places[control]);
        QCOMPARE(marks[control]->size(), QSize(20, 20));
        QCOMPARE(marks[control]->styleSheet(),
                 QStringLiteral("background-image: url(:/icons/buttonszr/%1.png)").arg(pictures[control]));
        QVERIFY(marks[control]->isHidden());
    }
    const auto *knob = m_page->findChild<QLabel *>(QStringLiteral("knobMark"));
    QCOMPARE(knob->mapTo(m_page, QPoint()), QPoint(392, 352));
    const auto *left = m_page->findChild<QLabel *>(QStringLiteral("leftArrow"));
    const auto *right = m_page->findChild<QLabel *>(QStringLiteral("rightArrow"));
    QCOMPARE(QRect(left->mapTo(m_page, QPoint()), left->size()), QRect(373, 325, 58, 39));
    QCOMPARE(QRect(right->mapTo(m_page, QPoint()), right->size()), QRect(373, 325, 58, 39));
    QCOMPARE(left->styleSheet(), QStringLiteral("background-color:rgba(0,0,0,0); "
                                                "background-image:url(:/icons/buttonszr/arrow_left.png)"));
    QCOMPARE(right->styleSheet(), QStringLiteral("background-color:rgba(0,0,0,0); "
                                                 "background-image: url(:/icons/buttonszr/arrow_right.png)"));
    QVERIFY(knob->isHidden() && left->isHidden() && right->isHidden());
}

void tst_DeviceZR::marksFollowTheDevice()
{
    makePage();
    const auto marks = m_page->findChildren<QLabel *>(QStringLiteral("controlMark"));
    const auto *knob = m_page->findChild<QLabel *>(QStringLiteral("knobMark"));
    const auto *left = m_page->findChild<QLabel *>(QStringLiteral("leftArrow"));
    Q_EMIT m_serial->onButtonpress(7, true);
    QVERIFY(marks[7]->isHidden()); // the action does not wait for the mark
    QTRY_VERIFY(marks[7]->isVisible());
    Q_EMIT m_serial->onKnobevent('D');
    QTRY_VERIFY(knob->isVisible());
    Q_EMIT m_serial->onKnobevent('L');
    QTRY_VERIFY(left->isVisible());
    Q_EMIT m_serial->onKnobevent('U');
    Q_EMIT m_serial->onButtonpress(7, false);
    QTRY_VERIFY(knob->isHidden() && left->isHidden() && marks[7]->isHidden());
}

// A burst of presses is shown no more often than a screen shows anything, and its end is shown.
void tst_DeviceZR::marksChangeAtMostOnceAFrame()
{
    makePage();
    auto *mark = m_page->findChildren<QLabel *>(QStringLiteral("controlMark")).at(7);
    struct : QObject {
        bool eventFilter(QObject *, QEvent *event) override
        {
            changes += event->type() == QEvent::Show || event->type() == QEvent::Hide ? 1 : 0;
            return false;
        }
        int changes = 0;
    } counter;
    mark->installEventFilter(&counter);
    QTest::qWait(50);
    QElapsedTimer elapsed;
    elapsed.start();
    for (int i = 0; i < 100; ++i) {
        Q_EMIT m_serial->onButtonpress(7, true);
        QCoreApplication::processEvents();
        Q_EMIT m_serial->onButtonpress(7, false);
        QCoreApplication::processEvents();
    }
    QVERIFY2(counter.changes <= elapsed.elapsed() / 16 + 1, qPrintable(QString::number(counter.changes)));
    QVERIFY(counter.changes > 0);
    Q_EMIT m_serial->onButtonpress(7, true);
    QTRY_VERIFY(mark->isVisible());
}

void tst_DeviceZR::marksOfAHiddenPageAreRightWhenItIsShown()
{
    makePage();
    const auto marks = m_page->findChildren<QLabel *>(QStringLiteral("controlMark"));
    Q_EMIT m_serial->onButtonpress(7, true);
    QTRY_VERIFY(marks[7]->isVisible());
    m_page->hide();
    Q_EMIT m_serial->onButtonpress(7, false);
    Q_EMIT m_serial->onButtonpress(4, true);
    m_page->show();
    QVERIFY(marks[7]->isHidden());
    QVERIFY(marks[4]->isVisible());
}

void tst_DeviceZR::withoutStoredSlidersBothStandAtOne()
{
    makePage();
    const auto sliders = m_page->findChildren<QSlider *>();
    QCOMPARE(sliders.at(0)->value(), 1);
    QCOMPARE(sliders.at(1)->value(), 1);
}

void tst_DeviceZR::aFirstStartStoresWhatTheSlidersShow()
{
    makePage();
    QCOMPARE(m_rig->engine.stored.value(QStringLiteral("Slider.Normal")), QVariant(1));
    QCOMPARE(m_rig->engine.stored.value(QStringLiteral("Slider.Shift1")), QVariant(1));
}

void tst_DeviceZR::movedSliderIsStoredAndReadAgain()
{
    makePage();
    m_page->findChildren<QSlider *>().at(0)->setValue(80);
    m_page->findChildren<QSlider *>().at(1)->setValue(30);
    QCOMPARE(m_rig->engine.stored.value(QStringLiteral("Slider.Normal")).toInt(), 80);
    QCOMPARE(m_rig->engine.stored.value(QStringLiteral("Slider.Shift1")).toInt(), 30);
    const KnobSettings again(m_rig->engine.stored);
    QCOMPARE(again.sensitivityNormal(), 80);
    QCOMPARE(again.sensitivityShift1(), 30);
}

void tst_DeviceZR::slowEndIsAtTheLeft()
{
    makePage();
    for (const QSlider *slider : m_page->findChildren<QSlider *>()) {
        QVERIFY(slider->invertedAppearance());
        QCOMPARE(slider->tickPosition(), QSlider::TicksBelow);
        QCOMPARE(slider->minimum(), 1);
        QCOMPARE(slider->maximum(), 100);
    }
}

void tst_DeviceZR::printerButtonIsNotDimmedAtRest()
{
    makePage();
    const auto *printer = m_page->findChild<ClickableLabel *>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(printer->graphicsEffect() && !printer->graphicsEffect()->isEnabled());
}

void tst_DeviceZR::withoutAWorkingCopyTheLibrarysDefaultIsUsed()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"),
                     document(mapping("First", 65) + mapping("Second", 66, "default=\"yes\"")));
    makePage();
    press(3);
    QCOMPARE(m_rig->engine.recorder.lines(),
             QStringList({QStringLiteral("key 66 down"), QStringLiteral("key 66 up")}));
    QVERIFY(!QFile::exists(m_rig->data.filePath(QStringLiteral("current.xml"))));
}

void tst_DeviceZR::workingCopyWinsOverTheLibrary()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("First", 65)));
    m_rig->writeFile(QStringLiteral("current.xml"), document(mapping("current_map", 67)));
    makePage();
    press(3);
    QCOMPARE(m_rig->engine.recorder.lines().constFirst(), QStringLiteral("key 67 down"));
    QCOMPARE(menu(3)->assignment(Layer::Normal).key1, 67);
}

void tst_DeviceZR::brokenWorkingCopyLeavesTheMenusAsStored()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("First", 65)));
    m_rig->writeFile(QStringLiteral("current.xml"), "<ZR><MAPPING");
    makePage();
    press(3);
    QCOMPARE(m_rig->engine.recorder.lines(), QStringList());
    QCOMPARE(m_rig->readFile(QStringLiteral("current.xml")), QByteArray("<ZR><MAPPING"));
}

void tst_DeviceZR::withoutAnyMappingTheSettingsActAndStayAsTheyAre()
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

void tst_DeviceZR::chosenActionActsFromTheNextEvent()
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

void tst_DeviceZR::onlyACapturedShortcutWritesTheWorkingCopy()
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

void tst_DeviceZR::whatIsNotKeptIsSaidAndKeptOnRequest()
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

void tst_DeviceZR::whatCouldNotBeKeptStaysSaid()
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

void tst_DeviceZR::whatNoFileHoldsOfTheKnobIsSaid()
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

void tst_DeviceZR::aSaveThatFailedIsSaidWhereTheUserLooks()
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

void tst_DeviceZR::settingsThatCannotBeStoredAreSaid()
{
    makePage();
    const auto *failure = m_page->findChild<QLabel *>(QStringLiteral("failure"), Qt::FindDirectChildrenOnly);
    QVERIFY(failure->isHidden());
    Q_EMIT m_rig->store.writtenChanged(false);
    QVERIFY(failure->isVisible());
    QCOMPARE(failure->accessibleName(), QStringLiteral("The settings cannot be stored."));
    Q_EMIT m_rig->store.writtenChanged(true);
    QVERIFY(failure->isHidden());
}

void tst_DeviceZR::theStartupBoxShowsWhatIsSo()
{
    makePage();
    auto *box = m_page->findChild<QCheckBox *>(QString(), Qt::FindDirectChildrenOnly);
    const auto *failure = m_page->findChild<QLabel *>(QStringLiteral("failure"), Qt::FindDirectChildrenOnly);
    m_rig->autostart.refuses = true;
    box->click();
    QVERIFY(!box->isChecked());
    QVERIFY(failure->isVisible());
    m_rig->autostart.refuses = false;
    box->click();
    QVERIFY(box->isChecked());
    QVERIFY(failure->isHidden());
}

// Whatever changes the mapping, the page and the device follow.
void tst_DeviceZR::whatIsTakenBackIsShownStoredAndActs()
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

void tst_DeviceZR::savingTwiceUnderANameListsBothAndDeletingTakesTheFirst()
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

void tst_DeviceZR::setMappingActsButWritesNothing()
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

void tst_DeviceZR::anOlderVersionsActionsAreUpgradedOnce()
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

void tst_DeviceZR::versionIsStoredWhenThePageIsBuilt()
{
    makePage();
    QCOMPARE(m_rig->store.value(QStringLiteral("ZR.ver")).toString(), QStringLiteral("1.10"));
}

void tst_DeviceZR::startupBoxFollowsTheEntryWheneverThePageShows()
{
    makePage();
    auto *box = m_page->findChild<QCheckBox *>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(!box->isChecked());
    box->setChecked(true);
    QVERIFY(m_rig->autostart.exists());
    m_page->hide();
    m_rig->autostart.remove(); // by somebody else
    m_page->show();
    QVERIFY(!box->isChecked());
    QVERIFY(!m_rig->autostart.exists());
}

void tst_DeviceZR::dimmingEndsWhenADialogHides()
{
    makePage();
    ShortcutKey late(m_page); // as a menu makes it when it is asked for it
    auto *save = m_page->findChild<SaveDialog *>();
    for (int times = 0; times < 2; ++times) {
        save->show();
        QVERIFY(m_page->graphicsEffect() && m_page->graphicsEffect()->isEnabled());
        save->hide();
        QVERIFY(!m_page->graphicsEffect()->isEnabled());
        late.show(0);
        QVERIFY(m_page->graphicsEffect()->isEnabled());
        late.hide();
        QVERIFY(!m_page->graphicsEffect()->isEnabled());
    }
}

void tst_DeviceZR::noticeStandsOnTheBottomLine()
{
    makePage();
    QVERIFY(!m_page->findChild<QLabel *>(QStringLiteral("notice")));
    delete m_page;
    m_rig->notice = QStringLiteral("Keys reach X11 programs only.");
    makePage();
    const auto *notice = m_page->findChild<QLabel *>(QStringLiteral("notice"));
    QVERIFY(notice && notice->isVisibleTo(m_page));
    QCOMPARE(notice->text(), m_rig->notice);
    QVERIFY(m_page->rect().contains(notice->geometry()));
}

void tst_DeviceZR::dialogsAskThePagesDesktopForKeys()
{
    makePage();
    ShortcutKey late(m_page);
    late.show(0);
    QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, 0, 0x70, 0); // as Windows numbers F1
    QCoreApplication::sendEvent(&late, &event);
    const QList<QLabel *> labels = late.findChildren<QLabel *>();
    QVERIFY(std::any_of(labels.begin(), labels.end(),
                        [](const QLabel *label) { return label->text() == QLatin1String("F1"); }));
}

void tst_DeviceZR::lostDeviceClosesTheDialogs()
{
    makePage();
    auto *dialog = m_page->findChild<SaveDialog *>();
    dialog->show();
    QSignalSpy pages(m_page, &DeviceZR::displayControlPanel);
    Q_EMIT m_serial->portChange(QString());
    QVERIFY(dialog->isHidden());
    QCOMPARE(pages.size(), 1);
    QCOMPARE(pages.constFirst().constFirst().toString(), QString());
}

void tst_DeviceZR::updateNoticeFollowsTheDownload()
{
    makePage();
    const auto *notice = m_page->findChild<QLabel *>(QStringLiteral("mapNotice"));
    QVERIFY(notice->isHidden());
    Q_EMIT m_rig->mapUpdate.updateStarted();
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), QStringLiteral("Updating maps"));
    Q_EMIT m_rig->mapUpdate.dowloadFinished(false);
    QVERIFY(notice->isHidden());
    QCOMPARE(notice->text(), QStringLiteral("Updating maps"));
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("New", 65)));
    Q_EMIT m_rig->mapUpdate.dowloadFinished(true);
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), QStringLiteral("New maps available!"));
    m_page->hide();
    m_page->show();
    QVERIFY(notice->isHidden());
}

void tst_DeviceZR::libraryWithoutMappingsTakesNoneAway()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("First", 65) + mapping("Second", 66)));
    makePage();
    m_rig->writeFile(QStringLiteral("ZR.xml"), "<html><body><p>Sign in</p></body></html>");
    QTest::ignoreMessage(QtWarningMsg, "The library holds no mapping: the selector keeps those that it has");
    Q_EMIT m_rig->mapUpdate.dowloadFinished(true);
    QCOMPARE(m_rig->mappings.library().size(), 2);
    QCOMPARE(m_rig->mappings.defaultMapping()->name, QStringLiteral("First"));
}

void tst_DeviceZR::drawingTellsWhatItsControlsDoAlsoWithoutAMapping()
{
    makePage();
    auto *picture = m_page->findChild<DevicePicture *>();
    const QPoint place = DevicePicture::mark(3).center() - DevicePicture::place.topLeft();
    QHelpEvent help(QEvent::ToolTip, place, picture->mapToGlobal(place));
    QCoreApplication::sendEvent(picture, &help);
    QVERIFY(QToolTip::text().startsWith(QLatin1String("<b>Button 3</b><br>Normal: ")));
    QCOMPARE(QToolTip::text(), menu(3)->toolTip()); // the drawing and the box say the same
    QToolTip::hideText();
}

void tst_DeviceZR::controlsTellWhatTheyDoInEachLayer()
{
    makePage();
    for (const Layer layer : Layers::all) {
        QVERIFY(!menu(3)->inWords(layer).isEmpty());
    }
    for (const QWidget *widget : m_page->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        const bool control =
            qobject_cast<const ComboMenu *>(widget) || qobject_cast<const QSlider *>(widget) ||
            qobject_cast<const QCheckBox *>(widget) || qobject_cast<const ClickableLabel *>(widget);
        QVERIFY2(!control || !widget->toolTip().isEmpty(), widget->metaObject()->className());
    }
}

void tst_DeviceZR::everyControlHasANameForScreenReaders()
{
    makePage();
    for (const QWidget *widget : m_page->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        const bool named = !widget->accessibleName().isEmpty() || qobject_cast<const QLabel *>(widget) ||
                           qobject_cast<const QCheckBox *>(widget) || widget->focusPolicy() == Qt::NoFocus;
        QVERIFY2(named, widget->metaObject()->className());
    }
}

void tst_DeviceZR::theNameLineNamesWhatIsInUse()
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

void tst_DeviceZR::theNameLineOutlivesTheProgram()
{
    m_rig->writeFile(QStringLiteral("ZR.xml"), document(mapping("First", 65) + mapping("Second", 66)));
    makePage();
    m_page->newMap(m_rig->mappings.library().at(1));
    QVERIFY(m_rig->mappings.keep());
    QCOMPARE(m_rig->store.value(QStringLiteral("Extra.Mapping")).toString(), QStringLiteral("Second"));
    m_page->newMap(m_rig->mappings.library().at(0)); // not kept
    QCOMPARE(m_rig->store.value(QStringLiteral("Extra.Mapping")).toString(), QStringLiteral("Second"));
}

void tst_DeviceZR::theNameGoesWithTheWorkingCopy()
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

void tst_DeviceZR::theHeldLayerAndThePressedBoxStandOut()
{
    makePage();
    shortCut shift;
    shift.key1 = SPECIAL_ACTION;
    shift.key2 = static_cast<int>(SpecialAction::Shift1);
    for (const Layer layer : Layers::all) {
        m_rig->mappings.assign(3, layer, shift);
    }
    shortCut named;
    named.key1 = 65;
    named.label = QStringLiteral("WWWWW");
    m_rig->mappings.assign(6, Layer::Shift1, named);
    const auto *outline = menu(3)->findChild<QWidget *>(QStringLiteral("pressed"));
    const QImage before = menu(6)->grab().toImage();
    QVERIFY(!outline->isVisible());
    Q_EMIT m_serial->onButtonpress(3, true);
    QVERIFY(!outline->isVisible()); // not before what was done
    QTRY_VERIFY(outline->isVisible());
    QTRY_VERIFY(menu(6)->grab().toImage() != before);
    QVERIFY(!menu(6)->findChild<QWidget *>(QStringLiteral("pressed"))->isVisible());
    Q_EMIT m_serial->onButtonpress(3, false);
    QTRY_VERIFY(!outline->isVisible());
    QTRY_COMPARE(menu(6)->grab().toImage(), before);
}

void tst_DeviceZR::whatWasSentIsSaidForTwoSeconds()
{
    makePage();
    m_rig->mappings.assign(3, Layer::Normal, shortCut{17, 16, 'S', QStringLiteral("Save")});
    const auto *line = m_page->findChild<QLabel *>(QStringLiteral("sent"));
    QVERIFY(line->isHidden());
    press(3);
    QTRY_VERIFY(line->isVisible());
    QCOMPARE(line->text(), QString::fromUtf8("3 \u00b7 Ctrl + Shift + S"));
    for (const QWidget *widget : m_page->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (widget != line && widget->geometry() != m_page->rect() && !widget->isHidden()) {
            QVERIFY2(!widget->geometry().intersects(line->geometry()), widget->metaObject()->className());
        }
    }
    QTRY_VERIFY_WITH_TIMEOUT(line->isHidden(), 4000);
}

void tst_DeviceZR::whatHasNoWordsTakesNoneAway()
{
    makePage();
    m_rig->mappings.assign(3, Layer::Normal, shortCut{17, 16, 'S', QStringLiteral("Save")});
    shortCut arrows;
    arrows.key1 = SPECIAL_ACTION;
    arrows.key2 = static_cast<qint32>(SpecialAction::UpDownKeys);
    m_rig->mappings.assign(4, Layer::Normal, arrows);
    press(4);
    const auto *line = m_page->findChild<QLabel *>(QStringLiteral("sent"));
    QTRY_VERIFY(line->text().startsWith(QLatin1String("4 ")));
    press(3); // and, before it is shown, a hand on the knob
    Q_EMIT m_serial->onKnobevent('D');
    QTRY_COMPARE(line->text(), QString::fromUtf8("3 \u00b7 Ctrl + Shift + S"));
    Q_EMIT m_serial->onKnobevent('U');
}

void tst_DeviceZR::aHiddenPageSaysNothing()
{
    makePage();
    m_window->hide();
    press(3);
    QTest::qWait(100);
    m_window->show();
    QVERIFY(m_page->findChild<QLabel *>(QStringLiteral("sent"))->isHidden());
}

void tst_DeviceZR::refusedInputIsSaidAtTheBottom()
{
    m_rig->notice = QStringLiteral("Keys reach X11 programs only.");
    makePage();
    QVERIFY(!m_page->findChild<QLabel *>(QStringLiteral("refusedInput")));
    m_page->showRefusedInput();
    auto *line = m_page->findChild<QLabel *>(QStringLiteral("refusedInput"));
    QVERIFY(line && !line->isHidden());
    QVERIFY(line->text().endsWith(QStringLiteral("as administrator."))); // whole
    QVERIFY(!m_page->findChild<QLabel *>(QStringLiteral("notice")));     // in its place

    // Its tip is one as all others on the page: on a white ground.
    line->setToolTip(QStringLiteral("a tip"));
    QHelpEvent help(QEvent::ToolTip, {1, 1}, line->mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(line, &help);
    int tips = 0;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->inherits("QTipLabel") && window->isVisible()) {
            QCOMPARE(window->grab().toImage().pixelColor(window->width() / 2, 3), QColor(Qt::white));
            ++tips;
        }
    }
    QCOMPARE(tips, 1);
    QToolTip::hideText();
    for (const QWidget *widget : m_page->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (widget == line || widget->geometry() == m_page->rect()) {
            continue; // or the layer on which the indicators are drawn
        }
        QVERIFY2(widget->isHidden() || !widget->geometry().intersects(line->geometry()),
                 qPrintable(widget->objectName() + QLatin1Char(' ') +
                            QLatin1String(widget->metaObject()->className())));
    }
}

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    AppFonts::load();
    tst_DeviceZR test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_DeviceZR.moc"
