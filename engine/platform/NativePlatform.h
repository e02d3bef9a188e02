#pragma once

#include "engine/platform/PlatformFactory.h"

#include <QString>

/// The system's own backend. Each backend folder implements this function (and of PlatformFactory.h
/// everything but createPlatform()); CMake links exactly one of them.
///
/// Sets @p platform's autostart entry in any case, and injector, pointer and appearance when input can reach
/// a desktop. @p note says for the log which backend that is ("X11: display :0, XTEST 2.2"), or why there is
/// none.
///
/// @return false when injector, pointer and appearance were left null.
bool createNativePlatform(Platform &platform, QString &note);
