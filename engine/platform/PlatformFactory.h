#pragma once

#include "engine/platform/Platform.h"

/// Makes the platform from the backend that fits the session.
class PlatformFactory
{
    Q_DISABLE_COPY_MOVE(PlatformFactory)

public:
    /// Lets the backends prepare: what releases held input after a crash is started, and the toolkit is told
    /// to draw nowhere when no display answers. To be made first thing in main(), before the application
    /// object and any thread, file or connection exist.
    PlatformFactory();

    /// Chooses the backend and says in the log which one is used and why. Without a usable one it says so
    /// once, and the objects returned reach no desktop, so that the program runs on. Needs the application
    /// object.
    Platform create() const;
};
