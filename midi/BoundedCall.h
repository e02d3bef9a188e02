#pragma once

#include <chrono>
#include <functional>

/// Runs @p call on a thread of its own and waits for its end, but no longer than @p limit.
///
/// True: it has ended; what it threw is thrown here. False: it is still under way and is left alone; it ends
/// when it can, at the latest with the process, which it does not hold up. So @p call has to own all that it
/// touches but static objects: while one is under way, exit() leaves these alone and ends the process at
/// once.
bool callWithin(std::chrono::milliseconds limit, std::function<void()> call);
