#pragma once

#include "engine/platform/AutostartEntry.h"
#include "engine/platform/InputInjector.h"
#include "engine/platform/Pointer.h"
#include "engine/platform/PointerAppearance.h"

#include <QObject>

#include <functional>
#include <memory>

/// What the engine needs from the operating system. No member is ever null.
struct Platform {
    std::unique_ptr<InputInjector> injector;
    std::unique_ptr<Pointer> pointer;
    std::unique_ptr<PointerAppearance> appearance;
    std::unique_ptr<AutostartEntry> autostart;
};

/// Sets up what the application object needs to come into being: without a display that answers the toolkit
/// is told to draw nowhere, and not to load OpenGL unless the user chose one. To be called in main() before
/// the application object exists, and after startCrashRelease().
void preparePlatform();

/// Chooses the backend and says in the log which one is used and why. Without a usable one it says so once,
/// and the objects returned reach no desktop, so that the program runs on. Needs the application object.
Platform createPlatform();

/// Watches for the user's own mouse movement and calls @p userMoved on the GUI thread for it. Null where
/// movement cannot be watched (which the log says). Needs the application object; must not outlive it.
std::unique_ptr<QObject> createMouseListener(std::function<void()> userMoved);

/// Starts what releases held input after the program was killed, where the system does not do so by itself.
/// To be called first thing in main(), before any thread, file or connection exists.
void startCrashRelease();

/// Calls @p quit on the GUI thread when the system asks the program to end (SIGTERM, SIGINT and SIGHUP; the
/// end of the session). Needs the application object; the returned guard must not outlive it.
std::unique_ptr<QObject> watchQuitRequests(std::function<void()> quit);
