#pragma once

#include "engine/platform/xkb/KeyboardMap.h"

/// A key that the user presses, as the layout describes it. Symbols are X keysyms, 0 for none.
struct CapturedKey {
    quint8 keycode = 0;     ///< XKB's; 0 when it is not known
    quint32 pressed = 0;    ///< what the event carries: modifiers and NumLock applied
    quint32 plain = 0;      ///< what the bare key types in the active group
    quint32 otherGroup = 0; ///< what the bare key types in another group of the layout
    char usSymbol = 0;      ///< what a key in this place types on a us keyboard
    bool isKeypadDecimal = false;

    /// The code for which the injector presses this key on the layout of @p map; without a layout the
    /// likeliest. 0 when there is none.
    int virtualKey(const KeyboardMap &map = {}) const;

private:
    bool isPressedBy(quint16 virtualKey, quint32 symbol, const KeyboardMap &map) const;
};
