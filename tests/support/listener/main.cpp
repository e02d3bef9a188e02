#include "tests/support/listener/Arguments.h"
#include "tests/support/listener/Listener.h"
#include "tests/support/listener/MidiTap.h"
#include "tests/support/listener/Output.h"

#include <RtMidi.h>
#include <cstdio>
#include <memory>
#include <poll.h>
#include <unistd.h>

namespace
{

int fail(const char *message)
{
    std::fprintf(stderr, "veltrix-listener: %s\n", message);
    return 1;
}

/// False once the other side of standard input has closed.
bool inputIsOpen()
{
    char bytes[256];
    return read(STDIN_FILENO, bytes, sizeof bytes) > 0;
}

void run(Display *display, listener::Listener *window)
{
    pollfd descriptors[2] = {{STDIN_FILENO, POLLIN, 0},
                             {display ? ConnectionNumber(display) : -1, POLLIN, 0}};
    for (;;) {
        if (window) {
            window->drain();
        }
        if (poll(descriptors, 2, -1) > 0 && descriptors[0].revents != 0 && !inputIsOpen()) {
            return;
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    const auto arguments = listener::parseArguments(argc, argv);
    if (!arguments) {
        return 2;
    }
    const listener::Output output(arguments->timestamps);
    std::unique_ptr<listener::MidiTap> midi;
    if (arguments->midi) {
        try {
            midi = std::make_unique<listener::MidiTap>(arguments->midiClient, arguments->midiPort, output);
        } catch (const RtMidiError &error) {
            return fail(error.what());
        }
    }
    Display *display = nullptr;
    std::unique_ptr<listener::Listener> window;
    if (arguments->window) {
        display = XOpenDisplay(nullptr);
        if (!display) {
            return fail("no display");
        }
        window = std::make_unique<listener::Listener>(display, *arguments, output);
        if (!window->takeFocus()) {
            return fail("the window did not get the focus");
        }
    }
    output.line(listener::monotonicNow(), "ready");
    run(display, window.get());
    return 0;
}
