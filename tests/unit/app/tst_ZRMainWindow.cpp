#include "app/ZRMainWindow.h"
#include "app/frame/SlidingStackedWidget.h"
#include "app/frame/ZRDialog.h"
#include "game/GameView.h"
#include "mapping/SpecialAction.h"
#include "tests/support/main/Main.h"
#include "tests/support/page/PageRig.h"
#include "tests/unit/device/FakePortLister.h"
#include "tests/unit/device/FakeSerialPort.h"
#include "ui/SaveDialog.h"

#include <QAnimationGroup>
#include <QApplication>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QSystemTrayIcon>
#include <QTest>

class tst_ZRMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void hasItsSizePlaceAndFlags();
    void pagesStandInOrder();
    void closeButtonOnlyHides();
    void closeButtonHasItsPlaceAndStyle();
    void closedByTheUserItOnlyHides();
    void keysHideAndQuit();
    void withoutATrayTheCloseButtonSaysTheWayBack();
    void anEmptyPlaceMovesTheWindow();
    void aControlDoesNot();
    void shownAgainItIsWholeOnTheScreen();
    void escapeLeavesTheGame();
    void escapeLeavesTheGameWithoutADeviceToo();
    void trayMenuHasQuitAlone();
    void trayIconBringsTheWindowBack();
    void trayMenuStaysOpenWhenTheWindowComes();
    void aMinimisedWindowComesBack();
    void quitEndsTheProgramAlsoWhenHidden();
    void quitEndsTheProgramAlsoWhileADialogIsVisible();
    void aDialogClosedWhileTheWindowIsHiddenDoesNotQuit();
    void theWelcomePageSaysWhatWasFound();
    void deviceTurnsTheIndicatorAtOnceAndThePageASecondLater();
    void unpluggedWithinTheSecondTheSlideStillComes();
    void chordCallsTheGameAndBack();
    void anyRequestStopsTheGame();
    void unknownNameIsIgnoredButStopsTheGame();
    void unplugSlidesBackAtOnce();

private:
    /// Its status, which is 1 when it has not ended after five seconds.
    static int runProgram()
    {
        QTimer tooLong;
        tooLong.setSingleShot(true);
        connect(&tooLong, &QTimer::timeout, [] { QCoreApplication::exit(1); });
        tooLong.start(5000 * VELTRIX_TEST_PATIENCE);
        return QApplication::exec();
    }

    /// With the left button, from the middle of @p widget.
    static void drag(QWidget *widget, const QPoint &way)
    {
        const QPoint middle = widget->rect().center();
        const QPoint start = widget->mapToGlobal(middle);
        const auto send = [&](QEvent::Type type, const QPoint &place, Qt::MouseButton button,
                              Qt::MouseButtons buttons) {
            QMouseEvent event(type, widget->mapFromGlobal(place), place, button, buttons, Qt::NoModifier);
            QCoreApplication::sendEvent(widget, &event);
        };
        send(QEvent::MouseButtonPress, start, Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseMove, start + way, Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, start + way, Qt::LeftButton, Qt::NoButton);
    }
    SlidingStackedWidget *stack() const { return m_window->findChild<SlidingStackedWidget *>(); }
    ManualClock &clock() const { return m_rig->engine.clock; }
    void endSlide() const
    {
        QVERIFY(stack()->isSliding());
        for (auto *slide : stack()->findChildren<QAnimationGroup *>()) {
            slide->setCurrentTime(slide->totalDuration());
        }
        QVERIFY(!stack()->isSliding());
    }
    /// Gives the three buttons of the chord their modes, and presses them.
    void callGame() const
    {
        shortCut action;
        action.key1 = SPECIAL_ACTION;
        for (const int code : {4, 5, 6}) {
            action.key2 = code;
            m_rig->engine.dispatcher->setAction(code, Layer::Normal, action);
        }
        for (const int button : {4, 5, 6}) {
            Q_EMIT m_serial->onButtonpress(button, true);
        }
    }
    GameView *game() const { return m_window->findChild<GameView *>(); }
    QString indicator() const
    {
        return m_window->findChild<QLabel *>(QStringLiteral("indicator"))->styleSheet();
    }

    PortBench m_bench;
    FakePortLister *m_ports = nullptr;
    std::unique_ptr<PageRig> m_rig;
    std::unique_ptr<ZRMainWindow> m_window;
    SerialProtocol *m_serial = nullptr;
};

void tst_ZRMainWindow::init()
{
    m_rig = std::make_unique<PageRig>();
    auto ports = std::make_unique<FakePortLister>();
    m_ports = ports.get();
    auto serial = std::make_unique<SerialProtocol>(
        std::make_unique<PortFinder>(std::move(ports)),
        [this]() -> std::unique_ptr<SerialPort> { return std::make_unique<FakeSerialPort>(&m_bench); });
    m_serial = serial.get();
    m_window = std::make_unique<ZRMainWindow>(
        std::move(serial),
        [this](QWidget *parent, SerialProtocol *link, ZRUpdater *updater) {
            return m_rig->makePage(parent, link, updater);
        },
        nullptr, clock());
    m_window->show();
}

void tst_ZRMainWindow::cleanup()
{
    m_window.reset();
    m_rig.reset();
}

void tst_ZRMainWindow::hasItsSizePlaceAndFlags()
{
    QCOMPARE(m_window->size(), QSize(900, 650));
    QCOMPARE(m_window->minimumSize(), QSize(900, 650));
    QCOMPARE(m_window->maximumSize(), QSize(900, 650));
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    // Nothing scales the window in this test, whose screen may be too small for it.
    QCOMPARE(m_window->pos(),
             QPoint(qMax(0, (screen.width() - 900) / 2), qMax(0, (screen.height() - 650) / 2)));
    QVERIFY(m_window->windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(!m_window->windowIcon().isNull());
    QCOMPARE(stack()->styleSheet(), QStringLiteral("SlidingStackedWidget {background-color:#5342d9;}"));
}

void tst_ZRMainWindow::pagesStandInOrder()
{
    QCOMPARE(stack()->count(), 3);
    QCOMPARE(QString::fromLatin1(stack()->widget(0)->metaObject()->className()),
             QStringLiteral("WelcomeWindow"));
    QCOMPARE(stack()->widget(1), m_window->devicePage());
    QCOMPARE(stack()->widget(2), game());
    QCOMPARE(stack()->currentIndex(), 0);
}

void tst_ZRMainWindow::closeButtonOnlyHides()
{
    QSignalSpy quits(qApp, &QCoreApplication::aboutToQuit);
    auto *button = m_window->findChild<QPushButton *>(QString(), Qt::FindDirectChildrenOnly);
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(m_window->isHidden());
    QTest::qWait(0);
    QCOMPARE(quits.size(), 0);
}

void tst_ZRMainWindow::closedByTheUserItOnlyHides()
{
    QSignalSpy quits(qApp, &QCoreApplication::aboutToQuit);
    QCloseEvent close;
    QSpontaneKeyEvent::setSpontaneous(&close); // as Alt+F4 makes it
    qApp->notify(m_window.get(), &close);      // sendEvent() would take that mark away
    QVERIFY(m_window->isHidden());
    QTest::qWait(0);
    QCOMPARE(quits.size(), 0);
}

void tst_ZRMainWindow::keysHideAndQuit()
{
    QApplication::setActiveWindow(m_window.get());
    QTest::keyClick(m_window.get(), Qt::Key_W, Qt::ControlModifier);
    QVERIFY(m_window->isHidden());
    m_window->showOnFront();
    QApplication::setActiveWindow(m_window.get());
    QSignalSpy quits(qApp, &QCoreApplication::aboutToQuit);
    QTimer::singleShot(0, this, [this] { QTest::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier); });
    QCOMPARE(runProgram(), 0);
    QCOMPARE(quits.size(), 1);
}

void tst_ZRMainWindow::withoutATrayTheCloseButtonSaysTheWayBack()
{
    QSignalSpy hidden(m_window.get(), &ZRMainWindow::hiddenWithoutTray);
    m_window->putAway();
    QCOMPARE(hidden.size(), 1);
    QVERIFY(!QSystemTrayIcon::isSystemTrayAvailable()); // nothing is drawn in this test, so there is none
    QCOMPARE(
        m_window->findChild<QPushButton *>(QStringLiteral("close"))->toolTip(),
        QStringLiteral("Hide the window; the program goes on. Start it once more to bring the window back."));
}

void tst_ZRMainWindow::anEmptyPlaceMovesTheWindow()
{
    const QPoint before = m_window->pos();
    drag(m_window->findChild<QLabel *>(QStringLiteral("finding")), {-30, -20});
    QCOMPARE(m_window->pos(), before + QPoint(-30, -20));
}

void tst_ZRMainWindow::aControlDoesNot()
{
    const QPoint before = m_window->pos();
    drag(m_window->findChild<QPushButton *>(QStringLiteral("close")), {-30, -20});
    QCOMPARE(m_window->pos(), before);
}

void tst_ZRMainWindow::shownAgainItIsWholeOnTheScreen()
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QPoint middle((screen.width() - 900) / 2, (screen.height() - 650) / 2);
    m_window->hide();
    m_window->move(screen.width() - 100, 30);
    m_window->showOnFront();
    // This test's screen is smaller than the window: then the corner with the button is what counts.
    QCOMPARE(m_window->pos(), QPoint(qMax(0, middle.x()), qMax(0, middle.y())));
}

void tst_ZRMainWindow::escapeLeavesTheGame()
{
    m_ports->show({devicePort()});
    m_serial->scannSerial();
    clock().advance(1000);
    endSlide();
    callGame();
    clock().advance(1000);
    endSlide();
    QCOMPARE(stack()->currentIndex(), 2);
    QVERIFY(m_rig->engine.dispatcher->isGameOn());
    QTest::keyClick(game(), Qt::Key_Escape);
    QVERIFY(!game()->isRunning());
    QVERIFY(!m_rig->engine.dispatcher->isGameOn());
    clock().advance(1000);
    endSlide();
    QCOMPARE(stack()->currentIndex(), 1);
}

void tst_ZRMainWindow::escapeLeavesTheGameWithoutADeviceToo()
{
    m_window->displayControlPanel(QStringLiteral("GAME"));
    clock().advance(1000);
    endSlide();
    QTest::keyClick(game(), Qt::Key_Escape);
    QVERIFY(!game()->isRunning());
    endSlide();
    QCOMPARE(stack()->currentIndex(), 0);
}

void tst_ZRMainWindow::closeButtonHasItsPlaceAndStyle()
{
    const auto *button = m_window->findChild<QPushButton *>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(button->geometry(), QRect(5, 5, 16, 16));
    QCOMPARE(button->styleSheet(),
             QStringLiteral("QPushButton {                          border: none;                          "
                            "background-image: url(:/icons/close.png);                          "
                            "background-repeat: none;}                       QPushButton:hover{"
                            "                          background-image: url(:/icons/close_hover.png);"
                            "                        }                       QPushButton:pressed{"
                            "                          background-image: url(:/icons/close_pressed.png);"
                            "                       }"));
}

void tst_ZRMainWindow::trayMenuHasQuitAlone()
{
    const auto *tray = m_window->findChild<QSystemTrayIcon *>();
    QCOMPARE(tray->contextMenu()->actions().size(), 1);
    QCOMPARE(tray->contextMenu()->actions().constFirst()->text(), QStringLiteral("Quit"));
    QCOMPARE(tray->toolTip(), QString());
}

void tst_ZRMainWindow::trayIconBringsTheWindowBack()
{
    auto *tray = m_window->findChild<QSystemTrayIcon *>();
    for (const auto reason :
         {QSystemTrayIcon::Trigger, QSystemTrayIcon::Context, QSystemTrayIcon::MiddleClick}) {
        m_window->hide();
        Q_EMIT tray->activated(reason);
        QVERIFY(m_window->isVisible());
    }
}

void tst_ZRMainWindow::trayMenuStaysOpenWhenTheWindowComes()
{
    QMenu *menu = m_window->findChild<QSystemTrayIcon *>()->contextMenu();
    m_window->hide();
    menu->popup(QPoint(10, 10));
    QVERIFY(menu->isVisible());
    m_window->showOnFront();
    QVERIFY(m_window->isVisible());
    QVERIFY(menu->isVisible());
    menu->close();
    m_window->showOnFront();
    QVERIFY(!menu->isVisible());
}

void tst_ZRMainWindow::aMinimisedWindowComesBack()
{
    m_window->showMinimized();
    QVERIFY(m_window->isMinimized());
    m_window->showOnFront();
    QVERIFY(m_window->isVisible());
    QVERIFY(!m_window->isMinimized());
}

void tst_ZRMainWindow::quitEndsTheProgramAlsoWhenHidden()
{
    QSignalSpy quits(qApp, &QCoreApplication::aboutToQuit);
    m_window->hide();
    QTimer::singleShot(0, this, [this] {
        m_window->findChild<QSystemTrayIcon *>()->contextMenu()->actions().constFirst()->trigger();
    });
    QCOMPARE(runProgram(), 0);
    QCOMPARE(quits.size(), 1);
}

void tst_ZRMainWindow::quitEndsTheProgramAlsoWhileADialogIsVisible()
{
    ZRDialog message(QStringLiteral("Text"), QStringLiteral("OK"), QString(), m_window.get());
    message.show();
    auto *overlay = m_window->findChild<SaveDialog *>();
    overlay->show();
    quitEndsTheProgramAlsoWhenHidden();
}

void tst_ZRMainWindow::aDialogClosedWhileTheWindowIsHiddenDoesNotQuit()
{
    ZRDialog message(QStringLiteral("Text"), QStringLiteral("OK"), QString(), m_window.get());
    m_window->hide();
    message.show();
    QTimer::singleShot(0, &message, [&message] {
        message.close(); // what this posts comes before the next timer
        QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(7); });
    });
    QCOMPARE(QApplication::exec(), 7);
    QVERIFY(message.isHidden());
}

void tst_ZRMainWindow::theWelcomePageSaysWhatWasFound()
{
    m_serial->scannSerial(); // there are no ports in this test
    QCOMPARE(
        m_window->findChild<QLabel *>(QStringLiteral("finding"))->text(),
        QStringLiteral("No device is plugged in. The panel opens by itself as soon as the device is found."));
}

void tst_ZRMainWindow::deviceTurnsTheIndicatorAtOnceAndThePageASecondLater()
{
    QTest::ignoreMessage(QtInfoMsg, "Set sliding index ZR");
    Q_EMIT m_serial->portChange(QStringLiteral("ZR"));
    QVERIFY(indicator().contains(QLatin1String("square-c")));
    clock().advance(999);
    QVERIFY(!stack()->isSliding());
    clock().advance(1);
    QVERIFY(stack()->isSliding());
    endSlide();
    QCOMPARE(stack()->currentIndex(), 1);
}

void tst_ZRMainWindow::unpluggedWithinTheSecondTheSlideStillComes()
{
    Q_EMIT m_serial->portChange(QStringLiteral("ZR"));
    clock().advance(300);
    Q_EMIT m_serial->portChange(QString());
    QVERIFY(!indicator().contains(QLatin1String("square-c")));
    QCOMPARE(stack()->currentIndex(), 0);
    clock().advance(700);
    endSlide();
    QCOMPARE(stack()->currentIndex(), 1);
}

void tst_ZRMainWindow::chordCallsTheGameAndBack()
{
    callGame();
    clock().advance(999);
    QVERIFY(!game()->isRunning());
    clock().advance(1);
    QVERIFY(game()->isRunning());
    endSlide();
    QCOMPARE(stack()->currentIndex(), 2);

    Q_EMIT m_serial->onKnobevent('L');
    QCOMPARE(game()->game().field().leftPaddle.velocity, -2.0F);
    Q_EMIT m_serial->onKnobevent('U');
    QCOMPARE(game()->game().field().leftPaddle.velocity, 0.0F);

    for (const int button : {4, 5, 6}) {
        Q_EMIT m_serial->onButtonpress(button, false);
    }
    Q_EMIT m_serial->onButtonpress(5, true);
    QVERIFY(!game()->isRunning());
    clock().advance(1000);
    endSlide();
    QCOMPARE(stack()->currentIndex(), 1);
}

void tst_ZRMainWindow::anyRequestStopsTheGame()
{
    game()->setRunning(true);
    m_window->displayControlPanel(QString());
    QVERIFY(!game()->isRunning());
}

void tst_ZRMainWindow::unknownNameIsIgnoredButStopsTheGame()
{
    game()->setRunning(true);
    QTest::ignoreMessage(QtInfoMsg, "Set sliding index XY");
    m_window->displayControlPanel(QStringLiteral("XY"));
    QVERIFY(!game()->isRunning());
    clock().advance(1200);
    QVERIFY(!stack()->isSliding());
    QCOMPARE(stack()->currentIndex(), 0);
}

void tst_ZRMainWindow::unplugSlidesBackAtOnce()
{
    stack()->setCurrentIndex(1);
    Q_EMIT m_serial->portChange(QString());
    QVERIFY(stack()->isSliding());
    endSlide();
    QCOMPARE(stack()->currentIndex(), 0);
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    tst_ZRMainWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_ZRMainWindow.moc"
