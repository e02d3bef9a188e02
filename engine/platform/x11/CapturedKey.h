#pragma once

#include <QtGlobal>

/// A key that the user presses, as the layout describes it. Symbols are X keysyms, 0 for none.
struct CapturedKey {
    quint32 pressed = 0;       ///< what the event carries: modifiers and NumLock applied
    quint32 plain = 0;         ///< what the bare key types in the active group
    quint32 shifted = 0;       ///< what it types with Shift
    quint32 otherGroup = 0;    ///< what the bare key types in another group of the layout
    char usSymbol = 0;         ///< what a key in this place types on a us keyboard
    quint32 keypadDecimal = 0; ///< what the keypad's decimal key types with NumLock on, on this layout
    bool isKeypadDecimal = false;

    /// The code that makes InputInjector press this key; 0 when there is none.
    int virtualKey() const;
};
