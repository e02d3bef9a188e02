#include "engine/platform/uinput/WaylandSession.h"
#include "tests/platform/uinput/TestCompositor.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QSignalSpy>
#include <QTest>

#include <ctime>

namespace
{

const QByteArray keymap = "xkb_keymap { one };";
const QByteArray otherKeymap = "xkb_keymap { another };";
const QVector<QRect> twoScreens{QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024)};

} // namespace

class tst_WaylandSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void keymapComesWithoutAWindow();
    void keymapChangeIsToldOfTheSameKeyboard();
    void keyboardThatComesLaterCounts();
    void screensAreWhereTheCompositorSays();
    void withoutTheExtensionScreensAreTheOutputsOwn();
    void screensComeAndGo();
    void withoutACompositorNothingIsKnown();
    void compositorThatGoesAndComesBackIsFound();
    void nothingRunsWhileNothingHappens();

private:
    std::unique_ptr<TestCompositor> start(TestCompositor::Option option = TestCompositor::Everything)
    {
        return std::make_unique<TestCompositor>(m_socket, keymap, twoScreens, option);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_socket;
};

void tst_WaylandSession::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_socket = m_folder->filePath(QStringLiteral("wayland-test")).toLocal8Bit();
    qputenv("XDG_RUNTIME_DIR", m_folder->path().toLocal8Bit());
    qputenv("WAYLAND_DISPLAY", m_socket);
}

void tst_WaylandSession::keymapComesWithoutAWindow()
{
    const auto compositor = start();
    WaylandSession session;
    QSignalSpy keymaps(&session, &WaylandSession::keymapChanged);
    QVERIFY(session.open());
    QVERIFY(keymaps.wait());
    QCOMPARE(keymaps.at(0).at(0).toByteArray(), keymap);
}

void tst_WaylandSession::keymapChangeIsToldOfTheSameKeyboard()
{
    const auto compositor = start();
    WaylandSession session;
    QSignalSpy keymaps(&session, &WaylandSession::keymapChanged);
    QVERIFY(session.open());
    QVERIFY(keymaps.wait());
    compositor->setKeymap(otherKeymap);
    QVERIFY(keymaps.wait());
    QCOMPARE(keymaps.at(1).at(0).toByteArray(), otherKeymap);
    QCOMPARE(compositor->keyboardsBound(), 1);
}

void tst_WaylandSession::keyboardThatComesLaterCounts()
{
    const auto compositor = start(TestCompositor::WithoutKeyboard);
    WaylandSession session;
    QSignalSpy keymaps(&session, &WaylandSession::keymapChanged);
    QVERIFY(session.open());
    QTRY_COMPARE(session.screens().size(), 2);
    QVERIFY(keymaps.isEmpty());
    for (int times = 1; times <= 2; ++times) { // unplugged and plugged in again
        compositor->setHasKeyboard(true);
        QTRY_COMPARE(keymaps.size(), times);
        compositor->setHasKeyboard(false);
    }
}

void tst_WaylandSession::screensAreWhereTheCompositorSays()
{
    const auto compositor = start();
    WaylandSession session;
    QVERIFY(session.screens().isEmpty());
    QVERIFY(session.open());
    QTRY_COMPARE(session.screens(), twoScreens);
}

void tst_WaylandSession::withoutTheExtensionScreensAreTheOutputsOwn()
{
    const auto compositor = start(TestCompositor::WithoutLogicalOutputs);
    WaylandSession session;
    QVERIFY(session.open());
    QTRY_COMPARE(session.screens(), twoScreens);
}

void tst_WaylandSession::screensComeAndGo()
{
    const auto compositor = start();
    WaylandSession session;
    QVERIFY(session.open());
    QTRY_COMPARE(session.screens(), twoScreens);
    compositor->addOutput(QRect(-800, 100, 800, 600));
    QTRY_COMPARE(session.screens(), twoScreens + QVector<QRect>{QRect(-800, 100, 800, 600)});
    compositor->removeLastOutput();
    QTRY_COMPARE(session.screens(), twoScreens);
}

void tst_WaylandSession::withoutACompositorNothingIsKnown()
{
    WaylandSession session;
    QVERIFY(!session.open());
    QVERIFY(!session.isConnected());
    QVERIFY(session.screens().isEmpty());
}

void tst_WaylandSession::compositorThatGoesAndComesBackIsFound()
{
    auto compositor = start();
    WaylandSession session;
    QSignalSpy keymaps(&session, &WaylandSession::keymapChanged);
    QVERIFY(session.open());
    QTRY_COMPARE(session.screens(), twoScreens);
    LogCapture log;
    compositor.reset();
    QTRY_VERIFY(!session.isConnected());
    QCOMPARE(session.screens(), twoScreens); // the last that is known
    QCOMPARE(log.takeLines(),
             QStringList{QStringLiteral("warning: the connection to the compositor is lost")});
    keymaps.clear();
    compositor = start();
    QVERIFY(keymaps.wait(10000));
    QVERIFY(session.isConnected());
    QTRY_COMPARE(session.screens(), twoScreens);
}

void tst_WaylandSession::nothingRunsWhileNothingHappens()
{
    const auto compositor = start();
    WaylandSession session;
    QVERIFY(session.open());
    QTRY_COMPARE(session.screens(), twoScreens);
    QTest::qWait(50);
    const std::clock_t before = std::clock();
    QTest::qWait(300);
    const double busyMs = 1000.0 * double(std::clock() - before) / CLOCKS_PER_SEC;
    QVERIFY2(busyMs < 30, qPrintable(QString::number(busyMs)));
}

QTEST_GUILESS_MAIN(tst_WaylandSession)

#include "tst_WaylandSession.moc"
