#include "engine/platform/windows/WinMouseListener.h"

#include "engine/platform/PlatformLog.h"

WinMouseListener::WinMouseListener(QObject *parent)
    : QObject(parent)
    , m_hook([this] { post(); })
{
    if (!m_hook.isInstalled()) {
        qCWarning(lcPlatform, "Windows hHook failed");
    }
}

void WinMouseListener::post()
{
    if (m_posted.exchange(true)) {
        return;
    }
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_posted = false;
            Q_EMIT userMovedMouse();
        },
        Qt::QueuedConnection);
}
