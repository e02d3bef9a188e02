#pragma once

#include "engine/platform/Platform.h"
#include "engine/platform/x11/HeldInput.h"

#include <QString>

/// The process that releases held input when the program was killed: the X server itself never does. It waits
/// for the end of a pipe that only the program holds open, so it costs nothing until then and ends whenever
/// the program does.
namespace CrashRelease
{

/// Starts it, first thing in main(), before any thread, file or connection exists. After the release it
/// carries out
/// @p task.
/// @return the memory of @p task; null when the process could not be started
void *start(const CrashTask &task);

/// What the process will release. Shared with it when start() has started it, else with nobody.
HeldInput &heldInput();

/// Why the process could not be started; empty when it runs or was not asked for.
QString problem();

} // namespace CrashRelease
