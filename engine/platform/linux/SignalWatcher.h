#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <functional>

/// Calls a function from the event loop when SIGTERM, SIGINT or SIGHUP arrives, and gives the signals their
/// previous meaning back when it is destroyed. SIGINT and SIGHUP stay ignored if they were: that is how nohup
/// and the background jobs of a shell work. At most one object at a time.
class SignalWatcher : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SignalWatcher)

public:
    /// @p raised is called with the signal's number; of signals that arrive together, with the first one's.
    explicit SignalWatcher(std::function<void(int number)> raised);
    ~SignalWatcher() override;

private:
    void drain();

    std::function<void(int)> m_raised;
    std::array<struct sigaction, 3> m_previous{};
    std::array<int, 2> m_pipe{-1, -1};
    QSocketNotifier *m_notifier = nullptr;
};
