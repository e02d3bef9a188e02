#include "engine/platform/Desktop.h"
#include "engine/platform/KeyCodes.h"
#include "engine/platform/x11/CapturedKey.h"
#include "engine/platform/x11/X11Connection.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XKBgeom.h>
#include <cstring>

// Asked now and then, by a person's doing: a connection for each question costs less than keeping one that
// has to be looked after.

namespace
{

struct KeyboardFree {
    void operator()(XkbDescPtr description) const { XkbFreeKeyboard(description, 0, True); }
};
using Description = std::unique_ptr<XkbDescRec, KeyboardFree>;

constexpr int nameLength = XkbKeyNameLength;

bool hasName(XkbDescPtr description, unsigned keycode, const char *name)
{
    return description->names && description->names->keys &&
           std::memcmp(description->names->keys[keycode].name, name, nameLength) == 0;
}

/// What the key in a place types on a us keyboard; places have names like AD01, the Q.
char usSymbol(XkbDescPtr description, unsigned keycode)
{
    static constexpr struct {
        char row;
        const char *symbols;
    } rows[] = {{'E', "1234567890-="}, {'D', "qwertyuiop[]"}, {'C', "asdfghjkl;'"}, {'B', "zxcvbnm,./"}};
    for (const auto &row : rows) {
        for (unsigned i = 0; row.symbols[i] != 0; ++i) {
            const char name[] = {'A', row.row, char('0' + (i + 1) / 10), char('0' + (i + 1) % 10), 0};
            if (hasName(description, keycode, name)) {
                return row.symbols[i];
            }
        }
    }
    return 0;
}

void readKey(XkbDescPtr description, const XkbStateRec &state, unsigned keycode, CapturedKey &key)
{
    const auto code = static_cast<KeyCode>(keycode);
    // The toolkit may not know of NumLock: it forgets what is locked when a symbol is put on a key.
    unsigned used = 0;
    KeySym pressed = NoSymbol;
    if (XkbTranslateKeyCode(description, code, XkbBuildCoreState(state.mods, state.group), &used, &pressed)) {
        key.pressed = quint32(pressed);
    }
    const int groups = XkbKeyNumGroups(description, code);
    if (groups == 0) {
        return;
    }
    const auto symbol = [description, code](int group, int level) {
        const bool exists = level < XkbKeyGroupWidth(description, code, group);
        return exists ? quint32(XkbKeySymEntry(description, code, level, group)) : 0U;
    };
    const int active = state.group < groups ? state.group : 0;
    key.plain = symbol(active, 0);
    key.shifted = symbol(active, 1);
    for (int group = 0; group < groups && key.otherGroup == 0; ++group) {
        const quint32 other = group == active ? 0 : symbol(group, 0);
        key.otherGroup = other <= 0xff ? other : 0; // Latin letters are of use only
    }
    key.usSymbol = usSymbol(description, keycode);
}

void readKeypad(XkbDescPtr description, unsigned keycode, CapturedKey &key)
{
    for (unsigned each = description->min_key_code; each <= description->max_key_code; ++each) {
        const auto code = static_cast<KeyCode>(each);
        if (hasName(description, each, "KPDL") && XkbKeyNumGroups(description, code) > 0 &&
            XkbKeyGroupWidth(description, code, 0) > 1) {
            key.keypadDecimal = quint32(XkbKeySymEntry(description, code, 1, 0));
            key.isKeypadDecimal = each == keycode;
        }
    }
}

} // namespace

int virtualKeyFromNative(quint32 nativeVirtualKey, quint32 nativeScanCode)
{
    CapturedKey key;
    key.pressed = nativeVirtualKey;
    QString problem;
    const std::shared_ptr<X11Connection> connection = X11Connection::open(problem);
    if (connection && nativeScanCode != 0) {
        // The keyboard that was used last is the one whose key this is.
        Display *display = connection->display();
        XkbStateRec state{};
        const Description description(XkbGetMap(display, XkbKeyTypesMask | XkbKeySymsMask, XkbUseCoreKbd));
        const bool known = description && nativeScanCode >= description->min_key_code &&
                           nativeScanCode <= description->max_key_code;
        if (known && XkbGetState(display, XkbUseCoreKbd, &state) == Success) {
            XkbGetNames(display, XkbKeyNamesMask, description.get());
            readKey(description.get(), state, nativeScanCode, key);
            readKeypad(description.get(), nativeScanCode, key);
        }
    }
    return key.virtualKey();
}

bool isDesktopComposited()
{
    QString problem;
    const std::shared_ptr<X11Connection> connection = X11Connection::open(problem);
    if (!connection) {
        return true;
    }
    Display *display = connection->display();
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(DefaultScreen(display));
    return XGetSelectionOwner(display, XInternAtom(display, name.constData(), False)) != None;
}
