#include "tests/support/xserver/KeyWindow.h"

#include <QElapsedTimer>
#include <QStringList>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <poll.h>

namespace
{

/// Waits until the connection has something to read; false when the time is over.
bool waitReadable(Display *display, int timeoutMs)
{
    pollfd descriptor{ConnectionNumber(display), POLLIN, 0};
    return poll(&descriptor, 1, timeoutMs) > 0;
}

} // namespace

KeyWindow::KeyWindow(const QByteArray &display, int width, int height)
{
    m_display = XOpenDisplay(display.constData());
    if (!m_display) {
        return;
    }
    XAutoRepeatOff(m_display);
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    attributes.background_pixel = BlackPixel(m_display, DefaultScreen(m_display));
    attributes.event_mask =
        KeyPressMask | KeyReleaseMask | ButtonPressMask | ButtonReleaseMask | ExposureMask;
    const Window window = XCreateWindow(m_display, DefaultRootWindow(m_display), 0, 0, uint(width),
                                        uint(height), 0, CopyFromParent, InputOutput, CopyFromParent,
                                        CWOverrideRedirect | CWBackPixel | CWEventMask, &attributes);
    XMapRaised(m_display, window);
    QElapsedTimer patience;
    patience.start();
    XEvent event;
    while (!XCheckTypedEvent(m_display, Expose, &event)) {
        if (patience.elapsed() > 5000) {
            return;
        }
        waitReadable(m_display, 100);
    }
    XSetInputFocus(m_display, window, RevertToParent, CurrentTime);
    XSync(m_display, False);
    Window focused = 0;
    int revert = 0;
    XGetInputFocus(m_display, &focused, &revert);
    m_window = focused == window ? window : 0;
}

KeyWindow::~KeyWindow()
{
    if (m_display) {
        XCloseDisplay(m_display);
    }
}

bool KeyWindow::readOne(Event *event)
{
    while (XPending(m_display) > 0) {
        XEvent received;
        XNextEvent(m_display, &received);
        if (received.type == MappingNotify) {
            XRefreshKeyboardMapping(&received.xmapping);
        } else if (received.type == KeyPress || received.type == KeyRelease) {
            event->kind = Kind::Key;
            event->down = received.type == KeyPress;
            event->code = received.xkey.keycode;
            event->state = received.xkey.state;
            char text[32];
            KeySym keysym = NoSymbol;
            const int length = XLookupString(&received.xkey, text, sizeof text, &keysym, nullptr);
            event->keysym = quint32(keysym);
            event->text = event->down ? QString::fromLatin1(text, length) : QString();
            return true;
        } else if (received.type == ButtonPress || received.type == ButtonRelease) {
            event->kind = Kind::Button;
            event->down = received.type == ButtonPress;
            event->code = received.xbutton.button;
            event->state = received.xbutton.state;
            return true;
        }
    }
    return false;
}

QVector<KeyWindow::Event> KeyWindow::take(int count, int timeoutMs)
{
    QVector<Event> events;
    QElapsedTimer patience;
    patience.start();
    while (events.size() < count) {
        Event event;
        if (readOne(&event)) {
            events << event;
            continue;
        }
        const qint64 left = timeoutMs - patience.elapsed();
        if (left <= 0) {
            break;
        }
        waitReadable(m_display, int(left));
    }
    return events;
}

KeyWindow::Event KeyWindow::next(int timeoutMs)
{
    const QVector<Event> events = take(1, timeoutMs);
    return events.isEmpty() ? Event() : events.first();
}

QVector<KeyWindow::Event> KeyWindow::takeAll()
{
    XSync(m_display, False);
    QVector<Event> events;
    Event event;
    while (readOne(&event)) {
        events << event;
        event = Event();
    }
    return events;
}

QStringList KeyWindow::names(const QVector<Event> &events)
{
    QStringList names;
    for (const Event &event : events) {
        names << event.name();
    }
    return names;
}

QString KeyWindow::Event::name() const
{
    const QString what = kind == Kind::Button ? QStringLiteral("button %1").arg(code)
                                              : QString::fromLatin1(XKeysymToString(KeySym(keysym)));
    return what + (down ? QLatin1String(" down") : QLatin1String(" up"));
}

void KeyWindow::useWhitePointer()
{
    const int size = 16;
    QByteArray bits(size * size / 8, char(0xff));
    const Pixmap shape = XCreateBitmapFromData(m_display, m_window, bits.constData(), size, size);
    XColor white{0, 0xffff, 0xffff, 0xffff, DoRed | DoGreen | DoBlue, 0};
    const Cursor pointer = XCreatePixmapCursor(m_display, shape, shape, &white, &white, 0, 0);
    XDefineCursor(m_display, m_window, pointer);
    XFreePixmap(m_display, shape);
    XSync(m_display, False);
}
