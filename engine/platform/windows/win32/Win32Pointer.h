#pragma once

#include <vector>

/// The mouse pointer and the screens, in the desktop's physical pixels.
namespace Win32Pointer
{

struct Point {
    int x = 0;
    int y = 0;
};

struct Rect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// Returns false, and leaves @p position alone, while the desktop is not ours (locked, or a prompt for
/// administrative rights).
bool position(Point &position);

/// A refused movement is lost without a word.
void moveTo(Point position);

/// The primary screen first, then the others in the system's order. Never empty.
std::vector<Rect> screens();

} // namespace Win32Pointer
