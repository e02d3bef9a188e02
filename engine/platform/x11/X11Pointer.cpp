#include "engine/platform/x11/X11Pointer.h"

#include <X11/Xlib.h>
#include <X11/extensions/Xinerama.h>
#include <X11/extensions/Xrandr.h>

X11Pointer::X11Pointer(std::shared_ptr<X11Connection> connection)
    : m_connection(std::move(connection))
{
    int opcode = 0;
    int event = 0;
    int error = 0;
    int major = 0;
    int minor = 0;
    Display *display = m_connection->display();
    // Asked of Xlib first: the RANDR library loses memory for a display without the extension.
    m_hasMonitors = XQueryExtension(display, "RANDR", &opcode, &event, &error) &&
                    XRRQueryVersion(display, &major, &minor) && (major > 1 || (major == 1 && minor >= 5));
}

QPoint X11Pointer::position() const
{
    Window root = 0;
    Window child = 0;
    int x = 0;
    int y = 0;
    int windowX = 0;
    int windowY = 0;
    unsigned mask = 0;
    XQueryPointer(m_connection->display(), m_connection->root(), &root, &child, &x, &y, &windowX, &windowY,
                  &mask);
    return {x, y};
}

void X11Pointer::moveTo(QPoint position)
{
    XWarpPointer(m_connection->display(), None, m_connection->root(), 0, 0, 0, 0, position.x(), position.y());
    m_connection->flush();
}

QVector<QRect> X11Pointer::screens() const
{
    QVector<QRect> screens = m_hasMonitors ? randrMonitors() : QVector<QRect>();
    if (screens.isEmpty()) {
        screens = xineramaScreens();
    }
    if (screens.isEmpty()) {
        Display *display = m_connection->display();
        const int screen = DefaultScreen(display);
        screens.append(QRect(0, 0, DisplayWidth(display, screen), DisplayHeight(display, screen)));
    }
    return screens;
}

QVector<QRect> X11Pointer::randrMonitors() const
{
    QVector<QRect> screens;
    int count = 0;
    XRRMonitorInfo *monitors = XRRGetMonitors(m_connection->display(), m_connection->root(), True, &count);
    for (int i = 0; monitors && i < count; ++i) {
        const QRect geometry(monitors[i].x, monitors[i].y, monitors[i].width, monitors[i].height);
        if (monitors[i].primary) {
            screens.prepend(geometry);
        } else {
            screens.append(geometry);
        }
    }
    if (monitors) {
        XRRFreeMonitors(monitors);
    }
    return screens;
}

QVector<QRect> X11Pointer::xineramaScreens() const
{
    QVector<QRect> screens;
    int count = 0;
    int event = 0;
    int error = 0;
    Display *display = m_connection->display();
    if (!XineramaQueryExtension(display, &event, &error) || !XineramaIsActive(display)) {
        return screens;
    }
    XineramaScreenInfo *infos = XineramaQueryScreens(display, &count);
    for (int i = 0; infos && i < count; ++i) {
        screens.append(QRect(infos[i].x_org, infos[i].y_org, infos[i].width, infos[i].height));
    }
    if (infos) {
        XFree(infos);
    }
    return screens;
}
