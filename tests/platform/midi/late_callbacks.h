#pragma once

/// From now on each callback of a MIDI output takes this long.
void beLate(int milliseconds);
