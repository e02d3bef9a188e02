// Stands in front of JACK's library in this process and holds up the MIDI library as an overloaded machine
// does: its callback while it has the queue in its hands, and a thread that closes a port until such a
// callback runs. Ends the process where the queue is freed meanwhile. Refuses to activate a client, as a
// server does that waits for one that has just died, or throws it out.

#include "tests/platform/midi/late_callbacks.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <dlfcn.h>
#include <jack/jack.h>
#include <jack/midiport.h>
#include <jack/ringbuffer.h>
#include <mutex>
#include <new>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>

namespace
{

std::atomic<int> lateness{0};
std::atomic<int> lingering{0};
std::atomic<int> readers{0}; // callbacks that are between the look at their port and their end
thread_local bool reading = false;

/// Shared with the release process, which is forked from this one.
struct Refusal {
    std::atomic<int> activation{0}; ///< of those that are still to come; 0: none
    std::atomic<bool> expels{false};
    const pid_t here = getpid();
};

Refusal &refusal()
{
    static Refusal &shared = *new (
        mmap(nullptr, sizeof(Refusal), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Refusal;
    return shared;
}

const Refusal &madeBeforeTheFork = refusal();

template <typename Function>
Function *following(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

struct Callback {
    JackProcessCallback function;
    void *argument;
};

struct Shutdown {
    JackShutdownCallback function;
    void *argument;
};

Shutdown lastShutdown{};

int process(jack_nframes_t frames, void *self)
{
    const auto *callback = static_cast<Callback *>(self);
    const int result = callback->function(frames, callback->argument);
    if (reading) {
        reading = false;
        --readers;
    }
    return result;
}

} // namespace

void beLate(int milliseconds)
{
    lateness = milliseconds;
}

void lingerWhenEmpty(int milliseconds)
{
    lingering = milliseconds;
}

void refuseAfterCrash(int activation)
{
    refusal().activation = activation;
}

void expelAfterCrash()
{
    refusal().expels = true;
}

extern "C" {

int jack_activate(jack_client_t *client)
{
    if (getpid() != madeBeforeTheFork.here && refusal().activation > 0 && --refusal().activation == 0) {
        return -1;
    }
    const int result = following<decltype(jack_activate)>("jack_activate")(client);
    if (getpid() != madeBeforeTheFork.here && lastShutdown.function != nullptr &&
        refusal().expels.exchange(false)) {
        lastShutdown.function(lastShutdown.argument);
    }
    return result;
}

void jack_on_shutdown(jack_client_t *client, JackShutdownCallback function, void *argument)
{
    lastShutdown = {function, argument};
    following<decltype(jack_on_shutdown)>("jack_on_shutdown")(client, function, argument);
}

int jack_set_process_callback(jack_client_t *client, JackProcessCallback function, void *argument)
{
    // Never freed, but never lost either: a client may call it until the process ends.
    static std::mutex changing;
    static auto *callbacks = new std::deque<Callback>; // NOLINT(cppcoreguidelines-owning-memory)
    const std::lock_guard lock(changing);
    callbacks->push_back({function, argument});
    return following<decltype(jack_set_process_callback)>("jack_set_process_callback")(client, &process,
                                                                                       &callbacks->back());
}

// What the callback of an output does first, once it has found its port.
void jack_midi_clear_buffer(void *buffer)
{
    following<decltype(jack_midi_clear_buffer)>("jack_midi_clear_buffer")(buffer);
    if (lateness > 0) {
        reading = true;
        ++readers;
        std::this_thread::sleep_for(std::chrono::milliseconds(lateness));
    }
}

// What it asks of its queue, until there is nothing.
size_t jack_ringbuffer_peek(jack_ringbuffer_t *queue, char *to, size_t count)
{
    const auto got = following<decltype(jack_ringbuffer_peek)>("jack_ringbuffer_peek")(queue, to, count);
    if (got < count && lingering > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(lingering));
    }
    return got;
}

// The library has just waited for the end of a callback.
int jack_port_unregister(jack_client_t *client, jack_port_t *port)
{
    for (int rest = lateness > 0 ? 1000 : 0; readers == 0 && rest > 0; --rest) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return following<decltype(jack_port_unregister)>("jack_port_unregister")(client, port);
}

void jack_ringbuffer_free(jack_ringbuffer_t *queue)
{
    if (readers > 0) {
        std::fputs("the queue is freed while a callback reads it\n", stderr);
        std::abort();
    }
    following<decltype(jack_ringbuffer_free)>("jack_ringbuffer_free")(queue);
}
}
