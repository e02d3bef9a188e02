#include "engine/platform/x11/X11Layout.h"

#include <X11/XKBlib.h>
#include <X11/Xlib-xcb.h>
#include <X11/Xlib.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace
{

xkb_keymap *readKeymap(Display *display, unsigned device)
{
    xcb_connection_t *connection = XGetXCBConnection(display);
    const int32_t id =
        device == XkbUseCoreKbd ? xkb_x11_get_core_keyboard_device_id(connection) : int32_t(device);
    xkb_context *context = xkb_context_new(
        xkb_context_flags(XKB_CONTEXT_NO_DEFAULT_INCLUDES | XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
    // It takes several requests, and fails when somebody replaces the layout between them.
    xkb_keymap *keymap = nullptr;
    for (int attempt = 0; attempt < 3 && id >= 0 && !keymap; ++attempt) {
        keymap = xkb_x11_keymap_new_from_device(context, connection, id, XKB_KEYMAP_COMPILE_NO_FLAGS);
    }
    xkb_context_unref(context);
    return keymap;
}

XkbKeymap::Keycodes readModifierKeys(Display *display)
{
    XkbKeymap::Keycodes keycodes;
    if (XModifierKeymap *modifiers = XGetModifierMapping(display)) {
        for (int i = 0; i < 8 * modifiers->max_keypermod; ++i) {
            keycodes.set(modifiers->modifiermap[i]);
        }
        XFreeModifiermap(modifiers);
    }
    return keycodes;
}

} // namespace

X11Layout X11Layout::read(const X11Connection &connection, unsigned device)
{
    Display *display = connection.display();
    XkbStateRec state{};
    if (connection.isLost() || XkbGetState(display, XkbUseCoreKbd, &state) != Success) {
        return {XkbKeymap(nullptr), {}, {}};
    }
    return {XkbKeymap(readKeymap(display, device)),
            {state.group, state.mods, state.locked_mods},
            readModifierKeys(display)};
}

unsigned X11Layout::coreKeyboard()
{
    return XkbUseCoreKbd;
}
