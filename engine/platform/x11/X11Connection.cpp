#include "engine/platform/x11/X11Connection.h"

#include "engine/platform/PlatformLog.h"

#include <QVector>

#include <X11/Xlib.h>

namespace
{

QVector<Display *> &ownDisplays()
{
    static QVector<Display *> displays;
    return displays;
}

// There is one handler of each kind for the whole process, so foreign errors are handed on to who was there
// before.
XErrorHandler previousHandler = nullptr;
XIOErrorHandler previousBreakHandler = nullptr;

/// Xlib's own handler ends the program.
int logError(Display *display, XErrorEvent *error)
{
    if (!ownDisplays().contains(display)) {
        return previousHandler ? previousHandler(display, error) : 0;
    }
    char text[128];
    XGetErrorText(display, error->error_code, text, sizeof text);
    qCWarning(lcPlatform, "the X server refused a request (%d.%d): %s", error->request_code,
              error->minor_code, text);
    return 0;
}

/// So does this one; for our displays the handler for leaving says what has happened.
int passOverBreak(Display *display)
{
    const bool foreign = !ownDisplays().contains(display);
    return foreign && previousBreakHandler ? previousBreakHandler(display) : 0;
}

void installHandlers()
{
    const XErrorHandler previous = XSetErrorHandler(logError);
    previousHandler = previous != logError ? previous : previousHandler;
    const XIOErrorHandler previousBreak = XSetIOErrorHandler(passOverBreak);
    previousBreakHandler = previousBreak != passOverBreak ? previousBreak : previousBreakHandler;
}

} // namespace

std::shared_ptr<X11Connection> X11Connection::open(QString &problem)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        problem = QStringLiteral("DISPLAY is not set");
        return nullptr;
    }
    Display *display = XOpenDisplay(nullptr);
    if (!display) {
        problem = QStringLiteral("cannot connect to display ") + qEnvironmentVariable("DISPLAY");
        return nullptr;
    }
    return std::shared_ptr<X11Connection>(new X11Connection(display));
}

X11Connection::X11Connection(Display *display)
    : m_display(display)
{
    ownDisplays().append(display);
    installHandlers();
    // Xlib ends the program unless a display has a handler for leaving that returns.
    XSetIOErrorExitHandler(
        display,
        [](Display *, void *self) {
            auto *connection = static_cast<X11Connection *>(self);
            if (!connection->m_lost) {
                connection->m_lost = true;
                qCWarning(lcPlatform, "the connection to the X server is lost");
            }
        },
        this);
}

X11Connection::~X11Connection()
{
    XCloseDisplay(m_display);
    ownDisplays().removeAll(m_display);
}

QByteArray X11Connection::name() const
{
    return QByteArray(DisplayString(m_display));
}

unsigned long X11Connection::root() const
{
    return DefaultRootWindow(m_display);
}

void X11Connection::flush() const
{
    XFlush(m_display);
}
