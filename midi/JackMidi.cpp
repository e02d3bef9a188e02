#include "midi/JackMidi.h"

#include "midi/JackServerWatch.h"
#include "midi/RtMidiBackend.h"

std::unique_ptr<MidiBackend> openJackOutput(std::chrono::milliseconds limit)
{
    const auto make = [] {
        StallGuard::Guarded guarded;
        guarded.watch = JackServerWatch::connect();
        if (guarded.watch) {
            guarded.backend = RtMidiBackend::openOutput(RtMidi::UNIX_JACK);
        }
        return guarded;
    };
    return StallGuard::create(make, limit);
}

std::unique_ptr<MidiBackend> openJackInput()
{
    return StallGuard::create([] {
        StallGuard::Guarded guarded;
        if (JackServerWatch::serverRuns()) {
            guarded.backend = RtMidiBackend::openInput(RtMidi::UNIX_JACK);
        }
        return guarded;
    });
}
