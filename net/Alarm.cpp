#include "net/Alarm.h"

#include <utility>

TimerAlarm::TimerAlarm()
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        const auto action = m_action; // it may set the next
        action();
    });
}

void TimerAlarm::set(int milliseconds, std::function<void()> action)
{
    m_action = std::move(action);
    m_timer.start(milliseconds);
}
