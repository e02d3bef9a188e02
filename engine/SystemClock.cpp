#include "engine/SystemClock.h"

#include <QTimer>

#include <utility>

SystemClock::SystemClock()
{
    m_timer.start();
}

std::chrono::nanoseconds SystemClock::now() const
{
    return std::chrono::nanoseconds(m_timer.nsecsElapsed());
}

void SystemClock::singleShot(int milliseconds, const QObject *context, std::function<void()> callback)
{
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, context, std::move(callback));
}
