#include "tests/platform/ui_dialogs/DialogOnServer.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/KeyWindow.h"
#include "tests/support/xserver/RunOnServer.h"
#include "ui/MidiMenu.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

/// The dialogs over their window: what they take hold of and let go, and what real clicks and keys do in
/// them.
class tst_Dialogs : public QObject, private DialogOnServer
{
    Q_OBJECT

public:
    explicit tst_Dialogs(XServer &server)
        : DialogOnServer(server)
    {
    }

private Q_SLOTS:
    void initTestCase() { beginAll(); }
    void init() { begin(); }
    void cleanup() { end(); }

    void takesMouseAndKeyboardOnceItIsShown();
    void triesAgainWhileSomebodyElseHoldsThem();
    void letsGoOnEveryWayOut_data();
    void letsGoOnEveryWayOut();
    void letsGoWhenItsWindowIsTakenAwayAndTakesHoldAgain();
    void theMidiDialogTakesNothing();

    void everyKeyGoesToTheDialog();
    void everyClickGoesToTheDialog();
    void realClicksAndKeysMakeAShortcut();
    void realKeysAndClicksMakeAMidiMessage();
    void escapeClosesTheMidiDialog();
    void theDialogCoversItsWindowAndMovesWithIt();
    void thePageShowsAroundTheWhitePanel_data();
    void thePageShowsAroundTheWhitePanel();

private:
    QPoint pixelOf(const QWidget *widget) const;
    void click(const QWidget *widget);
    QLabel *button(const char *picture) const;
};

QPoint tst_Dialogs::pixelOf(const QWidget *widget) const
{
    return widget->mapToGlobal(widget->rect().center()) * widget->devicePixelRatio();
}

void tst_Dialogs::click(const QWidget *widget)
{
    m_user->moveMouse(pixelOf(widget));
    m_user->mouseButton(true);
    m_user->mouseButton(false);
}

QLabel *tst_Dialogs::button(const char *picture) const
{
    for (QLabel *label : m_dialog->findChildren<QLabel *>()) {
        if (label->styleSheet().contains(QLatin1String(picture))) {
            return label;
        }
    }
    return nullptr;
}

void tst_Dialogs::takesMouseAndKeyboardOnceItIsShown()
{
    m_dialog->show(0);
    QTRY_VERIFY(isTaken());
    QCOMPARE(QWidget::mouseGrabber(), m_dialog.get());
    QCOMPARE(QWidget::keyboardGrabber(), m_dialog.get());
}

void tst_Dialogs::triesAgainWhileSomebodyElseHoldsThem()
{
    QVERIFY(m_user->takeAll());
    m_dialog->show(0);
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
    m_user->giveBack();
    QTRY_VERIFY(isTaken());
}

void tst_Dialogs::letsGoOnEveryWayOut_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"ok", "cancel", "hide", "close", "page hidden", "window hidden", "window closed",
                            "quit", "destroyed", "page destroyed"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_Dialogs::letsGoOnEveryWayOut()
{
    QFETCH(QString, way);
    openShortcut();
    if (way == QLatin1String("ok")) {
        m_user->tap(HomeRow1);
        QTRY_COMPARE(m_desktop.codes.size(), 1);
        click(button("ok_0"));
        QTRY_VERIFY(m_dialog->isHidden());
    } else if (way == QLatin1String("cancel")) {
        click(button("cancel_0"));
        QTRY_VERIFY(m_dialog->isHidden());
    } else if (way == QLatin1String("hide")) {
        m_dialog->hide();
    } else if (way == QLatin1String("close")) {
        m_dialog->close();
    } else if (way == QLatin1String("page hidden")) {
        m_window->page->hide();
    } else if (way == QLatin1String("window hidden")) {
        m_window->hide();
    } else if (way == QLatin1String("window closed")) {
        m_window->close();
    } else if (way == QLatin1String("quit")) {
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        QCoreApplication::exec();
    } else if (way == QLatin1String("destroyed")) {
        m_dialog.reset();
    } else if (way == QLatin1String("page destroyed")) {
        Q_UNUSED(m_dialog.release())
        m_window.reset();
    }
    QTRY_VERIFY(isFree());
    QVERIFY(!QWidget::mouseGrabber());
    QVERIFY(!QWidget::keyboardGrabber());
}

void tst_Dialogs::letsGoWhenItsWindowIsTakenAwayAndTakesHoldAgain()
{
    openShortcut();
    m_user->unmap(m_dialog->winId());
    QTRY_VERIFY(!QWidget::keyboardGrabber());
    QVERIFY(isFree());
    m_user->map(m_dialog->winId());
    QTRY_VERIFY(isTaken());
}

void tst_Dialogs::theMidiDialogTakesNothing()
{
    MidiMenu dialog(m_window->page);
    dialog.setDesktop(&m_desktop);
    dialog.show(0, 10, shortCut());
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QVERIFY(isFree());
}

void tst_Dialogs::everyKeyGoesToTheDialog()
{
    KeyWindow other(m_server.display());
    QVERIFY(other.isReady());
    openShortcut();
    other.takeAll();
    for (const int keycode :
         {int(TabKey), int(EscapeKey), int(ReturnKey), int(SuperL), int(LeftCtrl), int(HomeRow1)}) {
        m_user->tap(keycode);
    }
    QTRY_COMPARE(m_desktop.codes, (QVector<int>{9, 27, 13, 91, 17, 65}));
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(KeyWindow::names(other.takeAll()), QStringList());
    m_dialog->hide();
    QTRY_VERIFY(isFree());
    m_desktop.codes.clear();
    m_user->tap(HomeRow1);
    QCoreApplication::processEvents();
    QCOMPARE(m_desktop.codes, QVector<int>());
}

void tst_Dialogs::everyClickGoesToTheDialog()
{
    KeyWindow other(m_server.display());
    QVERIFY(other.isReady());
    openShortcut();
    other.takeAll();
    m_user->moveMouse({20, 20});
    m_user->mouseButton(true);
    m_user->mouseButton(false);
    QCoreApplication::processEvents();
    QCOMPARE(KeyWindow::names(other.takeAll()), QStringList());
    QVERIFY(m_dialog->isVisible());
}

void tst_Dialogs::realClicksAndKeysMakeAShortcut()
{
    QSignalSpy shortcuts(m_dialog.get(), &ShortcutKey::newShorcut);
    openShortcut(2);
    click(button("win_4_0"));
    m_user->key(ShiftR, true);
    m_user->tap(DigitRow1);
    m_user->key(ShiftR, false);
    QTRY_COMPARE(m_desktop.codes.size(), 2);
    click(button("ok_0"));
    QTRY_COMPARE(shortcuts.size(), 1);
    QCOMPARE(shortcuts.at(0), (QVariantList{2, 91, 16, 49, QStringLiteral("Win + ⇧ + 1")}));
}

void tst_Dialogs::realKeysAndClicksMakeAMidiMessage()
{
    MidiMenu dialog(m_window->page);
    dialog.setDesktop(&m_desktop);
    QSignalSpy midi(&dialog, &MidiMenu::newMidi);
    dialog.show(1, 13, shortCut());
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    m_user->tap(DigitRow1); // replaces what is selected
    m_user->tap(DigitRow2);
    QTRY_COMPARE(midi.size(), 2);
    QCOMPARE(midi.last().at(1).toInt(), 12);
    for (QCheckBox *box : dialog.findChildren<QCheckBox *>()) {
        if (box->text() == QLatin1String("Note on touch")) {
            click(box);
        }
    }
    QTRY_COMPARE(midi.last().at(5).toBool(), true);
    m_user->tap(ReturnKey);
    QTRY_VERIFY(dialog.isHidden());
}

void tst_Dialogs::escapeClosesTheMidiDialog()
{
    MidiMenu dialog(m_window->page);
    dialog.setDesktop(&m_desktop);
    QSignalSpy midi(&dialog, &MidiMenu::newMidi);
    dialog.show(1, 13, shortCut());
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    m_user->tap(EscapeKey);
    QTRY_VERIFY(dialog.isHidden());
    QCOMPARE(midi.size(), 0);
}

void tst_Dialogs::theDialogCoversItsWindowAndMovesWithIt()
{
    openShortcut();
    QCOMPARE(m_dialog->geometry(), m_window->geometry());
    m_window->move(31, 17);
    QTRY_COMPARE(m_dialog->geometry(), QRect(31, 17, 900, 650));
}

void tst_Dialogs::thePageShowsAroundTheWhitePanel_data()
{
    QTest::addColumn<int>("dialog");
    QTest::newRow("shortcut") << 0;
    QTest::newRow("midi") << 1;
    QTest::newRow("midi-for-knob") << 2;
    QTest::newRow("shortcut-typed") << 3;
    QTest::newRow("midi-invalid") << 4;
}

void tst_Dialogs::thePageShowsAroundTheWhitePanel()
{
    QFETCH(int, dialog);
    MidiMenu midi(m_window->page);
    midi.setDesktop(&m_desktop);
    shortCut record;
    record.channel = 3;
    record.cc = 60;
    record.v_on = 100;
    record.note = true;
    record.m3fh = true;
    const bool isMidi = dialog == 1 || dialog == 2 || dialog == 4;
    QWidget *shown = isMidi ? static_cast<QWidget *>(&midi) : m_dialog.get();
    if (dialog == 2) {
        midi.showKnob(0, 3, record);
    } else if (isMidi) {
        midi.show(0, 13, record);
    } else {
        openShortcut();
    }
    QVERIFY(QTest::qWaitForWindowExposed(shown));
    if (dialog == 3) {
        m_user->key(LeftCtrl, true);
        for (const int keycode : {int(ShiftL), int(HomeRow1), int(TabKey)}) {
            m_user->tap(keycode);
        }
        m_user->key(LeftCtrl, false);
        QTRY_COMPARE(m_desktop.codes.size(), 4);
        m_user->moveMouse(pixelOf(button("ok_0")));
    } else if (dialog == 4) {
        QTest::keyClicks(midi.findChildren<QLineEdit *>().at(3), QStringLiteral("9"));
    }
    shown->repaint();
    const QWidget *panel = shown->findChild<QWidget *>(QStringLiteral("panel"));
    const auto screenshot = [shown] {
        const QRect place = shown->geometry();
        return QGuiApplication::primaryScreen()
            ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
            .toImage();
    };
    const auto colour = [shown, &screenshot](const QPoint &place) {
        return screenshot().pixelColor(place * shown->devicePixelRatio());
    };
    QTRY_COMPARE(colour(panel->pos() + QPoint(2, 2)), QColor(Qt::white));
    QTRY_COMPARE(colour(panel->geometry().bottomRight() - QPoint(2, 2)), QColor(Qt::white));
    // The page's own colour, a little darker.
    const QColor around = colour({100, 500});
    QVERIFY2(around.blue() > 100 && around.blue() < 0xd9, qPrintable(around.name()));
    const QString folder = qEnvironmentVariable("VELTRIX_PICTURES");
    if (!folder.isEmpty()) {
        QVERIFY(screenshot().save(QStringLiteral("%1/%2@%3x.png")
                                      .arg(folder, QString::fromLatin1(QTest::currentDataTag()))
                                      .arg(shown->devicePixelRatio())));
    }
}

int main(int argc, char *argv[])
{
    return runOnServer<tst_Dialogs>(argc, argv, XServer::Options::atScale());
}

#include "tst_Dialogs.moc"
