#include "engine/platform/x11/X11Pointer.h"
#include "engine/platform/x11/X11PointerAppearance.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/KeyWindow.h"
#include "tests/support/xserver/XServer.h"
#include "tests/support/xserver/XTestDevices.h"

#include <QTest>

class tst_X11Pointer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pointerGoesWhereItIsPut();
    void oneMonitor();
    void twoMonitors();
    void screensOfXineramaWithoutRandr();
    void wholeScreenWithoutEither();
    void pointerCrossesToTheSecondMonitor();
    void pointerHidesAndShows();
    void hidesAreNotCounted();
    void goingAwayShowsThePointer();
    void serverThatDiesLeavesTheProgramRunning();
};

namespace
{

std::shared_ptr<X11Connection> connectTo(const XServer &server)
{
    server.exportDisplay();
    QString problem;
    return X11Connection::open(problem);
}

XServer::Options sideBySide()
{
    XServer::Options options;
    options.screens = QStringList{QStringLiteral("1920x1080"), QStringLiteral("1280x1024")};
    return options;
}

XServer::Options withFramebuffer()
{
    XServer::Options options;
    options.framebufferFile = true;
    return options;
}

const quint32 white = 0xffffff;
const quint32 black = 0;

} // namespace

void tst_X11Pointer::pointerGoesWhereItIsPut()
{
    const XServer server;
    X11Pointer pointer(connectTo(server));
    pointer.moveTo(QPoint(100, 200));
    QCOMPARE(pointer.position(), QPoint(100, 200));
    pointer.moveTo(QPoint(-5, 5000)); // the server keeps it on the screen
    QCOMPARE(pointer.position(), QPoint(0, 1023));
}

void tst_X11Pointer::oneMonitor()
{
    const XServer server;
    const X11Pointer pointer(connectTo(server));
    QCOMPARE(pointer.screens(), QVector<QRect>{QRect(0, 0, 1280, 1024)});
}

void tst_X11Pointer::twoMonitors()
{
    const XServer server(sideBySide());
    const X11Pointer pointer(connectTo(server));
    QCOMPARE(pointer.screens(), (QVector<QRect>{QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024)}));
}

void tst_X11Pointer::screensOfXineramaWithoutRandr()
{
    XServer::Options options;
    options.arguments =
        QStringList{QStringLiteral("-screen"),   QStringLiteral("1"),          QStringLiteral("800x600x24"),
                    QStringLiteral("+xinerama"), QStringLiteral("-extension"), QStringLiteral("RANDR")};
    const XServer server(options);
    const X11Pointer pointer(connectTo(server));
    // This server puts its screens on top of each other.
    QCOMPARE(pointer.screens(), (QVector<QRect>{QRect(0, 0, 1280, 1024), QRect(0, 0, 800, 600)}));
}

void tst_X11Pointer::wholeScreenWithoutEither()
{
    XServer::Options options;
    options.arguments = QStringList{QStringLiteral("-extension"), QStringLiteral("XINERAMA"),
                                    QStringLiteral("-extension"), QStringLiteral("RANDR")};
    const XServer server(options);
    const X11Pointer pointer(connectTo(server));
    QCOMPARE(pointer.screens(), QVector<QRect>{QRect(0, 0, 1280, 1024)});
}

void tst_X11Pointer::pointerCrossesToTheSecondMonitor()
{
    const XServer server(sideBySide());
    X11Pointer pointer(connectTo(server));
    pointer.moveTo(QPoint(1500, 300));
    pointer.moveTo(QPoint(1920 + 640, 300));
    QCOMPARE(pointer.position(), QPoint(2560, 300));
}

void tst_X11Pointer::pointerHidesAndShows()
{
    const XServer server(withFramebuffer());
    KeyWindow window(server.display());
    window.useWhitePointer();
    const std::shared_ptr<X11Connection> connection = connectTo(server);
    X11Pointer pointer(connection);
    X11PointerAppearance appearance(connection);
    pointer.moveTo(QPoint(50, 50));
    QTRY_COMPARE(server.pixel(55, 55), white);
    appearance.setHidden(true);
    QTRY_COMPARE(server.pixel(55, 55), black);
    pointer.moveTo(QPoint(80, 80)); // it stays hidden where it goes
    pointer.position();
    QTest::qWait(50);
    QCOMPARE(server.pixel(85, 85), black);
    appearance.setHidden(false);
    QTRY_COMPARE(server.pixel(85, 85), white);
}

void tst_X11Pointer::hidesAreNotCounted()
{
    const XServer server(withFramebuffer());
    KeyWindow window(server.display());
    window.useWhitePointer();
    const std::shared_ptr<X11Connection> connection = connectTo(server);
    X11Pointer pointer(connection);
    X11PointerAppearance appearance(connection);
    LogCapture log;
    appearance.restore(); // without a hide: nothing, and above all no error
    pointer.moveTo(QPoint(50, 50));
    appearance.setHidden(true);
    appearance.setHidden(true);
    appearance.setHidden(false);
    QTRY_COMPARE(server.pixel(55, 55), white);
    appearance.setHidden(false);
    appearance.restore();
    pointer.position();
    QCOMPARE(log.takeLines(), QStringList());
}

void tst_X11Pointer::goingAwayShowsThePointer()
{
    const XServer server(withFramebuffer());
    KeyWindow window(server.display());
    window.useWhitePointer();
    const std::shared_ptr<X11Connection> connection = connectTo(server);
    X11Pointer(connection).moveTo(QPoint(50, 50));
    {
        X11PointerAppearance appearance(connection);
        appearance.setHidden(true);
        QTRY_COMPARE(server.pixel(55, 55), black);
    }
    QTRY_COMPARE(server.pixel(55, 55), white);
}

void tst_X11Pointer::serverThatDiesLeavesTheProgramRunning()
{
    XServer server;
    const std::shared_ptr<X11Connection> connection = connectTo(server);
    X11Pointer pointer(connection);
    X11PointerAppearance appearance(connection);
    server.stop();
    LogCapture log;
    for (int i = 0; i < 3; ++i) {
        pointer.moveTo(QPoint(1, 1));
        pointer.position();
        appearance.setHidden(i % 2 == 0);
        QCOMPARE(pointer.screens().size(), 1);
    }
    QVERIFY(connection->isLost());
    QCOMPARE(log.takeLines(), QStringList{QStringLiteral("warning: the connection to the X server is lost")});
}

QTEST_GUILESS_MAIN(tst_X11Pointer)

#include "tst_X11Pointer.moc"
