#include "tests/support/listener/Listener.h"

#include "tests/support/listener/KeyCodes.h"
#include "tests/support/listener/Output.h"

#include <X11/XKBlib.h>
#include <X11/Xutil.h>
#include <cstdio>
#include <poll.h>

namespace listener
{

namespace
{

constexpr int patience = 5000; // ms

bool isKeypad(KeySym keysym)
{
    return IsKeypadKey(keysym);
}

} // namespace

Listener::Listener(Display *display, const Arguments &arguments, const Output &output)
    : m_display(display)
    , m_output(output)
{
    const int screen = DefaultScreen(display);
    const bool everything = arguments.width == 0;
    m_inFront = everything;
    XSetWindowAttributes attributes = {};
    attributes.override_redirect = everything ? True : False;
    attributes.background_pixel = WhitePixel(display, screen);
    attributes.event_mask = KeyPressMask | KeyReleaseMask | ButtonPressMask | ButtonReleaseMask |
                            PointerMotionMask | StructureNotifyMask | FocusChangeMask | VisibilityChangeMask;
    const auto width = static_cast<unsigned>(everything ? DisplayWidth(display, screen) : arguments.width);
    const auto height = static_cast<unsigned>(everything ? DisplayHeight(display, screen) : arguments.height);
    m_window =
        XCreateWindow(display, DefaultRootWindow(display), 0, 0, width, height, 0, CopyFromParent,
                      InputOutput, nullptr, CWOverrideRedirect | CWBackPixel | CWEventMask, &attributes);
    XStoreName(display, m_window, "Listener");
    if (!arguments.windowClass.empty()) {
        std::string name = arguments.windowClass;
        XClassHint names{name.data(), name.data()};
        XSetClassHint(display, m_window, &names);
    }
    // A held key then sends presses only, which are told apart from the first by m_held.
    XkbSetDetectableAutoRepeat(display, True, nullptr);
    XMapRaised(display, m_window);
}

bool Listener::takeFocus()
{
    bool shown = false;
    bool focused = false;
    const std::int64_t end = monotonicNow() + patience * std::int64_t{1'000'000};
    while (!focused && monotonicNow() < end) {
        while (XPending(m_display) > 0) {
            XEvent event;
            XNextEvent(m_display, &event);
            if (event.type == VisibilityNotify && !shown) {
                shown = true;
                XSetInputFocus(m_display, m_window, RevertToParent, CurrentTime);
            }
            focused = focused || event.type == FocusIn;
        }
        XFlush(m_display);
        pollfd connection = {ConnectionNumber(m_display), POLLIN, 0};
        if (!focused) {
            poll(&connection, 1, 50);
        }
    }
    return focused;
}

void Listener::drain()
{
    while (XPending(m_display) > 0) {
        XEvent event;
        XNextEvent(m_display, &event);
        handle(event, monotonicNow());
    }
}

void Listener::handle(XEvent &event, std::int64_t now)
{
    char text[64];
    switch (event.type) {
    case KeyPress:
    case KeyRelease:
        handleKey(event.xkey, now);
        break;
    case ButtonPress:
    case ButtonRelease:
        if (event.xbutton.button == Button1) {
            m_output.line(now, event.type == ButtonPress ? "left down" : "left up");
        }
        break;
    case MotionNotify:
        std::snprintf(text, sizeof text, "move %d %d", event.xmotion.x_root, event.xmotion.y_root);
        m_output.line(now, text);
        break;
    case VisibilityNotify:
        // Over the whole screen it stays in front: the program under test has a window of its own.
        if (m_inFront && event.xvisibility.state != VisibilityUnobscured) {
            XRaiseWindow(m_display, m_window);
            XFlush(m_display);
        }
        break;
    case MappingNotify:
        XRefreshKeyboardMapping(&event.xmapping);
        break;
    default:
        break;
    }
}

void Listener::handleKey(XKeyEvent &event, std::int64_t now)
{
    int &held = m_held.at(event.keycode & 0xffU);
    const bool down = event.type == KeyPress;
    if (down == (held != 0)) {
        return;
    }
    // The release is that of the key that was pressed, also when the layout or NumLock has changed since.
    const int code = down ? codeOf(event) : held;
    held = down ? code : 0;
    char text[64];
    if (code < 0) {
        std::snprintf(text, sizeof text, "keycode %d %s", -code, down ? "down" : "up");
    } else {
        std::snprintf(text, sizeof text, "key %d %s", code, down ? "down" : "up");
    }
    m_output.line(now, text);
}

int Listener::codeOf(XKeyEvent &event) const
{
    const auto keycode = static_cast<KeyCode>(event.keycode);
    const unsigned group = XkbGroupForCoreState(event.state);
    KeySym keysym = XkbKeycodeToKeysym(m_display, keycode, static_cast<int>(group), 0);
    if (isKeypad(keysym)) {
        XkbLookupKeySym(m_display, keycode, event.state, nullptr, &keysym);
    }
    const int code = virtualKeyOf(keysym);
    return code != 0 ? code : -static_cast<int>(keycode);
}

} // namespace listener
