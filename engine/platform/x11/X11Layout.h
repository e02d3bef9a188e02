#pragma once

#include "engine/platform/x11/X11Connection.h"
#include "engine/platform/xkb/XkbKeymap.h"

/// The keyboard layout of an X server as it is now.
struct X11Layout {
    XkbKeymap keymap;                 ///< invalid when it cannot be read
    XkbKeymap::State state;           ///< of the core keyboard: group and modifiers belong to all devices
    XkbKeymap::Keycodes modifierKeys; ///< the keycodes that count as modifiers, also those without a symbol

    /// Reads the layout of a device (several round trips). The core keyboard has that of the device that was
    /// used last.
    static X11Layout read(const X11Connection &connection, unsigned device);

    /// The core keyboard's number for read().
    static unsigned coreKeyboard();
};
