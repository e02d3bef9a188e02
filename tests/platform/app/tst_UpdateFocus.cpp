#include "app/UpdateDialog.h"
#include "app/frame/ZRDialog.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/KeyWindow.h"
#include "tests/support/xserver/RunOnServer.h"
#include "tests/support/xserver/XClient.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <X11/Xlib.h>
#undef Bool

namespace
{

constexpr int spaceKey = 65;
constexpr int returnKey = 36;

// Near the top left corner of a window, wherever the window manager has put it.
QPoint placeOn(Display &display, WId window)
{
    QPoint place;
    Window child = 0;
    XTranslateCoordinates(&display, window, DefaultRootWindow(&display), 30, 30, &place.rx(), &place.ry(),
                          &child);
    return place;
}

Window focused(const XServer &server)
{
    Display *display = XOpenDisplay(server.display().constData());
    Window window = None;
    int revert = 0;
    XGetInputFocus(display, &window, &revert);
    XCloseDisplay(display);
    return window;
}

} // namespace

/// A question about an update comes up while the user types in another program, on a desktop with a window
/// manager.
class tst_UpdateFocus : public QObject
{
    Q_OBJECT

public:
    explicit tst_UpdateFocus(const XServer &server)
        : m_server(server)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    // The window manager takes the focus that a test's windows leave, and would else take it from those of
    // the next.
    void cleanup() { QTRY_COMPARE(focused(m_server), m_whenNobodyHasIt); }

    void keysStayWhereTheUserTypes_data();
    void keysStayWhereTheUserTypes();
    void keysArriveOnceTheUserHasGoneThere();

private:
    const XServer &m_server;
    QProcess m_windowManager;
    Window m_whenNobodyHasIt = None;
};

void tst_UpdateFocus::initTestCase()
{
    m_windowManager.setProcessEnvironment(m_server.environment());
    // It loses windows that come while it starts.
    const QTemporaryDir folder;
    const QString started = folder.filePath(QStringLiteral("started"));
    m_windowManager.start(QStringLiteral(START_SERVER), {QStringLiteral("window-manager"), started});
    QVERIFY(m_windowManager.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(started), 20000);
    m_whenNobodyHasIt = focused(m_server);
}

void tst_UpdateFocus::cleanupTestCase()
{
    m_windowManager.terminate();
    QVERIFY(m_windowManager.waitForFinished());
}

void tst_UpdateFocus::keysStayWhereTheUserTypes_data()
{
    QTest::addColumn<bool>("overAWindow");
    QTest::newRow("over the program's window") << true;
    QTest::newRow("while that is hidden") << false;
}

void tst_UpdateFocus::keysStayWhereTheUserTypes()
{
    QFETCH(bool, overAWindow);
    QWidget window(nullptr, Qt::FramelessWindowHint);
    window.setGeometry(300, 200, 900, 650);
    if (overAWindow) {
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window, 20000));
    }
    KeyWindow other(m_server.display());
    QVERIFY(other.isReady());
    QTRY_VERIFY(!QApplication::activeWindow());
    XClient user(m_server.display());

    UpdateDialog prompt;
    prompt.setWindow(&window);
    int answers = 0;
    prompt.ask(
        QStringLiteral("Install it?"), QStringLiteral("OK"), QStringLiteral("Cancel"), [&] { ++answers; },
        [&] { ++answers; });
    auto *dialog = window.findChild<ZRDialog *>();
    QVERIFY(QTest::qWaitForWindowExposed(dialog, 20000));
    QTest::qWait(300); // for a window manager that thinks it over
    other.takeAll();
    for (const int key : {spaceKey, returnKey}) {
        user.tap(key);
        QCOMPARE(other.take(2).size(), 2);
    }
    QTest::qWait(100);
    QCOMPARE(answers, 0);
    QVERIFY(prompt.isVisible());
    QVERIFY(!dialog->isActiveWindow());
}

void tst_UpdateFocus::keysArriveOnceTheUserHasGoneThere()
{
    QWidget window(nullptr, Qt::FramelessWindowHint);
    window.setGeometry(300, 200, 900, 650);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, 20000));
    KeyWindow other(m_server.display());
    QVERIFY(other.isReady());
    QTRY_VERIFY(!QApplication::activeWindow());
    UpdateDialog prompt;
    prompt.setWindow(&window);
    bool accepted = false;
    prompt.ask(QStringLiteral("Install it?"), QStringLiteral("OK"), QStringLiteral("Cancel"),
               [&] { accepted = true; }, {});
    auto *dialog = window.findChild<ZRDialog *>();
    QVERIFY(QTest::qWaitForWindowExposed(dialog, 20000));

    XClient user(m_server.display());
    const auto click = [&] {
        user.moveMouse(placeOn(*other.display(), dialog->winId()));
        user.mouseButton(true);
        user.mouseButton(false);
        return dialog->isActiveWindow();
    };
    QTRY_VERIFY(click());
    user.tap(spaceKey); // the first button has the keys of the window
    QTRY_VERIFY(accepted);
}

int main(int argc, char *argv[])
{
    return runOnServer<tst_UpdateFocus>(argc, argv);
}

#include "tst_UpdateFocus.moc"
