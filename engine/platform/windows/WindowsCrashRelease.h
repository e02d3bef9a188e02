#pragma once

#include "engine/platform/windows/win32/Win32HeldInput.h"

#include <QString>

/// The process that releases held input when the program was ended by force (see Win32CrashRelease).
namespace WindowsCrashRelease
{

/// To be called first thing in main(), before any thread, file or connection exists.
void start();

/// What the process will release: to be noted before a press and after a release are sent.
Win32HeldInput &heldInput();

/// Why the process could not be started; empty when it runs or was not asked for.
QString problem();

} // namespace WindowsCrashRelease
