#include "tests/support/xserver/XClient.h"

#include "engine/platform/x11/XTestSources.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

namespace
{

constexpr unsigned numLockMask = Mod2Mask;

} // namespace

XClient::XClient(const QByteArray &display)
    : m_display(XOpenDisplay(display.constData()))
{
    int major = 2;
    int minor = 2;
    XIQueryVersion(m_display, &major, &minor);
    m_keyboard = unsigned(XTestSources::keyboard(m_display));
}

XClient::~XClient()
{
    if (m_display) {
        XCloseDisplay(m_display);
    }
}

void XClient::sync()
{
    XSync(m_display, False);
}

void XClient::key(int keycode, bool down)
{
    XTestFakeKeyEvent(m_display, unsigned(keycode), down, CurrentTime);
    sync();
}

void XClient::tap(int keycode)
{
    key(keycode, true);
    key(keycode, false);
}

void XClient::moveMouse(const QPoint &pixel)
{
    XTestFakeMotionEvent(m_display, 0, pixel.x(), pixel.y(), CurrentTime);
    sync();
}

void XClient::mouseButton(bool down)
{
    XTestFakeButtonEvent(m_display, Button1, down, CurrentTime);
    sync();
}

void XClient::wheel(bool down)
{
    const unsigned button = down ? Button5 : Button4;
    XTestFakeButtonEvent(m_display, button, True, CurrentTime);
    XTestFakeButtonEvent(m_display, button, False, CurrentTime);
    sync();
}

bool XClient::mouseIsTaken()
{
    const int answer = XGrabPointer(m_display, DefaultRootWindow(m_display), False, 0, GrabModeAsync,
                                    GrabModeAsync, None, None, CurrentTime);
    if (answer == GrabSuccess) {
        XUngrabPointer(m_display, CurrentTime);
        sync();
    }
    return answer == AlreadyGrabbed;
}

bool XClient::keyboardIsTaken()
{
    const int answer = XGrabKeyboard(m_display, DefaultRootWindow(m_display), False, GrabModeAsync,
                                     GrabModeAsync, CurrentTime);
    if (answer == GrabSuccess) {
        XUngrabKeyboard(m_display, CurrentTime);
        sync();
    }
    return answer == AlreadyGrabbed;
}

bool XClient::takeAll()
{
    const Window root = DefaultRootWindow(m_display);
    return XGrabPointer(m_display, root, False, 0, GrabModeAsync, GrabModeAsync, None, None, CurrentTime) ==
               GrabSuccess &&
           XGrabKeyboard(m_display, root, False, GrabModeAsync, GrabModeAsync, CurrentTime) == GrabSuccess;
}

void XClient::giveBack()
{
    XUngrabPointer(m_display, CurrentTime);
    XUngrabKeyboard(m_display, CurrentTime);
    sync();
}

void XClient::unmap(quint64 window)
{
    XUnmapWindow(m_display, window);
    sync();
}

void XClient::map(quint64 window)
{
    XMapWindow(m_display, window);
    sync();
}

void XClient::lockGroup(int group)
{
    // The keyboard that types has a state of its own, which becomes that of all with its next key.
    for (const unsigned device : {unsigned(XkbUseCoreKbd), m_keyboard}) {
        XkbLockGroup(m_display, device, unsigned(group));
    }
    sync();
}

void XClient::setNumLock(bool on)
{
    XkbLockModifiers(m_display, XkbUseCoreKbd, numLockMask, on ? numLockMask : 0);
    sync();
}

void XClient::unlockAll()
{
    XkbLockModifiers(m_display, XkbUseCoreKbd, 0xff, 0);
    lockGroup(0);
}
