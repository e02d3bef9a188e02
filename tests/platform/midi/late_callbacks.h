#pragma once

/// From now on each callback of a MIDI output takes this long.
void beLate(int milliseconds);

/// From now on each callback of a MIDI output takes this long after it has found its queue empty.
void lingerWhenEmpty(int milliseconds);

/// Once this process is gone, has the @p activation'th of its clients that the release process activates
/// refused.
void refuseAfterCrash(int activation);

/// Once this process is gone, has the first of its clients that the release process activates thrown out, as
/// a server does that thinks it dead.
void expelAfterCrash();
