#pragma once

#include <QTimer>

#include <functional>

/// Calls back once after a time. The program's is a timer of the event loop, a test's lets the time pass by
/// hand.
class Alarm
{
    Q_DISABLE_COPY_MOVE(Alarm)

public:
    Alarm() = default;
    virtual ~Alarm() = default;

    /// Calls @p action in so many milliseconds, from the event loop, in place of what was to be called
    /// before.
    virtual void set(int milliseconds, std::function<void()> action) = 0;
};

/// Runs on the event loop of the thread that sets it.
class TimerAlarm : public Alarm
{
public:
    TimerAlarm();
    void set(int milliseconds, std::function<void()> action) override;

private:
    QTimer m_timer;
    std::function<void()> m_action;
};
