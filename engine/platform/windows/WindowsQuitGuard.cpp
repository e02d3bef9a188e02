#include "engine/platform/windows/WindowsQuitGuard.h"

#include <utility>

WindowsQuitGuard::WindowsQuitGuard(std::function<void()> quit)
    : m_quit(std::move(quit))
    , m_watch([this] { QMetaObject::invokeMethod(this, m_quit, Qt::QueuedConnection); })
{
}
