#pragma once

#include <string>
#include <vector>

/// How much larger than its design the program's window is shown on each screen.
namespace Win32Scaling
{

struct Screen {
    std::wstring name; ///< as the system has it: "\\.\DISPLAY1"
    int width = 0;     ///< of the part that the task bar leaves, in pixels
    int height = 0;
    unsigned dpi = 96; ///< the user's choice: 144 is 150 %
};

/// The screens of the desktop. The process has to be aware of each screen's resolution (its manifest says
/// so).
std::vector<Screen> screens();

/// For each screen on which a window of this size (at 100 %) would not fit with the user's factor, the
/// largest factor with which it does: "NAME=FACTOR", separated by ";". Empty when it fits everywhere.
std::string cappedFactors(const std::vector<Screen> &screens, int windowWidth, int windowHeight);

} // namespace Win32Scaling
