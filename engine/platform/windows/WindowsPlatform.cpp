#include "engine/platform/Desktop.h"
#include "engine/platform/KeyCodes.h"
#include "engine/platform/NativePlatform.h"
#include "engine/platform/windows/RunKeyEntry.h"
#include "engine/platform/windows/WinMouseListener.h"
#include "engine/platform/windows/WindowsInputInjector.h"
#include "engine/platform/windows/WindowsPointer.h"
#include "engine/platform/windows/WindowsPointerAppearance.h"
#include "engine/platform/windows/WindowsQuitGuard.h"

#include <QCoreApplication>

#include <utility>

void startCrashRelease()
{
    // No process can tell here which input another one injected; what a crash leaves behind that lasts is the
    // transparent pointer, and the next start puts it right.
}

void preparePlatform()
{
    // The toolkit finds the desktop by itself and declares the program aware of each monitor's resolution.
}

bool createNativePlatform(Platform &platform, QString &note)
{
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
    // Queued: the answer to a movement may move the pointer, which would be undone by the movement still
    // under way, and reload the pointer scheme, which takes longer than the system waits for a hook.
    QObject::connect(listener.get(), &WinMouseListener::userMovedMouse, listener.get(), std::move(userMoved),
                     Qt::QueuedConnection);
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
