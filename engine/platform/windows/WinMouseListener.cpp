#include "engine/platform/windows/WinMouseListener.h"

#include "engine/platform/PlatformLog.h"

WinMouseListener::WinMouseListener(QObject *parent)
    : QObject(parent)
    , m_hook([this] { Q_EMIT userMovedMouse(); })
{
    if (!m_hook.isInstalled()) {
        qCWarning(lcPlatform, "Windows hHook failed");
    }
}
