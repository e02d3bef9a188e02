#pragma once

#include <QObject>

namespace simulator
{

/// Turns SIGTERM, SIGINT and SIGHUP, and what comes in their place on Windows (Ctrl+C, a closed console),
/// into a Qt signal. One per process; the former handlers come back with its end.
class SignalWatcher : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SignalWatcher)

public:
    explicit SignalWatcher(QObject *parent = nullptr);
    ~SignalWatcher() override;

Q_SIGNALS:
    void raised(int number);
};

} // namespace simulator
