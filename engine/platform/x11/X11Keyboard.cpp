#include "engine/platform/x11/X11Keyboard.h"

#include "engine/platform/PlatformLog.h"
#include "engine/platform/x11/XTestSources.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XKBgeom.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <algorithm>
#include <cstring>

namespace
{

struct KeyboardFree {
    void operator()(XkbDescPtr description) const { XkbFreeKeyboard(description, 0, True); }
};
using Description = std::unique_ptr<XkbDescRec, KeyboardFree>;

/// The group of a key that counts while the keyboard's active group is @p active: a key may have fewer.
int groupOf(XkbDescPtr description, KeyCode keycode, int active)
{
    const int count = XkbKeyNumGroups(description, keycode);
    if (active < count) {
        return active;
    }
    const unsigned char info = XkbKeyGroupInfo(description, keycode);
    switch (XkbOutOfRangeGroupAction(info)) {
    case XkbRedirectIntoRange: {
        const int redirected = int(XkbOutOfRangeGroupNumber(info));
        return redirected < count ? redirected : 0;
    }
    case XkbClampIntoRange:
        return count - 1;
    default:
        return active % count;
    }
}

/// The modifiers that select a level of a key, besides those that are @p locked.
/// @return false when no combination of others does.
bool modifiersOf(XkbKeyTypePtr type, int level, unsigned locked, quint8 *missing)
{
    const unsigned given = locked & type->mods.mask;
    for (int i = 0; i < type->map_count; ++i) {
        const XkbKTMapEntryRec &entry = type->map[i];
        if (entry.active && entry.level == level && (entry.mods.mask & given) == given) {
            *missing = quint8(entry.mods.mask & ~given);
            return true;
        }
    }
    // What no entry names is level 0.
    const bool named =
        std::any_of(type->map, type->map + type->map_count, [given](const XkbKTMapEntryRec &entry) {
            return entry.active && entry.mods.mask == given;
        });
    *missing = 0;
    return level == 0 && !named;
}

/// Every symbol of a key: of all its groups and levels.
QVector<KeySym> symbolsOf(XkbDescPtr description, KeyCode keycode)
{
    const KeySym *symbols = XkbKeySymsPtr(description, keycode);
    const auto count = static_cast<std::ptrdiff_t>(XkbKeyNumSyms(description, keycode));
    return QVector<KeySym>(symbols, symbols + count);
}

bool isEmpty(XkbDescPtr description, KeyCode keycode)
{
    const QVector<KeySym> symbols = symbolsOf(description, keycode);
    return symbols.count(NoSymbol) == symbols.size() && description->map->modmap[keycode] == 0;
}

/// Which keys give which modifier bits, and which bit NumLock is.
void addModifiers(XkbDescPtr description, KeyboardMap &map)
{
    for (unsigned keycode = description->max_key_code; keycode >= description->min_key_code; --keycode) {
        const unsigned char bits = description->map->modmap[keycode];
        if (bits == 0) {
            continue;
        }
        const QVector<KeySym> symbols = symbolsOf(description, KeyCode(keycode));
        if (symbols.contains(XK_Num_Lock)) {
            map.setNumLockMask(bits);
        }
        const bool shifts = symbols.contains(XK_Shift_L) || symbols.contains(XK_ISO_Level3_Shift);
        for (int bit = 0; shifts && bit < 8; ++bit) {
            if (bits & (1U << bit)) {
                map.setModifierKey(bit, quint8(keycode));
            }
        }
    }
}

} // namespace

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
    XTestFakeKeyEvent(m_connection->display(), keycode, down, CurrentTime);
    m_connection->flush();
}

void X11Keyboard::sendLeftButton(bool down)
{
    XTestFakeButtonEvent(m_connection->display(), Button1, down, CurrentTime);
    m_connection->flush();
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

KeyboardMap X11Keyboard::readMap() const
{
    KeyboardMap map;
    Display *display = m_connection->display();
    XkbStateRec state{};
    const Description owned(
        XkbGetMap(display, XkbKeyTypesMask | XkbKeySymsMask | XkbModifierMapMask, m_device));
    XkbDescPtr description = owned.get();
    if (!description || XkbGetState(display, XkbUseCoreKbd, &state) != Success) {
        qCWarning(lcPlatform, "cannot read the keyboard layout");
        return map;
    }
    XkbGetNames(display, XkbKeyNamesMask, description);
    addModifiers(description, map);
    const unsigned locked = state.locked_mods & map.numLockMask();
    for (unsigned code = description->min_key_code; code <= description->max_key_code; ++code) {
        const KeyCode keycode = KeyCode(code);
        if (isEmpty(description, keycode)) {
            map.addSpare(keycode);
            continue;
        }
        const int group = groupOf(description, keycode, state.group);
        XkbKeyTypePtr type = XkbKeyKeyType(description, keycode, group);
        for (int level = 0; level < XkbKeyGroupWidth(description, keycode, group); ++level) {
            const KeySym keysym = XkbKeySymEntry(description, keycode, level, group);
            quint8 missing = 0;
            if (keysym != NoSymbol && modifiersOf(type, level, locked, &missing)) {
                map.add(quint32(keysym), {keycode, missing == 0, missing});
            }
            const bool decimal =
                description->names && std::memcmp(description->names->keys[keycode].name, "KPDL", 4) == 0;
            if (decimal && level == 1) {
                map.setKeypadDecimal(quint32(keysym));
            }
        }
    }
    return map;
}
