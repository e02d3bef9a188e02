#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <functional>

/// Calls a function from the event loop when SIGTERM, SIGINT or SIGHUP arrives, and gives the signals their
/// previous meaning back when it is destroyed. SIGINT and SIGHUP stay ignored if they were: that is how nohup
/// and the background jobs of a shell work. At most one object at a time.
///
/// The end of the session needs nothing here: the toolkit quits when the session manager says so, and systemd
/// and display managers send SIGTERM.
class QuitRequests : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(QuitRequests)

public:
    explicit QuitRequests(std::function<void()> quit);
    ~QuitRequests() override;

private:
    void drain();

    std::function<void()> m_quit;
    std::array<struct sigaction, 3> m_previous{};
    std::array<int, 2> m_pipe{-1, -1};
    QSocketNotifier *m_notifier = nullptr;
};
