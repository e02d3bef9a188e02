#pragma once

/// From now on each callback of a MIDI output takes this long.
void beLate(int milliseconds);

/// From now on each callback of a MIDI output takes this long after it has found its queue empty.
void lingerWhenEmpty(int milliseconds);

/// Once this process is gone, has the @p activation'th of its clients that the release process activates
/// refused.
void refuseAfterCrash(int activation);
