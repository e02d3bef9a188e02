#include "tests/support/xserver/XTestDevices.h"

#include <QElapsedTimer>
#include <QThread>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>
#include <cstring>

namespace
{

const char xtestKeyboard[] = "Virtual core XTEST keyboard";
const char xtestPointer[] = "Virtual core XTEST pointer";

/// Calls @p use with the state of each class of a device.
template <typename Use>
void withDeviceState(Display *display, XID id, Use use)
{
    XDevice *device = XOpenDevice(display, id);
    if (!device) {
        return;
    }
    if (XDeviceState *state = XQueryDeviceState(display, device)) {
        const char *at = reinterpret_cast<const char *>(state->data);
        for (int i = 0; i < state->num_classes; ++i) {
            const auto *input = reinterpret_cast<const XInputClass *>(at);
            use(input);
            at += input->length;
        }
        XFreeDeviceState(state);
    }
    XCloseDevice(display, device);
}

} // namespace

XTestDevices::XTestDevices(const QByteArray &display)
    : m_display(XOpenDisplay(display.constData()))
{
}

XTestDevices::~XTestDevices()
{
    if (m_display) {
        XCloseDisplay(m_display);
    }
}

unsigned long XTestDevices::deviceId(const char *name) const
{
    int count = 0;
    XDeviceInfo *devices = XListInputDevices(m_display, &count);
    XID id = 0;
    for (int i = 0; i < count; ++i) {
        if (std::strcmp(devices[i].name, name) == 0) {
            id = devices[i].id;
        }
    }
    XFreeDeviceList(devices);
    return id;
}

QVector<int> XTestDevices::heldKeycodes() const
{
    QVector<int> held;
    withDeviceState(m_display, deviceId(xtestKeyboard), [&held](const XInputClass *input) {
        if (input->c_class == KeyClass) {
            const auto *keys = reinterpret_cast<const XKeyState *>(input);
            for (int keycode = 0; keycode < 256; ++keycode) {
                if (keys->keys[keycode / 8] & (1 << (keycode % 8))) {
                    held << keycode;
                }
            }
        }
    });
    return held;
}

bool XTestDevices::leftButtonHeld() const
{
    bool held = false;
    withDeviceState(m_display, deviceId(xtestPointer), [&held](const XInputClass *input) {
        if (input->c_class == ButtonClass) {
            held = reinterpret_cast<const XButtonState *>(input)->buttons[0] & 2;
        }
    });
    return held;
}

bool XTestDevices::waitNothingHeld(int timeoutMs) const
{
    QElapsedTimer patience;
    patience.start();
    while (!nothingHeld()) {
        if (patience.elapsed() > timeoutMs) {
            return false;
        }
        QThread::usleep(200);
    }
    return true;
}

void XTestDevices::moveMouseBy(int dx, int dy)
{
    moveDeviceBy("Xvfb mouse", dx, dy);
}

void XTestDevices::moveDeviceBy(const char *device, int dx, int dy)
{
    int axes[2] = {dx, dy};
    XDevice *opened = XOpenDevice(m_display, deviceId(device));
    if (opened) {
        XTestFakeDeviceMotionEvent(m_display, opened, True, 0, axes, 2, CurrentTime);
        XSync(m_display, False);
        XCloseDevice(m_display, opened);
    }
}

void XTestDevices::addMaster(const char *name)
{
    int major = 2;
    int minor = 2;
    XIQueryVersion(m_display, &major, &minor);
    XIAddMasterInfo change{XIAddMaster, const_cast<char *>(name), True, True};
    XIChangeHierarchy(m_display, reinterpret_cast<XIAnyHierarchyChangeInfo *>(&change), 1);
    XSync(m_display, False);
}

void XTestDevices::warpPointerTo(int x, int y)
{
    XWarpPointer(m_display, None, DefaultRootWindow(m_display), 0, 0, 0, 0, x, y);
    XSync(m_display, False);
}

void XTestDevices::moveXTestPointerTo(int x, int y)
{
    XTestFakeMotionEvent(m_display, -1, x, y, CurrentTime);
    XSync(m_display, False);
}

QPoint XTestDevices::pointerPosition() const
{
    Window root = 0;
    Window child = 0;
    int x = 0;
    int y = 0;
    int windowX = 0;
    int windowY = 0;
    unsigned mask = 0;
    XQueryPointer(m_display, DefaultRootWindow(m_display), &root, &child, &x, &y, &windowX, &windowY, &mask);
    return {x, y};
}

bool XTestDevices::grabPointer()
{
    return XGrabPointer(m_display, DefaultRootWindow(m_display), False, PointerMotionMask, GrabModeAsync,
                        GrabModeAsync, None, None, CurrentTime) == GrabSuccess;
}

void XTestDevices::setNumLock(bool on)
{
    const unsigned mask = XkbKeysymToModifiers(m_display, XStringToKeysym("Num_Lock"));
    XkbLockModifiers(m_display, XkbUseCoreKbd, mask, on ? mask : 0);
    XSync(m_display, False);
}

void XTestDevices::lockGroup(int group)
{
    XkbLockGroup(m_display, XkbUseCoreKbd, unsigned(group));
    XSync(m_display, False);
}

quint32 XTestDevices::keysymAt(int keycode) const
{
    int width = 0;
    KeySym *keysyms = XGetKeyboardMapping(m_display, KeyCode(keycode), 1, &width);
    const quint32 first = keysyms && width > 0 ? quint32(keysyms[0]) : 0;
    XFree(keysyms);
    return first;
}

void XTestDevices::assign(int keycode, quint32 keysym)
{
    KeySym symbol = keysym;
    XChangeKeyboardMapping(m_display, keycode, 1, &symbol, 1);
    XSync(m_display, False);
}

void XTestDevices::occupySpareKeycodes(quint32 keysym)
{
    const QVector<int> spares = keycodesOf(0);
    for (const int keycode : spares) {
        assign(keycode, keysym);
    }
}

QVector<int> XTestDevices::keycodesOf(quint32 keysym) const
{
    QVector<int> keycodes;
    int least = 0;
    int most = 0;
    XDisplayKeycodes(m_display, &least, &most);
    int width = 0;
    KeySym *keysyms = XGetKeyboardMapping(m_display, KeyCode(least), most - least + 1, &width);
    for (int keycode = least; keysyms && keycode <= most; ++keycode) {
        const KeySym *row = keysyms + std::ptrdiff_t(keycode - least) * width;
        bool empty = true;
        bool found = false;
        for (int i = 0; i < width; ++i) {
            empty = empty && row[i] == NoSymbol;
            found = found || (keysym != 0 && row[i] == keysym);
        }
        if (found || (keysym == 0 && empty)) {
            keycodes << keycode;
        }
    }
    XFree(keysyms);
    return keycodes;
}
