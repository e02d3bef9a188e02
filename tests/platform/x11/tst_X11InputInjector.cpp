#include "engine/platform/x11/X11InputInjector.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/xkb/ExpectedSymbols.h"
#include "tests/support/xserver/KeyWindow.h"
#include "tests/support/xserver/XServer.h"
#include "tests/support/xserver/XTestDevices.h"

#include <QTest>

#include <X11/Xlib.h>

namespace
{

unsigned long requestsSent(Display *display)
{
    XEventsQueued(display, QueuedAfterReading); // has Xlib learn of those that XCB has sent
    return NextRequest(display);
}
unsigned long requestsAnswered(Display *display)
{
    return LastKnownRequestProcessed(display);
}

bool isLock(quint16 virtualKey)
{
    return virtualKey == 0x14 || virtualKey == 0x90 || virtualKey == 0x91;
}

QStringList downAndUp(const QString &symbol)
{
    return {symbol + QLatin1String(" down"), symbol + QLatin1String(" up")};
}

} // namespace

class tst_X11InputInjector : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void everyCodeTypesItsSymbol_data();
    void everyCodeTypesItsSymbol();
    void controlZIsControlZOnEveryLayout_data();
    void controlZIsControlZOnEveryLayout();
    void shortcutReleasesInPressingOrder();
    void shiftReachesTheSecondSymbolOfABorrowedKeycode();
    void heldKeyIsNotRepeatedByASecondPress();
    void leftButtonArrives();

    void layoutChangeIsFollowed();
    void groupChangeIsFollowed();
    void pressedKeycodeIsReleasedAfterALayoutChange();
    void borrowedKeycodeIsReleasedAfterALayoutChange();
    void heldKeycodeIsNotBorrowedForAnotherSymbol();

    void missingSymbolsAreThereBeforeThePress();
    void missingSymbolsComeBackAfterALayoutChange();
    void borrowedKeycodesAreGivenBack();
    void keycodeThatSomebodyElseTookIsLeftAlone();
    void withoutSpareKeycodesModifiersAreHeldWithTheKey_data();
    void withoutSpareKeycodesModifiersAreHeldWithTheKey();
    void withoutSpareKeycodesTheKeypadTypesDigits();
    void withoutSpareKeycodesAHeldShiftIsNotLetGo();

    void untranslatableCodeIsLoggedOnceAndSkipped();
    void codeZeroIsSkippedWithoutAWord();
    void refusedRequestIsLoggedAndSurvived();

    void pressNeedsNoRoundTrip();
    void nothingIsSentWhileIdle();

private:
    void settle();
    QStringList tap(quint16 virtualKey);

    XServer m_server;
    std::unique_ptr<KeyWindow> m_window;
    std::unique_ptr<XTestDevices> m_devices;
    std::unique_ptr<HeldInput> m_held;
    std::unique_ptr<X11InputInjector> m_injector;
};

void tst_X11InputInjector::initTestCase()
{
    QVERIFY2(m_server.isRunning(), qPrintable(m_server.error()));
    m_server.exportDisplay();
    m_window = std::make_unique<KeyWindow>(m_server.display());
    m_devices = std::make_unique<XTestDevices>(m_server.display());
    QVERIFY(m_window->isReady());
    QVERIFY(m_devices->isReady());
}

void tst_X11InputInjector::init()
{
    QVERIFY(m_server.setLayout(QStringLiteral("us")));
    QString problem;
    m_held = std::make_unique<HeldInput>();
    m_injector = std::make_unique<X11InputInjector>(X11Connection::open(problem), *m_held);
    m_window->takeAll();
}

void tst_X11InputInjector::cleanup()
{
    m_injector.reset();
    QVERIFY(m_devices->nothingHeld());
    QVERIFY(m_held->isEmpty());
    m_devices->setNumLock(false);
}

QStringList tst_X11InputInjector::tap(quint16 virtualKey)
{
    m_injector->sendKey(virtualKey, true);
    m_injector->sendKey(virtualKey, false);
    return KeyWindow::names(m_window->take(2));
}

void tst_X11InputInjector::everyCodeTypesItsSymbol_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<bool>("numLock");
    for (const char *layout : {"us", "de", "fr"}) {
        QTest::addRow("%s", layout) << QString::fromLatin1(layout) << false;
        QTest::addRow("%s, NumLock on", layout) << QString::fromLatin1(layout) << true;
    }
}

void tst_X11InputInjector::everyCodeTypesItsSymbol()
{
    QFETCH(QString, layout);
    QFETCH(bool, numLock);
    QVERIFY(m_server.setLayout(layout));
    m_devices->setNumLock(numLock);
    const QMap<quint16, QString> symbols = expectedSymbols(layout);
    QStringList wrong;
    for (auto it = symbols.constBegin(); it != symbols.constEnd(); ++it) {
        const QStringList seen = tap(it.key());
        if (isLock(it.key())) {
            tap(it.key());
        }
        if (seen != downAndUp(it.value())) {
            wrong << QStringLiteral("code %1: %2 instead of %3")
                         .arg(it.key())
                         .arg(seen.join(QLatin1Char(',')), it.value());
        }
    }
    QCOMPARE(wrong.join(QLatin1String("; ")), QString());
}

/// Lets news from the server arrive and be dealt with, as the event loop does between two presses.
void tst_X11InputInjector::settle()
{
    m_devices->pointerPosition();
    QTest::qWait(20);
}

void tst_X11InputInjector::controlZIsControlZOnEveryLayout_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<uint>("keycode");
    QTest::newRow("us: where it is printed") << QStringLiteral("us") << 52U;
    QTest::newRow("de: in the upper row") << QStringLiteral("de") << 29U;
    QTest::newRow("fr: in the upper row") << QStringLiteral("fr") << 25U;
}

void tst_X11InputInjector::controlZIsControlZOnEveryLayout()
{
    QFETCH(QString, layout);
    QFETCH(uint, keycode);
    QVERIFY(m_server.setLayout(layout));
    m_injector->sendKey(0x11, true);
    m_injector->sendKey('Z', true);
    m_injector->sendKey(0x11, false);
    m_injector->sendKey('Z', false);
    const QVector<KeyWindow::Event> events = m_window->take(4);
    QCOMPARE(events.size(), 4);
    QCOMPARE(events[1].name(), QStringLiteral("z down"));
    QCOMPARE(events[1].code, keycode);
    QCOMPARE(events[1].state & 4U, 4U); // with Control
    QCOMPARE(events[1].text, QString(QChar(26)));
}

void tst_X11InputInjector::shortcutReleasesInPressingOrder()
{
    for (const bool down : {true, false}) {
        for (const quint16 code : {quint16(0x11), quint16(0x10), quint16('S')}) {
            m_injector->sendKey(code, down);
        }
    }
    const QStringList wanted = {QStringLiteral("Control_L down"), QStringLiteral("Shift_L down"),
                                QStringLiteral("S down"),         QStringLiteral("Control_L up"),
                                QStringLiteral("Shift_L up"),     QStringLiteral("s up")};
    QCOMPARE(KeyWindow::names(m_window->take(6)), wanted);
}

void tst_X11InputInjector::shiftReachesTheSecondSymbolOfABorrowedKeycode()
{
    QVERIFY(m_server.setLayout(QStringLiteral("de")));
    m_injector->sendKey(0x10, true);
    m_injector->sendKey(0xdb, true);
    m_injector->sendKey(0xdb, false);
    m_injector->sendKey(0x10, false);
    const QVector<KeyWindow::Event> events = m_window->take(4);
    QCOMPARE(events.size(), 4);
    QCOMPARE(events[1].text, QStringLiteral("{"));
}

void tst_X11InputInjector::heldKeyIsNotRepeatedByASecondPress()
{
    m_injector->sendKey('A', true);
    m_injector->sendKey('A', true);
    m_injector->sendKey('A', false);
    m_injector->sendKey('A', false);
    m_window->takeAll();
    QVERIFY(m_devices->nothingHeld());
}

void tst_X11InputInjector::leftButtonArrives()
{
    m_injector->sendLeftButton(true);
    QVERIFY(m_held->leftButton());
    QTRY_VERIFY(m_devices->leftButtonHeld());
    m_injector->sendLeftButton(false);
    QVERIFY(!m_held->leftButton());
    QVERIFY(m_devices->waitNothingHeld());
}

void tst_X11InputInjector::layoutChangeIsFollowed()
{
    QCOMPARE(tap('Z'), downAndUp(QStringLiteral("z")));
    for (const char *layout : {"de", "fr", "us"}) {
        QVERIFY(m_server.setLayout(QString::fromLatin1(layout)));
        QCOMPARE(tap('Z'), downAndUp(QStringLiteral("z")));
        QCOMPARE(tap('1'), downAndUp(QStringLiteral("1")));
    }
}

void tst_X11InputInjector::groupChangeIsFollowed()
{
    QVERIFY(m_server.setLayout(QStringLiteral("us,de")));
    QCOMPARE(tap('Z'), downAndUp(QStringLiteral("z")));
    m_devices->lockGroup(1);
    QCOMPARE(tap('Z'), downAndUp(QStringLiteral("z")));
    QCOMPARE(tap(0xdb), downAndUp(QStringLiteral("bracketleft")));
    m_devices->lockGroup(0);
    QCOMPARE(tap('Z'), downAndUp(QStringLiteral("z")));
}

void tst_X11InputInjector::pressedKeycodeIsReleasedAfterALayoutChange()
{
    m_injector->sendKey('Z', true);
    QTRY_COMPARE(m_devices->heldKeycodes(), QVector<int>{52});
    QVERIFY(m_server.setLayout(QStringLiteral("de")));
    settle();
    m_injector->sendKey('Z', true); // again: still the key that is down
    m_injector->sendKey('Z', false);
    QVERIFY(m_devices->waitNothingHeld());
}

void tst_X11InputInjector::borrowedKeycodeIsReleasedAfterALayoutChange()
{
    m_injector->sendKey(0x7c, true); // F13
    QTRY_COMPARE(m_devices->heldKeycodes().size(), 1);
    QVERIFY(m_server.setLayout(QStringLiteral("fr")));
    settle();
    m_injector->sendKey(0x7c, false);
    QVERIFY(m_devices->waitNothingHeld());
}

void tst_X11InputInjector::heldKeycodeIsNotBorrowedForAnotherSymbol()
{
    m_injector->sendKey(0x7c, true); // F13
    m_window->takeAll();
    const QVector<int> held = m_devices->heldKeycodes();
    const int spares = m_devices->keycodesOf(0).size();
    const quint32 f13 = m_devices->keysymAt(held.first());
    // More symbols than there are keycodes, so that every one that is not held changes its symbol.
    for (int round = 0; round <= spares; ++round) {
        for (const int code :
             {0x15, 0x17, 0x19, 0x29, 0x2b, 0x7d, 0x7e, 0x7f, 0x80, 0x81, 0x82, 0x83, 0x84, 0x85}) {
            tap(quint16(code));
        }
    }
    QCOMPARE(m_devices->keysymAt(held.first()), f13);
    m_injector->sendKey(0x7c, false);
    QVERIFY(m_devices->waitNothingHeld());
}

void tst_X11InputInjector::missingSymbolsAreThereBeforeThePress()
{
    const KeySym f20 = 0xffd1;
    QVERIFY(m_devices->keycodesOf(f20).isEmpty());
    m_injector->prepareKeys({0x83, 0, 0xffff, 'A'});
    settle();
    QCOMPARE(m_devices->keycodesOf(f20).size(), 1);
    QCOMPARE(tap(0x83), downAndUp(QStringLiteral("F20")));
    QCOMPARE(m_devices->keycodesOf(f20).size(), 1);
}

void tst_X11InputInjector::missingSymbolsComeBackAfterALayoutChange()
{
    const KeySym f20 = 0xffd1;
    m_injector->prepareKeys({0x83});
    QVERIFY(m_server.setLayout(QStringLiteral("de")));
    QTRY_COMPARE(m_devices->keycodesOf(f20).size(), 1);
}

void tst_X11InputInjector::borrowedKeycodesAreGivenBack()
{
    const QVector<int> spares = m_devices->keycodesOf(0);
    QVERIFY(spares.size() > 10);
    m_injector->prepareKeys({0x7c, 0x7d, 0x7e});
    tap(0x83);
    settle();
    QCOMPARE(m_devices->keycodesOf(0).size(), spares.size() - 4);
    m_injector.reset();
    QCOMPARE(m_devices->keycodesOf(0), spares);
}

void tst_X11InputInjector::keycodeThatSomebodyElseTookIsLeftAlone()
{
    const KeySym egrave = 0xe8;
    tap(0x83);
    settle();
    const int borrowed = m_devices->keycodesOf(0xffd1).value(0);
    m_devices->assign(borrowed, egrave);
    m_injector.reset();
    QCOMPARE(m_devices->keysymAt(borrowed), quint32(egrave));
}

void tst_X11InputInjector::withoutSpareKeycodesModifiersAreHeldWithTheKey_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<quint16>("code");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("events");
    QTest::newRow("de: [ with AltGr") << QStringLiteral("de") << quint16(0xdb) << QStringLiteral("[") << 4;
    QTest::newRow("de: / with Shift") << QStringLiteral("de") << quint16(0xbf) << QStringLiteral("/") << 4;
    QTest::newRow("fr: 1 with Shift") << QStringLiteral("fr") << quint16('1') << QStringLiteral("1") << 4;
    QTest::newRow("fr: a without") << QStringLiteral("fr") << quint16('A') << QStringLiteral("a") << 2;
}

void tst_X11InputInjector::withoutSpareKeycodesModifiersAreHeldWithTheKey()
{
    QFETCH(QString, layout);
    QFETCH(quint16, code);
    QFETCH(QString, text);
    QFETCH(int, events);
    QVERIFY(m_server.setLayout(layout));
    m_devices->occupySpareKeycodes(0xe8);
    m_injector->sendKey(code, true);
    m_injector->sendKey(code, false);
    QString typed;
    const QVector<KeyWindow::Event> seen = m_window->takeAll();
    for (const KeyWindow::Event &event : seen) {
        typed += event.text;
    }
    QCOMPARE(typed, text);
    QCOMPARE(seen.size(), events);
    QVERIFY(m_devices->nothingHeld());
}

void tst_X11InputInjector::withoutSpareKeycodesTheKeypadTypesDigits()
{
    m_devices->occupySpareKeycodes(0xe8);
    for (const bool numLock : {false, true}) {
        m_devices->setNumLock(numLock);
        QCOMPARE(tap(0x67).value(0), QStringLiteral("KP_7 down"));
        QCOMPARE(tap(0x67).value(0), QStringLiteral("KP_7 down"));
    }
}

void tst_X11InputInjector::withoutSpareKeycodesAHeldShiftIsNotLetGo()
{
    QVERIFY(m_server.setLayout(QStringLiteral("de")));
    m_devices->occupySpareKeycodes(0xe8);
    m_injector->sendKey(0x10, true);
    m_injector->sendKey(0xbf, true);
    m_injector->sendKey(0xbf, false);
    m_window->takeAll();
    QCOMPARE(m_devices->heldKeycodes().size(), 1);
    m_injector->sendKey(0x10, false);
    QVERIFY(m_devices->waitNothingHeld());
}

void tst_X11InputInjector::untranslatableCodeIsLoggedOnceAndSkipped()
{
    LogCapture log;
    for (int i = 0; i < 3; ++i) {
        m_injector->sendKey(0x07, true);
        m_injector->sendKey(0x07, false);
        m_injector->sendKey(0xffff, true);
    }
    QVERIFY(m_window->takeAll().isEmpty());
    QCOMPARE(
        log.takeLines(),
        (QStringList{QStringLiteral("warning: no key of this keyboard layout stands for key code 7"),
                     QStringLiteral("warning: no key of this keyboard layout stands for key code 65535")}));
}

void tst_X11InputInjector::codeZeroIsSkippedWithoutAWord()
{
    LogCapture log;
    m_injector->sendKey(0, true);
    m_injector->sendKey(0, false);
    QVERIFY(m_window->takeAll().isEmpty());
    QCOMPARE(log.takeLines(), QStringList());
}

void tst_X11InputInjector::refusedRequestIsLoggedAndSurvived()
{
    LogCapture log;
    QString problem;
    const std::shared_ptr<X11Connection> connection = X11Connection::open(problem);
    X11Keyboard keyboard(connection, [] {});
    keyboard.sendKey(1, true); // no such keycode
    keyboard.readMap();
    const QStringList lines = log.takeLines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.first().startsWith(QLatin1String("warning: the X server refused a request")),
             qPrintable(lines.first()));
    QVERIFY(!connection->isLost());
}

void tst_X11InputInjector::pressNeedsNoRoundTrip()
{
    QString problem;
    const std::shared_ptr<X11Connection> connection = X11Connection::open(problem);
    X11InputInjector injector(connection, *m_held);
    injector.prepareKeys({'A', 0x83, 0x67});
    settle();
    // Ours is now the keyboard that was used last, which the server tells everybody.
    injector.sendKey('B', true);
    settle();
    injector.sendKey('B', false);
    settle();
    const unsigned long sent = requestsSent(connection->display());
    const unsigned long answered = requestsAnswered(connection->display());
    for (int i = 0; i < 100; ++i) {
        for (const quint16 code : {quint16('A'), quint16(0x83), quint16(0x67)}) {
            injector.sendKey(code, true);
            injector.sendKey(code, false);
        }
    }
    m_window->takeAll();
    QCOMPARE(requestsAnswered(connection->display()), answered);
    QCOMPARE(requestsSent(connection->display()) - sent, 600UL);
}

void tst_X11InputInjector::nothingIsSentWhileIdle()
{
    QString problem;
    const std::shared_ptr<X11Connection> connection = X11Connection::open(problem);
    X11InputInjector injector(connection, *m_held);
    injector.prepareKeys({0x83, 0x84, 0x67}); // our own change of the layout comes back as news
    QTest::qWait(50);
    const unsigned long sent = requestsSent(connection->display());
    QTest::qWait(300);
    QCOMPARE(requestsSent(connection->display()), sent);
}

QTEST_GUILESS_MAIN(tst_X11InputInjector)

#include "tst_X11InputInjector.moc"
