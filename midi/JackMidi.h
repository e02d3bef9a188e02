#pragma once

#include "midi/MidiBackend.h"

#include <memory>

/// MIDI through JACK, in a way that never waits for a server that stands still. Null when no server runs,
/// when it does not answer, or when this program was built without JACK.
std::unique_ptr<MidiBackend> openJackOutput();
std::unique_ptr<MidiBackend> openJackInput();
