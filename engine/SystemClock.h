#pragma once

#include "engine/Clock.h"

#include <QElapsedTimer>

/// Real time; waits on the event loop.
class SystemClock final : public Clock
{
    Q_DISABLE_COPY_MOVE(SystemClock)

public:
    SystemClock();

    std::chrono::nanoseconds now() const override;
    void singleShot(int milliseconds, const QObject *context, std::function<void()> callback) override;

private:
    QElapsedTimer m_timer;
};
