#pragma once

#include "tests/support/script/Script.h"

/// What of a script's expected output an X server shows another program: keys, the left button and movements,
/// in order. Releases of what is not down and movements to where the pointer stands already are left out: the
/// server makes no event of them.
QStringList expectedOnDesktop(const Script &script);

/// The expected MIDI messages, in order.
QStringList expectedMidi(const Script &script);
