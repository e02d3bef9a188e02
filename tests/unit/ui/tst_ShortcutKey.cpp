#include "engine/platform/Desktop.h"
#include "tests/support/main/Main.h"
#include "tests/unit/ui/DialogRig.h"
#include "ui/ShortcutKey.h"

#include <QLoggingCategory>
#include <QSignalSpy>

namespace
{

/// A system whose key events carry the codes themselves.
class PlainDesktop : public Desktop
{
public:
    int virtualKeyFromNative(quint32 nativeVirtualKey, quint32) const override
    {
        return knowsKeys ? int(nativeVirtualKey) : 0;
    }
    bool isComposited() const override { return true; }

    bool knowsKeys = true;
};

const QString prompt = QStringLiteral("type a shorcut");

/// The dialog over its window, and what it has reported.
struct Rig {
    Rig()
        : dialog(window.page)
        , shortcuts(&dialog, &ShortcutKey::newShorcut)
        , display(withText<QLabel>(dialog, prompt))
    {
        dialog.setDesktop(&desktop);
    }

    /// A press of a key with this virtual-key code, as the toolkit reports it.
    void press(quint32 virtualKey, int key = Qt::Key_unknown, bool again = false)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, 0, virtualKey, 0, QString(), again);
        QCoreApplication::sendEvent(&dialog, &event);
    }

    QPoint middleOf(const QString &picture) const
    {
        const QLabel *button = withPicture(dialog, picture + QLatin1String("_0"));
        return button ? button->mapTo(&dialog, button->rect().center()) : QPoint();
    }
    void pressMouse(const QString &picture)
    {
        QTest::mousePress(&dialog, Qt::LeftButton, Qt::NoModifier, middleOf(picture));
    }
    void click(const QString &picture)
    {
        const QPoint place = middleOf(picture);
        QTest::mousePress(&dialog, Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseRelease(&dialog, Qt::LeftButton, Qt::NoModifier, place);
    }

    PageWindow window;
    PlainDesktop desktop;
    ShortcutKey dialog;
    QSignalSpy shortcuts;
    QLabel *display;
};

QVariantList report(int type, int key1, int key2, int key3, const QString &text)
{
    return {type, key1, key2, key3, text};
}

} // namespace

class tst_ShortcutKey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { AppFonts::load(); }

    void thePanelIsTheSmallOne();
    void theTitleAndTheDisplayLookAsDesigned();
    void thePictureButtonsStandWhereDesigned_data();
    void thePictureButtonsStandWhereDesigned();
    void isBuiltHidden();
    void controlsHaveAccessibleNames();

    void ctrlCtrlSIsCtrlAndS();
    void altF4IsRecordedAlsoWhereItAsksTheDialogToClose();
    void ofFourKeysThreeAreReportedAndFourShown();
    void okWithoutKeysLeavesTheDialogOpen();
    void theWinButtonIsCode91();
    void theAltAndCtrlButtonsAreCodes18And17();
    void aButtonIsPressedWhileTheMouseIs_data();
    void aButtonIsPressedWhileTheMouseIs();
    void showingResetsTheButtons();
    void clearEmptiesTheDisplay();
    void keysSurviveCancel();
    void keysSurviveBeingHidden();
    void okWithKeysOfBeforeReportsThePrompt();
    void okForgetsTheKeys();
    void reportsTheLayerOfTheLastShow();
    void everyKeyIsRecorded_data();
    void everyKeyIsRecorded();
    void aKeyWithoutANativeCodeHasTheToolkits();
    void aKeyThatCannotBeTranslatedIsNotRecorded();
    void theMarksOfOtherRecordsAreNotRecorded();
    void aKeyThatWasDownAtTheOpeningIsNotRecorded();
    void aRepeatThatTheToolkitTakesForAPressIsNotRecorded();
    void aHeldKeyCountsOnce();
    void aKeyThatWasDownBeforeIsNotPartOfIt();
    void thePageIsDimmedAndThePromptSetOnShow();
    void aClickElsewhereDoesNothing();
    void aLongShortcutShowsItsEnd();
    void logsTheShortcutWhenAskedTo();
};

void tst_ShortcutKey::thePanelIsTheSmallOne()
{
    const Rig rig;
    QCOMPARE(panelOf(rig.dialog)->size(), QSize(304, 137));
    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    const QPoint window((screen.width() - 900) / 2, (screen.height() - 650) / 2);
    QCOMPARE(panelOf(rig.dialog)->pos() + window,
             QPoint((screen.width() - 1 - 303) / 2, (screen.height() - 1 - 136) / 2));
}

void tst_ShortcutKey::theTitleAndTheDisplayLookAsDesigned()
{
    const Rig rig;
    const QString family = QStringLiteral("Source Sans Pro ExtraLight");
    compareLook(withText<QLabel>(rig.dialog, QStringLiteral("Shorcut Key")),
                {{105, 8, 90, 16}, QStringLiteral("QLabel { color :#414141;}"), family, 12, 75});
    compareLook(rig.display, {{10, 63, 282, 32},
                              QStringLiteral("QLabel { color : black;  background-color:white}"),
                              family,
                              16,
                              50});
    QCOMPARE(rig.display->alignment(), Qt::AlignCenter);
}

void tst_ShortcutKey::thePictureButtonsStandWhereDesigned_data()
{
    QTest::addColumn<QString>("picture");
    QTest::addColumn<QRect>("place");
    QTest::newRow("Win") << QStringLiteral("win_4_0") << QRect(10, 38, 87, 15);
    QTest::newRow("Alt") << QStringLiteral("win_7_0") << QRect(108, 38, 87, 15);
    QTest::newRow("Ctrl") << QStringLiteral("win_6_0") << QRect(205, 38, 87, 15);
    QTest::newRow("cancel") << QStringLiteral("cancel_0") << QRect(10, 105, 87, 22);
    QTest::newRow("clear") << QStringLiteral("clear_0") << QRect(108, 105, 87, 22);
    QTest::newRow("ok") << QStringLiteral("ok_0") << QRect(205, 105, 87, 22);
}

void tst_ShortcutKey::thePictureButtonsStandWhereDesigned()
{
    QFETCH(QString, picture);
    const Rig rig;
    const QLabel *button = withPicture(rig.dialog, picture);
    QVERIFY(button);
    QTEST(button->geometry(), "place");
    QCOMPARE(button->parentWidget(), panelOf(rig.dialog));
    const QPixmap pixmap(QStringLiteral(":/buttons/%1.png").arg(picture));
    QCOMPARE(pixmap.size(), button->size());
}

void tst_ShortcutKey::isBuiltHidden()
{
    const Rig rig;
    QVERIFY(rig.dialog.isHidden());
    QVERIFY(rig.dialog.isWindow());
    QVERIFY(!rig.window.isDimmed());
}

void tst_ShortcutKey::controlsHaveAccessibleNames()
{
    const Rig rig;
    QCOMPARE(rig.dialog.accessibleName(), QStringLiteral("Shorcut Key"));
    for (const char *picture : {"win_4_0", "win_7_0", "win_6_0", "cancel_0", "clear_0", "ok_0"}) {
        QVERIFY(!withPicture(rig.dialog, QLatin1String(picture))->accessibleName().isEmpty());
    }
}

void tst_ShortcutKey::ctrlCtrlSIsCtrlAndS()
{
    Rig rig;
    rig.dialog.show(0);
    rig.press(17);
    rig.press(17);
    rig.press(83);
    QCOMPARE(rig.display->text(), QStringLiteral("Ctrl + S"));
    rig.click(QStringLiteral("ok"));
    QCOMPARE(rig.shortcuts.size(), 1);
    QCOMPARE(rig.shortcuts.at(0), report(0, 17, 83, -1, QStringLiteral("Ctrl + S")));
    QVERIFY(rig.dialog.isHidden());
}

void tst_ShortcutKey::altF4IsRecordedAlsoWhereItAsksTheDialogToClose()
{
    Rig rig;
    rig.dialog.show(0);
    const auto askToClose = [&rig] {
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close);
        QCoreApplication::instance()->notify(&rig.dialog, &close); // which leaves it as the desktop sends it
        return close.isAccepted();
    };
    QVERIFY(askToClose()); // nobody has pressed Alt
    rig.press(18);
    QVERIFY(!askToClose());
    QVERIFY(!rig.dialog.isHidden());
    QCOMPARE(rig.display->text(), QStringLiteral("Alt + F4"));
}

void tst_ShortcutKey::ofFourKeysThreeAreReportedAndFourShown()
{
    Rig rig;
    rig.dialog.show(1);
    for (const quint32 key : {17U, 16U, 18U, 65U}) {
        rig.press(key);
    }
    QCOMPARE(rig.display->text(), QStringLiteral("Ctrl + ⇧ + Alt + A"));
    rig.click(QStringLiteral("ok"));
    QCOMPARE(rig.shortcuts.at(0), report(1, 17, 16, 18, QStringLiteral("Ctrl + ⇧ + Alt + A")));
}

void tst_ShortcutKey::okWithoutKeysLeavesTheDialogOpen()
{
    Rig rig;
    rig.dialog.show(0);
    rig.pressMouse(QStringLiteral("ok"));
    QVERIFY(withPicture(rig.dialog, QStringLiteral("ok_1")));
    QVERIFY(rig.dialog.isVisible());
    QCOMPARE(rig.shortcuts.size(), 0);
    QCOMPARE(rig.display->text(), prompt);
}

void tst_ShortcutKey::theWinButtonIsCode91()
{
    Rig rig;
    rig.dialog.show(2);
    rig.click(QStringLiteral("win_4"));
    QCOMPARE(rig.display->text(), QStringLiteral("Win"));
    rig.click(QStringLiteral("ok"));
    QCOMPARE(rig.shortcuts.at(0), report(2, 91, -1, -1, QStringLiteral("Win")));
}

void tst_ShortcutKey::theAltAndCtrlButtonsAreCodes18And17()
{
    Rig rig;
    rig.dialog.show(0);
    rig.click(QStringLiteral("win_7"));
    rig.click(QStringLiteral("win_6"));
    rig.click(QStringLiteral("win_6"));
    QCOMPARE(rig.display->text(), QStringLiteral("Alt + Ctrl"));
    rig.click(QStringLiteral("ok"));
    QCOMPARE(rig.shortcuts.at(0), report(0, 18, 17, -1, QStringLiteral("Alt + Ctrl")));
}

void tst_ShortcutKey::aButtonIsPressedWhileTheMouseIs_data()
{
    QTest::addColumn<QString>("picture");
    for (const char *picture : {"win_4", "win_7", "win_6", "clear", "ok"}) {
        QTest::newRow(picture) << QString::fromLatin1(picture);
    }
}

void tst_ShortcutKey::aButtonIsPressedWhileTheMouseIs()
{
    QFETCH(QString, picture);
    Rig rig;
    rig.dialog.show(0);
    rig.pressMouse(picture);
    QVERIFY(withPicture(rig.dialog, picture + QLatin1String("_1")));
    QTest::mouseRelease(&rig.dialog, Qt::LeftButton);
    QVERIFY(withPicture(rig.dialog, picture + QLatin1String("_0")));
}

void tst_ShortcutKey::showingResetsTheButtons()
{
    Rig rig;
    rig.dialog.show(0);
    rig.pressMouse(QStringLiteral("cancel"));
    QVERIFY(rig.dialog.isHidden());
    QVERIFY(withPicture(rig.dialog, QStringLiteral("cancel_1")));
    rig.dialog.show(0);
    for (const char *picture : {"win_4_0", "win_7_0", "win_6_0", "cancel_0", "clear_0", "ok_0"}) {
        QVERIFY2(withPicture(rig.dialog, QLatin1String(picture)), picture);
    }
}

void tst_ShortcutKey::clearEmptiesTheDisplay()
{
    Rig rig;
    rig.dialog.show(0);
    rig.press(65);
    rig.click(QStringLiteral("clear"));
    QCOMPARE(rig.display->text(), QString());
    rig.press(66);
    QCOMPARE(rig.display->text(), QStringLiteral("B"));
    rig.click(QStringLiteral("clear"));
    rig.click(QStringLiteral("ok"));
    QCOMPARE(rig.shortcuts.size(), 0);
    QVERIFY(rig.dialog.isVisible());
}

void tst_ShortcutKey::keysSurviveCancel()
{
    Rig rig;
    rig.dialog.show(0);
    rig.press(17);
    rig.click(QStringLiteral("cancel"));
    QVERIFY(rig.dialog.isHidden());
    QCOMPARE(rig.shortcuts.size(), 0);
    rig.dialog.show(0);
    QCOMPARE(rig.display->text(), prompt);
    rig.press(17); // is there already, and shows again
    QCOMPARE(rig.display->text(), QStringLiteral("Ctrl"));
    rig.press(83);
    QCOMPARE(rig.display->text(), QStringLiteral("Ctrl + S"));
}

void tst_ShortcutKey::keysSurviveBeingHidden()
{
    Rig rig;
    rig.dialog.show(0);
    rig.press(17);
    rig.window.hide();
    rig.window.show();
    rig.dialog.show(0);
    rig.press(83);
    QCOMPARE(rig.display->text(), QStringLiteral("Ctrl + S"));
}

// What is reported is what the display says.
void tst_ShortcutKey::okWithKeysOfBeforeReportsThePrompt()
{
    Rig rig;
    rig.dialog.show(0);
    rig.press(17);
    rig.click(QStringLiteral("cancel"));
    rig.dialog.show(0);
    rig.click(QStringLiteral("ok"));
    QCOMPARE(rig.shortcuts.at(0), report(0, 17, -1, -1, prompt));
}

void tst_ShortcutKey::okForgetsTheKeys()
{
    Rig rig;
    rig.dialog.show(0);
    rig.press(17);
    rig.click(QStringLiteral("ok"));
    rig.dialog.show(0);
    rig.press(83);
    QCOMPARE(rig.display->text(), QStringLiteral("S"));
}

void tst_ShortcutKey::reportsTheLayerOfTheLastShow()
{
    Rig rig;
    for (const int layer : {2, 0, 1}) {
        rig.dialog.show(layer);
        rig.press(65);
        rig.click(QStringLiteral("ok"));
        QCOMPARE(rig.shortcuts.takeFirst().at(0).toInt(), layer);
    }
}

void tst_ShortcutKey::everyKeyIsRecorded_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<quint32>("virtualKey");
    QTest::addColumn<QString>("text");
    QTest::newRow("Escape") << int(Qt::Key_Escape) << 27U << QStringLiteral("Esc");
    QTest::newRow("Tab") << int(Qt::Key_Tab) << 9U << QStringLiteral("⇥");
    QTest::newRow("Shift+Tab") << int(Qt::Key_Backtab) << 9U << QStringLiteral("⇥");
    QTest::newRow("Return") << int(Qt::Key_Return) << 13U << QStringLiteral("⏎");
    QTest::newRow("Space") << int(Qt::Key_Space) << 32U << QStringLiteral("˽");
    QTest::newRow("F1") << int(Qt::Key_F1) << 112U << QStringLiteral("F1");
    QTest::newRow("Menu") << int(Qt::Key_Menu) << 93U << QStringLiteral("]");
    QTest::newRow("Left") << int(Qt::Key_Left) << 37U << QStringLiteral("←");
}

void tst_ShortcutKey::everyKeyIsRecorded()
{
    QFETCH(int, key);
    QFETCH(quint32, virtualKey);
    QFETCH(QString, text);
    Rig rig;
    rig.dialog.show(0);
    rig.press(virtualKey, key);
    QVERIFY(rig.dialog.isVisible());
    QCOMPARE(rig.display->text(), text);
    rig.click(QStringLiteral("ok"));
    QCOMPARE(rig.shortcuts.at(0).at(1).toInt(), int(virtualKey));
}

void tst_ShortcutKey::aKeyWithoutANativeCodeHasTheToolkits()
{
    Rig rig;
    rig.dialog.show(0);
    QTest::keyPress(&rig.dialog, Qt::Key_Backtab);
    QTest::keyPress(&rig.dialog, Qt::Key_A);
    rig.click(QStringLiteral("ok"));
    QCOMPARE(rig.shortcuts.at(0), report(0, 0x1000002, 65, -1, QStringLiteral("⇥ + A")));
}

void tst_ShortcutKey::aKeyThatCannotBeTranslatedIsNotRecorded()
{
    const QString refusal = QStringLiteral("this key cannot be used");
    Rig rig;
    rig.dialog.show(0);
    rig.desktop.knowsKeys = false;
    rig.press(0x1008ff2e, Qt::Key_WWW);
    QCOMPARE(rig.display->text(), refusal);
    QCOMPARE(rig.display->accessibleDescription(), refusal);
    rig.click(QStringLiteral("ok"));
    QVERIFY(rig.dialog.isVisible()); // nothing was typed
    rig.desktop.knowsKeys = true;
    rig.press(65);
    QCOMPARE(rig.display->text(), QStringLiteral("A"));
    rig.desktop.knowsKeys = false;
    rig.press(0x1008ff2f, Qt::Key_Sleep);
    QCOMPARE(rig.display->text(), refusal);
    rig.click(QStringLiteral("ok"));
    QCOMPARE(rig.shortcuts.at(0), report(0, 65, -1, -1, QStringLiteral("A")));
}

void tst_ShortcutKey::theMarksOfOtherRecordsAreNotRecorded()
{
    for (const int mark : {int(Qt::Key_Dead_Hook), int(Qt::Key_Dead_Horn), int(Qt::Key_unknown)}) {
        Rig rig;
        rig.dialog.show(0);
        QKeyEvent event(QEvent::KeyPress, mark, Qt::NoModifier);
        QCoreApplication::sendEvent(&rig.dialog, &event);
        rig.click(QStringLiteral("ok"));
        QVERIFY2(rig.shortcuts.isEmpty(), qPrintable(QString::number(mark, 16)));
    }
}

void tst_ShortcutKey::aKeyThatWasDownAtTheOpeningIsNotRecorded()
{
    Rig rig;
    rig.dialog.show(0);
    rig.press(13, Qt::Key_Return, true);
    rig.press(13, Qt::Key_Return, true);
    QCOMPARE(rig.display->text(), prompt);
    rig.press(83);
    QCOMPARE(rig.display->text(), QStringLiteral("S"));
    rig.press(13, Qt::Key_Return); // it was let go in between
    QCOMPARE(rig.display->text(), QStringLiteral("S + ⏎"));
}

void tst_ShortcutKey::aRepeatThatTheToolkitTakesForAPressIsNotRecorded()
{
    Rig rig;
    rig.dialog.show(0);
    const auto send = [&rig](QEvent::Type type, ulong time) {
        QKeyEvent event(type, Qt::Key_Return, Qt::NoModifier, 36, 13, 0);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(&rig.dialog, &event);
    };
    send(QEvent::KeyRelease, 1000);
    send(QEvent::KeyPress, 1000);
    QCOMPARE(rig.display->text(), prompt);
    send(QEvent::KeyRelease, 1500);
    send(QEvent::KeyPress, 1600);
    QCOMPARE(rig.display->text(), QStringLiteral("⏎"));
}

// Return, say, still held from the menu: the system repeats it.
void tst_ShortcutKey::aKeyThatWasDownBeforeIsNotPartOfIt()
{
    Rig rig;
    rig.dialog.show(0);
    rig.press(13, Qt::Key_Return, true);
    rig.press(65, Qt::Key_A);
    rig.press(13, Qt::Key_Return, true);
    QCOMPARE(rig.display->text(), QStringLiteral("A"));
    rig.press(13, Qt::Key_Return); // let go, and pressed anew
    QCOMPARE(rig.display->text(), QString::fromUtf8("A + \u23ce"));
}

void tst_ShortcutKey::aHeldKeyCountsOnce()
{
    Rig rig;
    rig.dialog.show(0);
    rig.press(65);
    rig.press(65, Qt::Key_A, true);
    rig.press(65, Qt::Key_A, true);
    QCOMPARE(rig.display->text(), QStringLiteral("A"));
}

void tst_ShortcutKey::thePageIsDimmedAndThePromptSetOnShow()
{
    Rig rig;
    QSignalSpy blur(&rig.dialog, &ShortcutKey::setBlur);
    for (int shows = 1; shows <= 2; ++shows) {
        rig.dialog.show(0);
        QCOMPARE(rig.display->text(), prompt);
        QCOMPARE(blur.size(), shows);
        QVERIFY(rig.window.isDimmed());
        rig.press(65);
        rig.click(QStringLiteral("cancel"));
    }
}

void tst_ShortcutKey::aClickElsewhereDoesNothing()
{
    Rig rig;
    rig.dialog.show(0);
    const QPoint corner = panelOf(rig.dialog)->pos();
    for (const QPoint &place :
         {QPoint(1, 1), corner + QPoint(150, 80), corner + QPoint(100, 110), QPoint(450, 600)}) {
        QTest::mouseClick(&rig.dialog, Qt::LeftButton, Qt::NoModifier, place);
    }
    QVERIFY(rig.dialog.isVisible());
    QCOMPARE(rig.display->text(), prompt);
}

void tst_ShortcutKey::aLongShortcutShowsItsEnd()
{
    Rig rig;
    rig.dialog.show(0);
    for (const quint32 key : {44U, 144U, 34U, 33U, 36U, 35U, 19U, 12U}) {
        rig.press(key);
    }
    QVERIFY(rig.display->text().endsWith(QStringLiteral("pause + clr")));
    QVERIFY(rig.display->text() != QStringLiteral("PrtScn + NumL + PgDn + PgUp + home + end + pause + clr"));
    QVERIFY(rig.display->fontMetrics().horizontalAdvance(rig.display->text()) <= rig.display->width());
    rig.click(QStringLiteral("ok"));
    QCOMPARE(
        rig.shortcuts.at(0),
        report(0, 44, 144, 34, QStringLiteral("PrtScn + NumL + PgDn + PgUp + home + end + pause + clr")));
}

void tst_ShortcutKey::logsTheShortcutWhenAskedTo()
{
    QLoggingCategory::setFilterRules(QStringLiteral("veltrix.ui.debug=true"));
    Rig rig;
    rig.dialog.show(0);
    rig.press(17);
    rig.press(83);
    QTest::ignoreMessage(QtDebugMsg, "Emited Shortcut: Ctrl + S");
    rig.click(QStringLiteral("ok"));
    QLoggingCategory::setFilterRules(QString());
}

QTEST_MAIN(tst_ShortcutKey)

#include "tst_ShortcutKey.moc"
