#include "engine/platform/Desktop.h"
#include "engine/platform/KeyCodes.h"
#include "engine/platform/NativePlatform.h"
#include "engine/platform/PlatformLog.h"
#include "engine/platform/windows/RunKeyEntry.h"
#include "engine/platform/windows/WinMouseListener.h"
#include "engine/platform/windows/WindowsCrashRelease.h"
#include "engine/platform/windows/WindowsInputInjector.h"
#include "engine/platform/windows/WindowsPointer.h"
#include "engine/platform/windows/WindowsPointerAppearance.h"
#include "engine/platform/windows/WindowsQuitGuard.h"

#include <QCoreApplication>

#include <utility>

void startCrashRelease()
{
    WindowsCrashRelease::start();
}

void preparePlatform()
{
    // The toolkit finds the desktop by itself and declares the program aware of each monitor's resolution.
}

bool createNativePlatform(Platform &platform, QString &note)
{
    if (const QString problem = WindowsCrashRelease::problem(); !problem.isEmpty()) {
        qCWarning(lcPlatform).noquote()
            << "held keys would stay down after a crash: the process that releases them "
               "did not start:"
            << problem;
    }
    platform.injector = std::make_unique<WindowsInputInjector>();
    platform.pointer = std::make_unique<WindowsPointer>();
    platform.appearance = std::make_unique<WindowsPointerAppearance>(QCoreApplication::applicationDirPath() +
                                                                     QStringLiteral("/transp.cur"));
    platform.autostart = std::make_unique<RunKeyEntry>();
    // A desktop that refuses input (locked, or an elevated window in front) does so event by event.
    note = QStringLiteral("Windows: SendInput");
    return true;
}

std::unique_ptr<QObject> createMouseListener(std::function<void()> userMoved)
{
    auto listener = std::make_unique<WinMouseListener>();
    if (!listener->isInstalled()) {
        return nullptr;
    }
    QObject::connect(listener.get(), &WinMouseListener::userMovedMouse, listener.get(), std::move(userMoved));
    return listener;
}

std::unique_ptr<QObject> watchQuitRequests(std::function<void()> quit)
{
    return std::make_unique<WindowsQuitGuard>(std::move(quit));
}

int virtualKeyFromNative(quint32 nativeVirtualKey, quint32)
{
    return static_cast<int>(nativeVirtualKey);
}

bool isDesktopComposited()
{
    return true;
}
