#include "app/frame/AppFonts.h"
#include "app/frame/ZRBaseWindow.h"
#include "engine/platform/x11/X11Desktop.h"
#include "engine/platform/x11/X11InputInjector.h"
#include "engine/platform/xkb/KeysymTable.h"
#include "tests/platform/ui_dialogs/XClient.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/KeyWindow.h"
#include "tests/support/xserver/XServer.h"
#include "ui/MidiMenu.h"
#include "ui/ShortcutKey.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QWindow>
#include <QtTest>

#include <memory>

namespace
{

// Keycodes of the server's keyboard, which are those of every evdev keyboard.
enum Keycode {
    EscapeKey = 9,
    DigitRow1 = 10,
    DigitRow2 = 11,
    DigitRow6 = 15,
    TabKey = 23,
    RowAbove1 = 24,  // Q on a us keyboard
    RowAbove11 = 34, // [
    ReturnKey = 36,
    LeftCtrl = 37,
    HomeRow1 = 38,  // A
    HomeRow10 = 47, // ;
    ShiftL = 50,
    AltL = 64,
    Keypad1 = 87,
    KeypadDecimal = 91,
    ShiftR = 62,
    AltR = 108,
    SuperL = 133,
};

struct PageWindow : QWidget {
    PageWindow()
        : QWidget(nullptr, Qt::FramelessWindowHint)
        , page(new ZRBaseWindow(nullptr, this))
    {
        const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
        setFixedSize(900, 650);
        setStyleSheet(QStringLiteral("background-color:#5342d9; color: white;"));
        page->setGeometry(rect());
        auto *text = new QLabel(QStringLiteral("<h1>The page behind</h1>"), page);
        text->setGeometry(330, 90, 300, 60);
        move((screen.width() - 900) / 2, (screen.height() - 650) / 2);
        show();
    }
    ZRBaseWindow *page;
};

bool isLock(int virtualKey)
{
    return virtualKey == 0x14 || virtualKey == 0x90 || virtualKey == 0x91;
}

/// The code under which the user's press of the same key is stored: several codes press one key.
int canonical(int code, const QString &layout)
{
    const bool german = layout == QLatin1String("de");
    switch (code) {
    case 0x2a:
        return 0x2c;
    case 0x6c:
    case 0xc2:
        return german ? 0x6e : 0x6c; // the decimal key of a German keypad is a separator
    case 0xa0:
    case 0xa1:
        return 0x10;
    case 0xa2:
    case 0xa3:
        return 0x11;
    case 0xa4:
        return 0x12;
    case 0xa5:
        return layout == QLatin1String("us") ? 0x12 : 0xa5;
    case 0xc1:
        return 0xbf;
    default:
        return code;
    }
}

} // namespace

/// The X server, and what its answers were.
class WatchedDesktop : public Desktop
{
public:
    int virtualKeyFromNative(quint32 native, quint32 scan) const override
    {
        codes << m_server.virtualKeyFromNative(native, scan);
        return codes.last();
    }
    bool isComposited() const override { return m_server.isComposited(); }

    mutable QVector<int> codes; // what the dialog's key presses were taken for

private:
    X11Desktop m_server;
};

class tst_Dialogs : public QObject
{
    Q_OBJECT

public:
    explicit tst_Dialogs(XServer &server)
        : m_server(server)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

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

    void whatIsInjectedIsCapturedAgain_data();
    void whatIsInjectedIsCapturedAgain();
    void keysWithoutACodeComeBackToo_data();
    void keysWithoutACodeComeBackToo();
    void theKeyCountsAndNotWhatItTypes_data();
    void theKeyCountsAndNotWhatItTypes();
    void aSecondGroupCounts();
    void aKeyHeldFromBeforeIsNotRecorded();

private:
    bool isTaken() { return m_user->mouseIsTaken() && m_user->keyboardIsTaken(); }
    bool isFree() { return !m_user->mouseIsTaken() && !m_user->keyboardIsTaken(); }
    QPoint pixelOf(const QWidget *widget) const;
    void click(const QWidget *widget);
    QLabel *button(const char *picture) const;
    void openShortcut(int type = 0);

    XServer &m_server;
    std::unique_ptr<XClient> m_user;
    std::unique_ptr<PageWindow> m_window;
    std::unique_ptr<ShortcutKey> m_dialog;
    WatchedDesktop m_desktop;
};

void tst_Dialogs::initTestCase()
{
    AppFonts::load();
    m_user = std::make_unique<XClient>(m_server.display());
}

void tst_Dialogs::init()
{
    QVERIFY(m_server.setLayout(QStringLiteral("us")));
    m_desktop.codes.clear();
    m_window = std::make_unique<PageWindow>();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    m_dialog = std::make_unique<ShortcutKey>(m_window->page);
    m_dialog->setDesktop(&m_desktop);
    QVERIFY(isFree());
}

void tst_Dialogs::cleanup()
{
    m_user->unlockAll();
    m_dialog.reset();
    m_window.reset();
    QVERIFY(isFree());
}

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

void tst_Dialogs::openShortcut(int type)
{
    m_dialog->show(type);
    QTRY_VERIFY(isTaken());
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

void tst_Dialogs::whatIsInjectedIsCapturedAgain_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<bool>("numLock");
    for (const char *layout : {"us", "de", "fr"}) {
        QTest::addRow("%s", layout) << QString::fromLatin1(layout) << false;
        QTest::addRow("%s, NumLock on", layout) << QString::fromLatin1(layout) << true;
    }
}

void tst_Dialogs::whatIsInjectedIsCapturedAgain()
{
    QFETCH(QString, layout);
    QFETCH(bool, numLock);
    QVERIFY(m_server.setLayout(layout));
    m_user->setNumLock(numLock);
    openShortcut();
    HeldInput held;
    QString problem;
    X11InputInjector injector(X11Connection::open(problem), held);
    QStringList wrong;
    int sent = 0;
    for (int code = 1; code < 0x100; ++code) {
        if (KeysymTable::symbolsOf(quint16(code)).isEmpty()) {
            continue;
        }
        ++sent;
        m_desktop.codes.clear();
        for (int taps = isLock(code) ? 2 : 1; taps > 0; --taps) {
            injector.sendKey(quint16(code), true);
            injector.sendKey(quint16(code), false);
        }
        QTRY_VERIFY2(!m_desktop.codes.isEmpty(), qPrintable(QString::number(code)));
        if (m_desktop.codes.first() != canonical(code, layout)) {
            wrong << QStringLiteral("%1 came back as %2").arg(code).arg(m_desktop.codes.first());
        }
        if (isLock(code)) {
            QTRY_COMPARE(m_desktop.codes.size(), 2);
        }
    }
    QCOMPARE(wrong.join(QLatin1String("; ")), QString());
    QVERIFY(sent > 150);
}

void tst_Dialogs::keysWithoutACodeComeBackToo_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QString>("characters");
    QTest::newRow("de") << QStringLiteral("de") << QStringLiteral("üöäß#^´");
    QTest::newRow("fr") << QStringLiteral("fr") << QStringLiteral("ù$*:)²^");
}

void tst_Dialogs::keysWithoutACodeComeBackToo()
{
    QFETCH(QString, layout);
    QFETCH(QString, characters);
    QVERIFY(m_server.setLayout(layout));
    openShortcut();
    HeldInput held;
    QString problem;
    X11InputInjector injector(X11Connection::open(problem), held);
    for (const QChar &character : characters) {
        const int code = 0x100 + character.unicode();
        m_desktop.codes.clear();
        injector.sendKey(quint16(code), true);
        injector.sendKey(quint16(code), false);
        QTRY_COMPARE(m_desktop.codes, QVector<int>{code});
    }
}

void tst_Dialogs::theKeyCountsAndNotWhatItTypes_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<bool>("numLock");
    QTest::addColumn<QVector<int>>("held");
    QTest::addColumn<int>("keycode");
    QTest::addColumn<QVector<int>>("codes");
    const auto row = [](const char *name, const char *layout, bool numLock, const QVector<int> &held,
                        int keycode, const QVector<int> &codes) {
        QTest::newRow(name) << QString::fromLatin1(layout) << numLock << held << keycode << codes;
    };
    row("us, Shift+1", "us", false, {ShiftL}, DigitRow1, {16, 49});
    row("us, right Shift+A", "us", false, {ShiftR}, HomeRow1, {16, 65});
    row("us, Ctrl+A", "us", false, {LeftCtrl}, HomeRow1, {17, 65});
    row("us, Shift+Tab", "us", false, {ShiftL}, TabKey, {16, 9});
    row("us, Alt+Tab", "us", false, {AltL}, TabKey, {18, 9});
    row("us, right Alt", "us", false, {}, AltR, {18});
    row("us, keypad 1", "us", false, {}, Keypad1, {35});
    row("us, keypad 1 with NumLock", "us", true, {}, Keypad1, {97});
    row("us, Ctrl+keypad 1 with NumLock", "us", true, {LeftCtrl}, Keypad1, {17, 97});
    row("us, keypad point", "us", false, {}, KeypadDecimal, {46});
    row("us, keypad point with NumLock", "us", true, {}, KeypadDecimal, {110});
    row("de, keypad comma with NumLock", "de", true, {}, KeypadDecimal, {110});
    row("fr, keypad point with NumLock", "fr", true, {}, KeypadDecimal, {110});
    row("de, AltGr+Q", "de", false, {AltR}, RowAbove1, {165, 81});
    row("de, Z is where us has Y", "de", false, {LeftCtrl}, 29, {17, 90});
    row("de, Shift+1", "de", false, {ShiftL}, DigitRow1, {16, 49});
    row("de, the dead accent", "de", false, {}, 49, {0x100 + '^'});
    row("fr, 1 without Shift", "fr", false, {}, DigitRow1, {0x100 + '&'});
    row("fr, Shift+1", "fr", false, {ShiftL}, DigitRow1, {16, 0x100 + '&'});
    row("fr, the key of é and 2", "fr", false, {}, DigitRow2, {0x1e9});
    row("hr, š", "hr", false, {}, RowAbove11, {0x100 + 0x161});
    row("hu, ő", "hu", false, {}, RowAbove11, {0x100 + 0x151});
    row("tr, ğ", "tr", false, {}, RowAbove11, {0x100 + 0x11f});
    row("fr, A is where us has Q", "fr", false, {LeftCtrl}, RowAbove1, {17, 65});
    row("fr, the key of - and 6", "fr", false, {}, DigitRow6, {189});
    row("ru, the key of A", "ru", false, {LeftCtrl}, HomeRow1, {17, 65});
}

void tst_Dialogs::theKeyCountsAndNotWhatItTypes()
{
    QFETCH(QString, layout);
    QFETCH(bool, numLock);
    QFETCH(QVector<int>, held);
    QFETCH(int, keycode);
    QVERIFY(m_server.setLayout(layout));
    m_user->setNumLock(numLock);
    openShortcut();
    for (const int modifier : held) {
        m_user->key(modifier, true);
    }
    m_user->tap(keycode);
    QTRY_COMPARE(m_desktop.codes.size(), held.size() + 1);
    for (const int modifier : held) {
        m_user->key(modifier, false);
    }
    QTEST(m_desktop.codes, "codes");
}

void tst_Dialogs::aSecondGroupCounts()
{
    QVERIFY(m_server.setLayout(QStringLiteral("us,de,ru")));
    openShortcut();
    for (const int group : {0, 1, 2}) {
        m_user->lockGroup(group);
        m_user->tap(29);
        m_user->tap(RowAbove11);
        m_user->tap(ReturnKey);
        QTRY_COMPARE(m_desktop.codes.size(), 3 * (group + 1));
    }
    // Y, Z, and the н that stands where us has Y; [, ü, and the х that stands where us has [
    QCOMPARE(m_desktop.codes, (QVector<int>{89, 219, 13, 90, 0x1fc, 13, 89, 219, 13}));
}

// Return in the menu opens the dialog, and the server repeats it until it is let go.
void tst_Dialogs::aKeyHeldFromBeforeIsNotRecorded()
{
    QVERIFY(m_server.setLayout(QStringLiteral("us")));
    m_user->key(ReturnKey, true);
    openShortcut();
    QTest::qWait(1200); // repeats begin after 660 ms
    m_user->tap(HomeRow1);
    QTRY_COMPARE(m_desktop.codes, QVector<int>{'A'});
    m_user->key(ReturnKey, false);
    QTest::qWait(20); // no hand lets go and presses in one moment
    m_user->tap(ReturnKey);
    QTRY_COMPARE(m_desktop.codes, (QVector<int>{'A', 13}));
}

int main(int argc, char *argv[])
{
    XServer::Options options;
    if (qEnvironmentVariable("QT_SCALE_FACTOR") == QLatin1String("2")) {
        options.screens = QStringList{QStringLiteral("2560x2048")};
    }
    XServer server(options);
    if (!server.isRunning()) {
        qCritical("%s", qPrintable(server.error()));
        return 1;
    }
    server.exportDisplay();
    QApplication app(argc, argv);
    tst_Dialogs test(server);
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Dialogs.moc"
