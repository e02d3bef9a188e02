#include "tests/support/listener/Arguments.h"

#include <cstdio>
#include <cstring>

namespace listener
{

namespace
{

constexpr char usage[] =
    "Usage: veltrix-listener [--timestamps] [--size WIDTHxHEIGHT] [--class NAME]\n"
    "                        [--midi | --midi-only]\n"
    "                        [--midi-client NAME] [--midi-port NAME]\n"
    "Opens a window (over the whole screen unless --size is given), takes the focus, prints \"ready\"\n"
    "and then one line for each event: \"key CODE down|up\", \"left down|up\", \"move X Y\",\n"
    "\"midi HH HH HH\". --midi also opens the MIDI input \"tester:FROM host\". Ends with its standard\n"
    "input, or with SIGTERM.\n";

} // namespace

std::optional<Arguments> parseArguments(int argc, char **argv)
{
    Arguments arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        const bool hasValue = i + 1 < argc;
        const char *value = hasValue ? argv[i + 1] : "";
        bool good = true;
        if (name == "--timestamps") {
            arguments.timestamps = true;
        } else if (name == "--midi" || name == "--midi-only") {
            arguments.midi = true;
            arguments.window = name == "--midi";
        } else if (hasValue && name == "--size") {
            good = std::sscanf(value, "%dx%d", &arguments.width, &arguments.height) == 2 &&
                   arguments.width > 0 && arguments.height > 0;
            ++i;
        } else if (hasValue && name == "--class") {
            arguments.windowClass = value;
            ++i;
        } else if (hasValue && name == "--midi-client") {
            arguments.midiClient = value;
            ++i;
        } else if (hasValue && name == "--midi-port") {
            arguments.midiPort = value;
            ++i;
        } else {
            good = false;
        }
        if (!good) {
            std::fputs(usage, stderr);
            return std::nullopt;
        }
    }
    return arguments;
}

} // namespace listener
