#include "engine/platform/RefusedInput.h"

#include "engine/platform/PlatformLog.h"

#include <utility>

void RefusedInput::note(bool taken)
{
    if (taken || m_told) {
        return;
    }
    m_told = true;
    qCWarning(lcPlatform,
              "the system refused an event: the window in front may have more rights than the program");
    Q_EMIT firstRefused();
}

std::unique_ptr<QObject> RefusedInput::watch(std::function<void()> told)
{
    auto watcher = std::make_unique<QObject>();
    connect(this, &RefusedInput::firstRefused, watcher.get(), std::move(told), Qt::QueuedConnection);
    return watcher;
}
