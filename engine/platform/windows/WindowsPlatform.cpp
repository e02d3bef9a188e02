#include "engine/platform/Platform.h"
#include "engine/platform/PlatformLog.h"
#include "engine/platform/windows/RunKeyEntry.h"
#include "engine/platform/windows/WinMouseListener.h"
#include "engine/platform/windows/WindowsCrashRelease.h"
#include "engine/platform/windows/WindowsDesktop.h"
#include "engine/platform/windows/WindowsFocusedProgram.h"
#include "engine/platform/windows/WindowsInputInjector.h"
#include "engine/platform/windows/WindowsPointer.h"
#include "engine/platform/windows/WindowsPointerAppearance.h"
#include "engine/platform/windows/WindowsQuitGuard.h"

#include <QCoreApplication>

#include <utility>

namespace
{

std::unique_ptr<QObject> watchMouse(std::function<void()> userMoved)
{
    auto listener = std::make_unique<WinMouseListener>();
    if (!listener->isInstalled()) {
        return nullptr;
    }
    QObject::connect(listener.get(), &WinMouseListener::userMovedMouse, listener.get(), std::move(userMoved));
    return listener;
}

bool addInput(Platform &platform)
{
    if (const QString problem = WindowsCrashRelease::problem(); !problem.isEmpty()) {
        qCWarning(lcPlatform).noquote()
            << "held keys would stay down after a crash: the process that releases them "
               "did not start:"
            << problem;
    }
    const auto refused = std::make_shared<RefusedInput>();
    platform.injector = std::make_unique<WindowsInputInjector>(refused);
    platform.watchRefusedInput = [refused](std::function<void()> told) {
        return refused->watch(std::move(told));
    };
    platform.pointer = std::make_unique<WindowsPointer>();
    platform.appearance = std::make_unique<WindowsPointerAppearance>(QCoreApplication::applicationDirPath() +
                                                                     QStringLiteral("/transp.cur"));
    platform.watchMouse = watchMouse;
    platform.focusedProgram = std::make_unique<WindowsFocusedProgram>();
    // A desktop that refuses input (locked, or an elevated window in front) does so event by event.
    platform.input = QStringLiteral("Windows: SendInput");
    return true;
}

void addSystem(Platform &platform)
{
    platform.desktop = std::make_unique<WindowsDesktop>();
    platform.autostart = std::make_unique<RunKeyEntry>();
    platform.watchQuitRequests = [](std::function<void()> quit) {
        return std::make_unique<WindowsQuitGuard>(std::move(quit));
    };
}

bool fits()
{
    return true;
}

void *prepare(const CrashTask &)
{
    // The toolkit finds the desktop by itself and declares the program aware of each monitor's resolution.
    WindowsCrashRelease::start();
    return nullptr;
}

} // namespace

Backend windowsBackend()
{
    return {"windows", fits, prepare, addSystem, addInput};
}
