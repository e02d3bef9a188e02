#include "tests/bench/whole_program/KeyWatch.h"

#include <QPoint>
#include <QSize>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <ctime>
#include <poll.h>

namespace
{

constexpr int patience = 1000; // ms

constexpr QSize programSize(900, 650);
constexpr QPoint closeButton(13, 13);

} // namespace

KeyWatch::KeyWatch(const QByteArray &display)
    : m_display(XOpenDisplay(display.constData()))
{
    if (!m_display) {
        return;
    }
    XSetWindowAttributes attributes = {};
    attributes.override_redirect = True;
    attributes.event_mask = KeyPressMask | KeyReleaseMask | VisibilityChangeMask;
    m_window = XCreateWindow(m_display, DefaultRootWindow(m_display), 0, 0, 200, 200, 0, CopyFromParent,
                             InputOutput, nullptr, CWOverrideRedirect | CWEventMask, &attributes);
    XMapRaised(m_display, m_window);
    XEvent event;
    do {
        XNextEvent(m_display, &event);
    } while (event.type != VisibilityNotify);
    XSetInputFocus(m_display, m_window, RevertToParent, CurrentTime);
    XSync(m_display, False);
}

KeyWatch::~KeyWatch()
{
    if (m_display) {
        XCloseDisplay(m_display);
    }
}

bool KeyWatch::hideProgram()
{
    Window root = 0;
    Window parent = 0;
    Window *windows = nullptr;
    unsigned count = 0;
    if (XQueryTree(m_display, DefaultRootWindow(m_display), &root, &parent, &windows, &count) == 0) {
        return false;
    }
    bool hidden = false;
    for (unsigned i = 0; i < count && !hidden; ++i) {
        XWindowAttributes window;
        if (windows[i] != m_window && XGetWindowAttributes(m_display, windows[i], &window) != 0 &&
            window.width == programSize.width() && window.height == programSize.height() &&
            window.map_state == IsViewable) {
            XTestFakeMotionEvent(m_display, -1, window.x + closeButton.x(), window.y + closeButton.y(), 0);
            XTestFakeButtonEvent(m_display, Button1, True, 0);
            XTestFakeButtonEvent(m_display, Button1, False, 0);
            XSync(m_display, False);
            for (int waited = 0; window.map_state == IsViewable && waited < patience; waited += 10) {
                poll(nullptr, 0, 10);
                XGetWindowAttributes(m_display, windows[i], &window);
            }
            hidden = window.map_state != IsViewable;
        }
    }
    XFree(windows);
    XSetInputFocus(m_display, m_window, RevertToParent, CurrentTime);
    XSync(m_display, False);
    return hidden;
}

std::int64_t KeyWatch::now()
{
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

std::int64_t KeyWatch::waitFor(bool press)
{
    for (;;) {
        while (XPending(m_display) > 0) {
            XEvent event;
            XNextEvent(m_display, &event);
            if (event.type == (press ? KeyPress : KeyRelease)) {
                return now();
            }
        }
        pollfd connection = {ConnectionNumber(m_display), POLLIN, 0};
        if (poll(&connection, 1, patience) <= 0) {
            return 0;
        }
    }
}
