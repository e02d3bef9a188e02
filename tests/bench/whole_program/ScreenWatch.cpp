#include "tests/bench/whole_program/ScreenWatch.h"

#include "tests/bench/whole_program/KeyWatch.h"

#include <QSize>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <poll.h>

namespace
{

constexpr QSize programSize(900, 650);

/// A window may be gone by the time that it is asked about.
int passOver(Display *, XErrorEvent *)
{
    return 0;
}

} // namespace

ScreenWatch::ScreenWatch(const QByteArray &display)
    : m_display(XOpenDisplay(display.constData()))
{
    if (m_display) {
        XSetErrorHandler(passOver);
        XSelectInput(m_display, DefaultRootWindow(m_display), SubstructureNotifyMask);
        XSync(m_display, False);
    }
}

ScreenWatch::~ScreenWatch()
{
    if (m_display) {
        XCloseDisplay(m_display);
    }
}

std::int64_t ScreenWatch::now()
{
    return KeyWatch::now();
}

void ScreenWatch::forget()
{
    XSync(m_display, True);
    m_window = 0;
}

std::int64_t ScreenWatch::waitForWindow(int timeoutMs)
{
    const std::int64_t end = now() + std::int64_t(timeoutMs) * 1'000'000;
    while (now() < end) {
        while (XPending(m_display) > 0) {
            XEvent event;
            XNextEvent(m_display, &event);
            const std::int64_t time = now();
            XWindowAttributes window;
            if (event.type == MapNotify && XGetWindowAttributes(m_display, event.xmap.window, &window) != 0 &&
                QSize(window.width, window.height) == programSize) {
                m_window = event.xmap.window;
                return time;
            }
        }
        pollfd connection = {ConnectionNumber(m_display), POLLIN, 0};
        poll(&connection, 1, 100);
    }
    return 0;
}

QByteArray ScreenWatch::row(int y) const
{
    XImage *image = XGetImage(m_display, m_window, 0, y, static_cast<unsigned>(programSize.width()), 1,
                              AllPlanes, ZPixmap);
    if (!image) {
        return {};
    }
    const QByteArray pixels(image->data, image->bytes_per_line);
    XDestroyImage(image);
    return pixels;
}
