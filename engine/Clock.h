#pragma once

#include <QtGlobal>

#include <functional>

class QObject;

/// The time that the engine goes by, and where it waits. Used on the GUI thread.
class Clock
{
    Q_DISABLE_COPY_MOVE(Clock)

public:
    Clock() = default;
    virtual ~Clock() = default;

    /// Milliseconds since an arbitrary moment; never goes back.
    virtual qint64 now() const = 0;

    /// Runs @p callback once, @p milliseconds from now, unless @p context has been destroyed by then. Calls
    /// are independent of each other.
    virtual void singleShot(int milliseconds, const QObject *context, std::function<void()> callback) = 0;
};
