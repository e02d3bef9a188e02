#pragma once

#include <QVector>

struct _XDisplay; // NOLINT(bugprone-reserved-identifier): Xlib names it so

/// Tells the X server's devices for synthesised input from the user's own. Needs XI 2 to be negotiated.
namespace XTestSources
{

/// The ids of all of them, pointers and keyboards.
QVector<int> all(_XDisplay *display);

/// The keyboard through which our key events go; 0 when it cannot be told.
int keyboard(_XDisplay *display);

} // namespace XTestSources
