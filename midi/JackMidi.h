#pragma once

#include "midi/MidiBackend.h"
#include "midi/StallGuard.h"

#include <chrono>
#include <memory>

/// MIDI through JACK, in a way that never waits longer than @p limit for a server that stands still. Null
/// when it does not answer or refuses, and for an input when no server runs or this program was built without
/// JACK; an output throws MidiSystemAbsent then.
std::unique_ptr<MidiBackend> openJackOutput(std::chrono::milliseconds limit = StallGuard::patience);
std::unique_ptr<MidiBackend> openJackInput();
