#include "app/frame/AppFonts.h"
#include "app/frame/ClickableLabel.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/mapping/MappingSamples.h"
#include "tests/unit/app/PageInWindow.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"
#include "ui/DevicePicture.h"
#include "ui/SaveDialog.h"
#include "ui/ShortcutKey.h"

#include <QApplication>
#include <QCheckBox>
#include <QGraphicsEffect>
#include <QHelpEvent>
#include <QLabel>
#include <QMetaMethod>
#include <QSlider>
#include <QTest>
#include <QToolTip>

/// The page itself: where its widgets stand, the settings that it shows, its notices, and what it tells
/// readers.
class tst_DeviceZR : public QObject, private PageInWindow
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void signalsAndSlotsStandInOrder();
    void widgetsStandWhereTheyBelong();
    void withoutStoredSlidersBothStandAtOne();
    void aFirstStartStoresWhatTheSlidersShow();
    void movedSliderIsStoredAndReadAgain();
    void slowEndIsAtTheLeft();
    void printerButtonIsNotDimmedAtRest();
    void settingsThatCannotBeStoredAreSaid();
    void theStartupBoxShowsWhatIsSo();
    void versionIsStoredWhenThePageIsBuilt();
    void startupBoxFollowsTheEntryWheneverThePageShows();
    void dimmingEndsWhenADialogHides();
    void noticeStandsOnTheBottomLine();
    void dialogsAskThePagesDesktopForKeys();
    void updateNoticeFollowsTheDownload();
    void eachShowAsksTheServiceOnce();
    void drawingTellsWhatItsControlsDoAlsoWithoutAMapping();
    void controlsTellWhatTheyDoInEachLayer();
    void everyControlHasANameForScreenReaders();
    void refusedInputIsSaidAtTheBottom();
};

void tst_DeviceZR::signalsAndSlotsStandInOrder()
{
    QStringList names;
    const QMetaObject &page = DeviceZR::staticMetaObject;
    for (int i = page.methodOffset(); i < page.methodCount(); ++i) {
        names << QString::fromLatin1(page.method(i).methodSignature());
    }
    QCOMPARE(names, (QStringList{QStringLiteral("displayControlPanel(QString)"),
                                 QStringLiteral("gameControl(char)"),
                                 QStringLiteral("onDeviceConnected(QString)"),
                                 QStringLiteral("restoreMouse()"),
                                 QStringLiteral("newMap(ZRButtonMap*)"),
                                 QStringLiteral("replyFinished(QNetworkReply*)"),
                                 QStringLiteral("dowloadFinished(bool)"),
                                 QStringLiteral("printCurrentView()"),
                                 QStringLiteral("saveCurrentMap(QString)"),
                                 QStringLiteral("deleteMap(QString)"),
                                 QStringLiteral("setKnobSensitivityNormal(int)"),
                                 QStringLiteral("setKnobSensitivityShift1(int)"),
                                 QStringLiteral("onButtonpress(int,bool)"),
                                 QStringLiteral("onKnobevent(char)"),
                                 QStringLiteral("onKnobevent(int)"),
                                 QStringLiteral("setLaunchOnStartup(bool)"),
                                 QStringLiteral("onUserMovingMouse()"),
                                 QStringLiteral("reEnableZR()"),
                                 QStringLiteral("saveCurrentMapAsDefault()"),
                                 QStringLiteral("loadDefaultMap(ZRButtonMap*)")}));
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

void tst_DeviceZR::versionIsStoredWhenThePageIsBuilt()
{
    m_rig->buildPage(m_window.get(), m_serial.get(), nullptr); // before any mapping is read
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

void tst_DeviceZR::eachShowAsksTheServiceOnce()
{
    const LogCapture log;
    makePage();
    const auto asked = [&log] { return log.linesHolding(QStringLiteral("Checking server for updates...")); };
    QCOMPARE(asked().size(), 1);
    m_page->hide();
    QCOMPARE(asked().size(), 1);
    m_page->show();
    QCOMPARE(asked().size(), 2);
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
