#include "tools/simulator/SignalWatcher.h"

#include "engine/platform/linux/SignalWatcher.h"

#include <csignal>

namespace simulator
{

SignalWatcher::SignalWatcher(QObject *parent)
    : QObject(parent)
{
    auto *watcher = new ::SignalWatcher([this](int number) { Q_EMIT raised(number); });
    watcher->setParent(this);
    std::signal(SIGPIPE, SIG_IGN); // nobody reads what is printed: no reason to end
}

SignalWatcher::~SignalWatcher() = default;

} // namespace simulator
