#include "engine/SystemClock.h"

#include <QTimer>

#include <utility>

SystemClock::SystemClock()
{
    m_timer.start();
}

qint64 SystemClock::now() const
{
    return m_timer.elapsed();
}

void SystemClock::singleShot(int milliseconds, const QObject *context, std::function<void()> callback)
{
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, context, std::move(callback));
}
