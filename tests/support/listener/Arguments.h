#pragma once

#include <optional>
#include <string>

namespace listener
{

struct Arguments {
    bool timestamps = false; ///< put "NANOSECONDS " (CLOCK_MONOTONIC) before each line
    bool midi = false;       ///< listen at a MIDI port, too
    bool window = true;      ///< without: MIDI only
    int width = 0;           ///< of the window; 0: the whole screen
    int height = 0;
    std::string windowClass; ///< what window managers and others know the program by; none when empty
    std::string midiClient = "tester";
    std::string midiPort = "FROM host";
};

/// Nothing, with a message on standard error, when the command line is wrong.
std::optional<Arguments> parseArguments(int argc, char **argv);

} // namespace listener
