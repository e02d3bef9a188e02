#pragma once

#include <QtGlobal>

#include <chrono>
#include <functional>

class QObject;

/// The time that the engine goes by, and where it waits. Used on the GUI thread.
class Clock
{
    Q_DISABLE_COPY_MOVE(Clock)

public:
    Clock() = default;
    virtual ~Clock() = default;

    /// The time since an arbitrary moment; never goes back. Finer than a wait can be, so that whoever waits
    /// for the rest of a time does not wait too short.
    virtual std::chrono::nanoseconds now() const = 0;

    /// Runs @p callback once, @p milliseconds from now, unless @p context has been destroyed by then. Calls
    /// are independent of each other.
    virtual void singleShot(int milliseconds, const QObject *context, std::function<void()> callback) = 0;
};
