#pragma once

#include <X11/Xlib.h>

namespace listener
{

/// The virtual-key code (as mappings store it) of the key that a keysym belongs to on the us layout; 0 when
/// it has none. The keysym is that of the key alone, without Shift; the keypad's are those with NumLock as it
/// stands.
int virtualKeyOf(KeySym keysym);

} // namespace listener
