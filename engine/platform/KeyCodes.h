#pragma once

#include <QtGlobal>

/// The Windows virtual-key code of the key behind a key event, which is what mappings store on every
/// platform: the code for which InputInjector presses that key again.
///
/// The key counts, not what it types with the modifiers that are held: Shift and the key of 1 are 16 and 49.
/// Only the keypad's keys differ with NumLock. Left and right Shift, Ctrl and Alt are 16, 17 and 18; AltGr is
/// 165.
///
/// @param nativeVirtualKey, nativeScanCode as the toolkit's key event has them.
/// @return 0 when the key has no code. A key that types a character for which there is no code (ü, #, š) gives
/// 0x100 plus the character.
int virtualKeyFromNative(quint32 nativeVirtualKey, quint32 nativeScanCode);
