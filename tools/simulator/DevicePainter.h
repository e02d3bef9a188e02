#pragma once

#include <array>

class QPainter;

namespace simulator
{

/// What a drawing of the device shows.
struct DeviceLook {
    struct Button {
        bool down = false;
        bool latched = false;
        bool hovered = false;
    };

    std::array<Button, 10> buttons;
    bool touched = false;
    bool knobHovered = false;
    int knobPosition = 0; ///< steps to the right
    int turning = 0;      ///< -1 a step to the left was a moment ago, 1 to the right, 0 none
    bool plugged = false;
    bool opened = false;
};

/// Draws the device in the coordinates of geometry::bounds().
void paintDevice(QPainter &painter, const DeviceLook &look);

} // namespace simulator
