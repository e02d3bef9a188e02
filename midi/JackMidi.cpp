#include "midi/JackMidi.h"

#include "midi/JackServerWatch.h"
#include "midi/RtMidiBackend.h"
#include "midi/StallGuard.h"

std::unique_ptr<MidiBackend> openJackOutput()
{
    return StallGuard::create([] {
        StallGuard::Guarded guarded;
        guarded.watch = JackServerWatch::connect();
        if (guarded.watch) {
            guarded.backend = RtMidiBackend::openOutput(RtMidi::UNIX_JACK);
        }
        return guarded;
    });
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
