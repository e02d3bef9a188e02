#include "engine/platform/PlatformFactory.h"
#include "engine/platform/recording/RecordingInjector.h"
#include "engine/platform/x11/X11InputInjector.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/XServer.h"

#include <QLocalServer>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

class tst_PlatformFactory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void displayIsUsedAndNamed();
    void waylandSessionIsSaidToReachX11ProgramsOnly();
    void x11SessionHasNothingToSay();
    void waylandSessionWithoutTheKernelUsesX11AndSaysWhatHelps();
    void x11SessionNeverAsksTheKernel();
    void windowIsAnX11WindowOnWaylandToo();
    void withoutADisplayInputGoesNowhereAndThatIsSaidOnce();
    void displayThatDoesNotAnswerIsNamed();
    void serverWithoutXTestIsNotUsed();
    void withoutADisplayThereIsNoMouseListener();
    void toolkitDrawsNowhereWithoutADisplay();
    void toolkitDrawsNowhereWhenTheDisplayDoesNotAnswer();
    void toolkitIsLeftAloneWithADisplay();
    void toolkitDrawsNowhereWhenTheCompositorDoesNotAnswer();
    void listenerReportsToTheFunction();
};

namespace
{

XServer::Options without(const char *extension)
{
    XServer::Options options;
    options.arguments = QStringList{QStringLiteral("-extension"), QString::fromLatin1(extension)};
    return options;
}

} // namespace

void tst_PlatformFactory::init()
{
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "QT_QPA_PLATFORM"}) {
        qunsetenv(name);
    }
}

void tst_PlatformFactory::displayIsUsedAndNamed()
{
    const XServer server;
    server.exportDisplay();
    LogCapture log;
    const Platform platform = PlatformFactory().create();
    QVERIFY(dynamic_cast<X11InputInjector *>(platform.injector.get()));
    QVERIFY(platform.pointer && platform.appearance && platform.autostart);
    QCOMPARE(log.takeLines(),
             QStringList{QStringLiteral("info: input goes through X11: display %1, XTEST 2.2")
                             .arg(QString::fromLatin1(server.display()))});
}

void tst_PlatformFactory::waylandSessionIsSaidToReachX11ProgramsOnly()
{
    const XServer server;
    server.exportDisplay();
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    LogCapture log;
    const Platform platform = PlatformFactory().create(QStringLiteral("x11"));
    const QStringList lines = log.takeLines();
    QCOMPARE(lines.size(), 1);
    QVERIFY(
        lines.first().endsWith(QLatin1String("this is a Wayland session, so only X11 programs are reached")));
    QCOMPARE(platform.notice,
             QStringLiteral("Keys reach X11 programs only. The user guide says under Wayland what helps."));
}

void tst_PlatformFactory::x11SessionHasNothingToSay()
{
    const XServer server;
    server.exportDisplay();
    QVERIFY(PlatformFactory().create().notice.isEmpty());
}

// In a session where the kernel's devices cannot be had (a build machine mostly has none).
void tst_PlatformFactory::waylandSessionWithoutTheKernelUsesX11AndSaysWhatHelps()
{
    if (!PlatformFactory::choices().contains(QLatin1String("uinput"))) {
        QSKIP("built without uinput");
    }
    if (access("/dev/uinput", R_OK | W_OK) == 0) {
        QSKIP("/dev/uinput can be used here");
    }
    const XServer server;
    server.exportDisplay();
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    LogCapture log;
    const Platform platform = PlatformFactory().create();
    QVERIFY(dynamic_cast<X11InputInjector *>(platform.injector.get()));
    const QStringList lines = log.takeLines();
    QCOMPARE(lines.size(), 2);
    QVERIFY(
        lines.first().startsWith(QLatin1String("warning: a better way for input is closed: /dev/uinput: ")));
    QVERIFY(lines.first().endsWith(QLatin1String("(the user guide says under Wayland what helps)")));
    QVERIFY(!platform.notice.isEmpty());

    // Who asks for it gets no other.
    const Platform asked = PlatformFactory().create(QStringLiteral("uinput"));
    QVERIFY(dynamic_cast<RecordingInjector *>(asked.injector.get()));
    QCOMPARE(asked.notice,
             QStringLiteral("Keys reach no program. The user guide says under Wayland what helps."));
}

void tst_PlatformFactory::x11SessionNeverAsksTheKernel()
{
    const XServer server;
    server.exportDisplay();
    qputenv("XDG_SESSION_TYPE", "x11");
    LogCapture log;
    const Platform platform = PlatformFactory().create();
    QVERIFY(dynamic_cast<X11InputInjector *>(platform.injector.get()));
    QCOMPARE(log.takeLines().size(), 1);
}

void tst_PlatformFactory::windowIsAnX11WindowOnWaylandToo()
{
    const XServer server;
    server.exportDisplay();
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    {
        const PlatformFactory platforms;
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("xcb"));
    }
    qputenv("QT_QPA_PLATFORM", "wayland"); // the user knows better
    const PlatformFactory platforms;
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("wayland"));
}

void tst_PlatformFactory::withoutADisplayInputGoesNowhereAndThatIsSaidOnce()
{
    LogCapture log;
    const Platform platform = PlatformFactory().create();
    QVERIFY(dynamic_cast<RecordingInjector *>(platform.injector.get()));
    platform.injector->sendKey('A', true);
    platform.injector->sendLeftButton(true);
    platform.appearance->setHidden(true);
    platform.pointer->moveTo(QPoint(4, 5));
    QCOMPARE(platform.pointer->position(), QPoint(4, 5));
    QVERIFY(!platform.pointer->screens().isEmpty());
    QVERIFY(platform.autostart);
    QCOMPARE(log.takeLines(), QStringList{QStringLiteral("warning: input goes nowhere: DISPLAY is not set")});
}

void tst_PlatformFactory::displayThatDoesNotAnswerIsNamed()
{
    qputenv("DISPLAY", "unix:/nowhere/to/be/found:0");
    LogCapture log;
    const Platform platform = PlatformFactory().create();
    QCOMPARE(log.takeLines(),
             QStringList{QStringLiteral("warning: input goes nowhere: cannot connect to display "
                                        "unix:/nowhere/to/be/found:0")});
}

void tst_PlatformFactory::serverWithoutXTestIsNotUsed()
{
    const XServer server(without("XTEST"));
    server.exportDisplay();
    LogCapture log;
    const Platform platform = PlatformFactory().create();
    QVERIFY(dynamic_cast<RecordingInjector *>(platform.injector.get()));
    QCOMPARE(
        log.takeLines(),
        QStringList{QStringLiteral("warning: input goes nowhere: the X server of display %1 has no XTEST")
                        .arg(QString::fromLatin1(server.display()))});
    QCOMPARE(platform.notice, QStringLiteral("Keys reach no program: this X server lacks XTEST."));
}

void tst_PlatformFactory::withoutADisplayThereIsNoMouseListener()
{
    const Platform platform = PlatformFactory().create();
    LogCapture log;
    QVERIFY(!platform.watchMouse([] {}));
    QCOMPARE(log.takeLines(),
             QStringList{QStringLiteral("warning: the user's own mouse is not watched: DISPLAY is not set")});
}

void tst_PlatformFactory::toolkitDrawsNowhereWithoutADisplay()
{
    {
        const PlatformFactory platforms;
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
    }
    qputenv("QT_QPA_PLATFORM", "minimal"); // the user knows better
    const PlatformFactory platforms;
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("minimal"));
}

void tst_PlatformFactory::toolkitDrawsNowhereWhenTheDisplayDoesNotAnswer()
{
    qputenv("DISPLAY", "unix:/nowhere/to/be/found:0");
    const PlatformFactory platforms;
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
}

void tst_PlatformFactory::toolkitIsLeftAloneWithADisplay()
{
    const XServer server;
    server.exportDisplay();
    {
        const PlatformFactory platforms;
        QVERIFY(!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
    }
    qunsetenv("DISPLAY");
    const QTemporaryDir folder;
    QLocalServer compositor;
    QVERIFY(compositor.listen(folder.filePath(QStringLiteral("wayland-0"))));
    qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    const PlatformFactory platforms;
    QVERIFY(!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
}

void tst_PlatformFactory::toolkitDrawsNowhereWhenTheCompositorDoesNotAnswer()
{
    const QTemporaryDir folder;
    qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    const PlatformFactory platforms;
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
}

void tst_PlatformFactory::listenerReportsToTheFunction()
{
    const XServer server;
    server.exportDisplay();
    int moved = 0;
    const Platform platform = PlatformFactory().create();
    const std::unique_ptr<QObject> listener = platform.watchMouse([&moved] { ++moved; });
    QVERIFY(listener);
    QVERIFY(QMetaObject::invokeMethod(listener.get(), "userMovedMouse"));
    QCOMPARE(moved, 1);
}

QTEST_GUILESS_MAIN(tst_PlatformFactory)

#include "tst_PlatformFactory.moc"
