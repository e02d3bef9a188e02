#include "engine/platform/Platform.h"
#include "engine/platform/PlatformLog.h"
#include "engine/platform/linux/DesktopNotification.h"
#include "engine/platform/linux/SessionKind.h"
#include "engine/platform/linux/SignalWatcher.h"
#include "engine/platform/linux/StartingProcess.h"
#include "engine/platform/linux/XdgAutostartEntry.h"
#include "engine/platform/x11/CrashRelease.h"
#include "engine/platform/x11/OSXMouseListener.h"
#include "engine/platform/x11/X11Desktop.h"
#include "engine/platform/x11/X11FocusedProgram.h"
#include "engine/platform/x11/X11InputInjector.h"
#include "engine/platform/x11/X11Pointer.h"
#include "engine/platform/x11/X11PointerAppearance.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <X11/XKBlib.h>
#include <X11/Xlib-xcb.h>
#include <algorithm>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xtest.h>

namespace
{

bool displayAnswers()
{
    Display *display = qEnvironmentVariableIsEmpty("DISPLAY") ? nullptr : XOpenDisplay(nullptr);
    if (display) {
        XCloseDisplay(display);
    }
    return display != nullptr;
}

bool waylandAnswers()
{
    if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        return false;
    }
    const QDir folder(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    const QByteArray path =
        QFile::encodeName(folder.absoluteFilePath(qEnvironmentVariable("WAYLAND_DISPLAY")));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= int(sizeof address.sun_path)) {
        return false;
    }
    std::copy(path.begin(), path.end(), address.sun_path);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool answers = connect(connection, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    close(connection);
    return answers;
}

/// What the server lacks for us, or nothing.
QString missingExtension(Display *display, QString &found)
{
    xcb_connection_t *connection = XGetXCBConnection(display);
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(connection, &xcb_test_id);
    if (!extension || !extension->present) {
        return QStringLiteral("XTEST"); // to ask it for its version would end the connection
    }
    const auto request = xcb_test_get_version(connection, XCB_TEST_MAJOR_VERSION, XCB_TEST_MINOR_VERSION);
    if (auto *version = xcb_test_get_version_reply(connection, request, nullptr)) {
        found = QStringLiteral("XTEST %1.%2").arg(version->major_version).arg(version->minor_version);
        std::free(version);
    }
    int opcode = 0;
    int event = 0;
    int error = 0;
    return XkbQueryExtension(display, &opcode, &event, &error, nullptr, nullptr) ? QString()
                                                                                 : QStringLiteral("XKB");
}

std::unique_ptr<QObject> watchMouse(std::function<void()> userMoved)
{
    auto listener = std::make_unique<OSXMouseListener>();
    QObject::connect(listener.get(), &OSXMouseListener::userMovedMouse, listener.get(), std::move(userMoved));
    listener->doWork();
    return listener->isWatching() ? std::move(listener) : nullptr;
}

/// What reaches the X server, through one connection.
bool addInput(Platform &platform)
{
    const std::shared_ptr<X11Connection> connection = X11Connection::open(platform.input);
    if (!connection) {
        return false;
    }
    QString found;
    const QString missing = missingExtension(connection->display(), found);
    const QString name = QString::fromLocal8Bit(connection->name());
    if (!missing.isEmpty()) {
        platform.input = QStringLiteral("the X server of display %1 has no %2").arg(name, missing);
        platform.notice =
            QCoreApplication::translate("Platform", "Keys reach no program: this X server lacks %1.")
                .arg(missing);
        return false;
    }
    HeldInput &held = CrashRelease::heldInput();
    held.setDisplay(connection->name().constData());
    platform.injector = std::make_unique<X11InputInjector>(connection, held);
    platform.pointer = std::make_unique<X11Pointer>(connection);
    platform.appearance = std::make_unique<X11PointerAppearance>(connection);
    platform.watchMouse = watchMouse;
    if (!SessionKind::isWayland()) { // there most windows are none of the X server's
        platform.focusedProgram = std::make_unique<X11FocusedProgram>();
    }

    platform.input = QStringLiteral("X11: display %1, %2").arg(name, found);
    platform.notice.clear();
    if (SessionKind::isWayland()) {
        platform.notice = QCoreApplication::translate(
            "Platform", "Keys reach X11 programs only. The user guide says under Wayland what helps.");
        platform.input += QLatin1String("; this is a Wayland session, so only X11 programs are reached");
    }
    if (!CrashRelease::problem().isEmpty()) {
        qCWarning(lcPlatform).noquote()
            << "held keys are not released when the program is killed:" << CrashRelease::problem();
    }
    return true;
}

void addSystem(Platform &platform)
{
    platform.desktop = std::make_unique<X11Desktop>();
    platform.autostart = std::make_unique<XdgAutostartEntry>();
    platform.notify = DesktopNotification::show;
    // The end of the session needs nothing here: the toolkit quits when the session manager says so, and
    // systemd and display managers send SIGTERM.
    platform.watchQuitRequests = [](std::function<void()> quit) {
        return std::make_unique<SignalWatcher>([quit = std::move(quit)](int number) {
            qCInfo(lcPlatform, "asked to quit by signal %d", number);
            quit();
        });
    };
}

void prepareToolkit()
{
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        // The user has decided.
    } else if (displayAnswers()) {
        // As a Wayland client the window could not place itself or its dialogs, come to the front, or take
        // all keys for a shortcut's capture.
        if (SessionKind::isWayland()) {
            qputenv("QT_QPA_PLATFORM", "xcb");
        }
    } else if (!waylandAnswers()) {
        // The toolkit ends the program when what is named does not answer.
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // Nothing here draws with OpenGL, whose libraries are larger than the rest of the program.
    if (qEnvironmentVariableIsEmpty("QT_XCB_GL_INTEGRATION")) {
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    }
}

// XWayland's server is one too.
bool fits()
{
    return true;
}

void *prepare(const CrashTask &task)
{
    prepareStartingProcess();
    void *memory = CrashRelease::start(task);
    prepareToolkit();
    return memory;
}

} // namespace

Backend x11Backend()
{
    return {"x11", fits, prepare, addSystem, addInput};
}
