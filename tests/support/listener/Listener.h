#pragma once

#include "tests/support/listener/Arguments.h"

#include <X11/Xlib.h>
#include <array>
#include <cstdint>

namespace listener
{

class Output;

/// The window: takes the focus and prints every key, left button and pointer event that arrives there.
class Listener
{
public:
    /// @p display and @p output must outlive this object.
    Listener(Display *display, const Arguments &arguments, const Output &output);

    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    /// Waits until the window is shown and has the focus. False when that does not happen.
    bool takeFocus();

    /// Handles what has arrived.
    void drain();

private:
    void handle(XEvent &event, std::int64_t now);
    void handleKey(XKeyEvent &event, std::int64_t now);
    int codeOf(XKeyEvent &event) const;

    Display *m_display;
    Window m_window = 0;
    bool m_inFront = false;
    const Output &m_output;
    std::array<int, 256> m_held{}; ///< by keycode: the code told as down, 0 when it is up
};

} // namespace listener
