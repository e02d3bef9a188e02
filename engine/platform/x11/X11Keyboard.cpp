#include "engine/platform/x11/X11Keyboard.h"

#include "engine/platform/PlatformLog.h"
#include "engine/platform/x11/X11Layout.h"
#include "engine/platform/x11/XTestSources.h"

#include <X11/XKBlib.h>
#include <X11/Xlib-xcb.h>
#include <X11/extensions/XInput2.h>
#include <xcb/xtest.h>

X11Keyboard::X11Keyboard(std::shared_ptr<X11Connection> connection, std::function<void()> changed)
    : m_connection(std::move(connection))
    , m_changed(std::move(changed))
    , m_device(XkbUseCoreKbd)
{
    int major = 2;
    int minor = 2;
    int opcode = 0;
    int event = 0;
    int error = 0;
    Display *display = m_connection->display();
    // Our events go through the XTEST keyboard, so its layout is the one that counts. The core keyboard shows
    // that of the device that was used last.
    if (XQueryExtension(display, "XInputExtension", &opcode, &event, &error) &&
        XIQueryVersion(display, &major, &minor) == Success) {
        const int id = XTestSources::keyboard(display);
        m_device = id > 0 ? unsigned(id) : XkbUseCoreKbd;
    }
    XkbQueryExtension(display, &opcode, &m_eventBase, &error, nullptr, nullptr);
    watch();
}

X11Keyboard::~X11Keyboard() = default;

void X11Keyboard::watch()
{
    Display *display = m_connection->display();
    const unsigned mapEvents = XkbNewKeyboardNotifyMask | XkbMapNotifyMask;
    XkbSelectEvents(display, m_device, mapEvents, mapEvents);
    // The state belongs to the core keyboard. Only what stays is of interest: Shift and the like would wake
    // us up whenever the user types.
    const unsigned stateParts = XkbGroupStateMask | XkbModifierLockMask;
    XkbSelectEventDetails(display, XkbUseCoreKbd, XkbStateNotify, stateParts, stateParts);
    m_connection->flush();
    m_notifier = std::make_unique<QSocketNotifier>(ConnectionNumber(display), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { notice(); });
}

bool X11Keyboard::takeNews()
{
    Display *display = m_connection->display();
    bool news = false;
    while (!m_connection->isLost() && XEventsQueued(display, QueuedAfterReading) > 0) {
        XkbEvent event;
        XNextEvent(display, &event.core);
        if (event.type == m_eventBase) {
            // The core keyboard gets another layout whenever the user's keys and ours take turns.
            const bool ofAnother = event.any.xkb_type == XkbNewKeyboardNotify && m_device != XkbUseCoreKbd &&
                                   event.any.device != m_device;
            news = news || !ofAnother;
        }
    }
    return news;
}

void X11Keyboard::notice()
{
    // Reading the layout can bring further news along, for which the notifier does not wake up. There is an
    // end to it even if another program changes the layout back each time.
    for (int round = 0; round < 10 && takeNews(); ++round) {
        m_changed();
    }
    if (m_connection->isLost()) {
        m_notifier->setEnabled(false);
    }
}

void X11Keyboard::sendKey(quint8 keycode, bool down)
{
    fake(down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keycode);
}

void X11Keyboard::sendLeftButton(bool down)
{
    fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1);
}

// Not through Xlib: its flush also looks, twice, for what has come in.
void X11Keyboard::fake(quint8 event, quint8 detail)
{
    xcb_connection_t *connection = XGetXCBConnection(m_connection->display());
    xcb_test_fake_input(connection, event, detail, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    xcb_flush(connection);
}

void X11Keyboard::latchModifiers(quint8 modifiers)
{
    XkbLatchModifiers(m_connection->display(), XkbUseCoreKbd, modifiers, modifiers);
}

void X11Keyboard::assign(quint8 keycode, quint32 keysym, quint32 shifted)
{
    KeySym symbols[2] = {keysym, shifted};
    XChangeKeyboardMapping(m_connection->display(), keycode, shifted != 0 ? 2 : 1, symbols, 1);
    m_connection->flush();
}

void X11Keyboard::giveBack(const QVector<Borrowed> &borrowed)
{
    if (borrowed.isEmpty() || m_connection->isLost()) {
        return;
    }
    Display *display = m_connection->display();
    XGrabServer(display);
    for (const Borrowed &each : borrowed) {
        int width = 0;
        KeySym *symbols = XGetKeyboardMapping(display, each.keycode, 1, &width);
        if (symbols && width > 0 && symbols[0] == each.keysym) {
            assign(each.keycode, 0, 0);
        }
        if (symbols) {
            XFree(symbols);
        }
    }
    XUngrabServer(display);
    XSync(display, False);
}

std::optional<KeyboardMap> X11Keyboard::readMap() const
{
    const X11Layout layout = X11Layout::read(*m_connection, m_device);
    if (!layout.keymap.isValid()) {
        qCWarning(lcPlatform, "cannot read the keyboard layout");
        return {};
    }
    return layout.keymap.map(layout.state, layout.modifierKeys);
}
