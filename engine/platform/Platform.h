#pragma once

#include "engine/platform/AutostartEntry.h"
#include "engine/platform/Desktop.h"
#include "engine/platform/FocusedProgram.h"
#include "engine/platform/InputInjector.h"
#include "engine/platform/Pointer.h"
#include "engine/platform/PointerAppearance.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

/// Everything that the program needs from the operating system, as one value: PlatformFactory makes it,
/// main() keeps it, and the parts are handed down to those who use them. No member is ever null or empty but
/// the two texts. It needs the application object and must not outlive it.
struct Platform {
    /// Calls a function on the GUI thread whenever something happens, for as long as the returned object
    /// lives. That object must not outlive the application object.
    using Watch = std::function<std::unique_ptr<QObject>(std::function<void()>)>;

    // What reaches the desktop: from the backend.
    std::unique_ptr<InputInjector> injector;
    std::unique_ptr<Pointer> pointer; ///< and the screens
    std::unique_ptr<PointerAppearance> appearance;
    Watch watchMouse; ///< the user's own mouse moves; null returned where that cannot be watched (logged)

    /// The program that the user works with; one that tells nothing where the session does not.
    std::unique_ptr<FocusedProgram> focusedProgram = std::make_unique<FocusedProgram>();

    // What every backend of the system has in common.
    std::unique_ptr<Desktop> desktop;
    std::unique_ptr<AutostartEntry> autostart;
    Watch watchQuitRequests; ///< the system asks the program to end: a signal, the end of the session

    /// The system refuses an event for the first time. Only a system that tells has this; elsewhere nothing
    /// is ever called.
    Watch watchRefusedInput = [](const std::function<void()> &) { return std::unique_ptr<QObject>(); };

    /// Shows a message with this title and text in the desktop's own way, and waits for nothing. It may come
    /// to nothing: not every desktop has such a way.
    std::function<void(const QString &, const QString &)> notify = [](const QString &, const QString &) {};

    QString input;  ///< where input goes, for the log: "X11: display :0, XTEST 2.2"
    QString notice; ///< what the user should know about it, translated; empty: nothing
};

/// What else has to be done when the program is gone, however it ended. The process that releases held input
/// does it, where there is one; it must not rely on anything but @c memory, and may take its time.
struct CrashTask {
    std::size_t bytes = 0; ///< of memory that the two processes share; all zero at first
    /// Called with that memory and the number of the process that the program is: whether there is something
    /// to do. After an orderly end there is nothing.
    bool (*isDue)(const void *memory, qint64 program) = nullptr;
    /// Called with the same when there is, after the program has gone for good. Null: nothing else.
    void (*afterwards)(void *memory, qint64 program) = nullptr;
};

/// A way to the desktop, as its folder offers it to the factory.
///
/// A new one is a folder with a function that returns this, and two lines: its add_subdirectory() in
/// engine/platform/CMakeLists.txt, and its name in the list of factory/PlatformFactory.cpp. It implements
///  - InputInjector: keys by virtual-key code, the left button;
///  - Pointer: the pointer's place, the screens;
///  - PointerAppearance: hiding the pointer;
///  - Platform::watchMouse: noticing the user's hand on the mouse;
///  - FocusedProgram, where the session tells which program has the focus;
/// and, on a system that no other backend serves,
///  - Desktop: the code of a captured key, whether windows can be translucent;
///  - AutostartEntry: the log-on entry;
///  - Session: the functions of Session.h, which are needed before any backend is chosen (its source is
///  listed
///    in engine/platform/CMakeLists.txt);
///  - Platform::watchQuitRequests: SIGTERM and the like, the end of the session;
///  - prepare(): the release of what a crash leaves held, where the system does not do so by itself.
/// What is held is counted above the backend, in InputLedger; it only carries out.
struct Backend {
    const char *name; ///< as the option --input takes it

    /// Whether this session is one that the backend is for.
    bool (*fits)();

    /// Run first thing in main(), before any thread, file or connection and the application object exist.
    /// @return the memory of @p task; null when this backend will not carry it out.
    void *(*prepare)(const CrashTask &task);

    /// Sets what every backend of the system has in common. Cannot fail. Null, like prepare, where another
    /// backend of the list does it.
    void (*addSystem)(Platform &platform);

    /// Sets the members that reach the desktop, and `input`.
    /// @return false when the desktop cannot be reached this way; `input` then says why, `notice` what the
    /// user can do about it, and nothing else has changed.
    bool (*addInput)(Platform &platform);
};
