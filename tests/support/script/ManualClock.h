#pragma once

#include "engine/Clock.h"

#include <QObject>
#include <QPointer>

#include <utility>
#include <vector>

/// Time that stands still until a test moves it.
class ManualClock final : public Clock
{
    Q_DISABLE_COPY_MOVE(ManualClock)

public:
    ManualClock() = default;

    std::chrono::nanoseconds now() const override { return m_now; }

    void singleShot(int milliseconds, const QObject *context, std::function<void()> callback) override
    {
        m_pending.push_back({m_now + std::chrono::milliseconds(milliseconds), context, std::move(callback)});
    }

    /// Lets time pass; what falls due runs at its own moment, in the order of the moments.
    void advance(int milliseconds) { advance(std::chrono::milliseconds(milliseconds)); }
    void advance(std::chrono::nanoseconds time)
    {
        const std::chrono::nanoseconds end = m_now + time;
        for (;;) {
            auto next = m_pending.end();
            for (auto it = m_pending.begin(); it != m_pending.end(); ++it) {
                if (it->due <= end && (next == m_pending.end() || it->due < next->due)) {
                    next = it;
                }
            }
            if (next == m_pending.end()) {
                break;
            }
            const Pending due = std::move(*next);
            m_pending.erase(next);
            m_now = due.due;
            if (due.context) {
                due.callback();
            }
        }
        m_now = end;
    }

    std::size_t pendingCount() const { return m_pending.size(); }

private:
    struct Pending {
        std::chrono::nanoseconds due;
        QPointer<const QObject> context;
        std::function<void()> callback;
    };

    std::chrono::nanoseconds m_now{0};
    std::vector<Pending> m_pending;
};
