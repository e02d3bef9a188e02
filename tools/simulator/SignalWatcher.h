#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

namespace simulator
{

/// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal. One per process; the former handlers come back with its
/// end.
class SignalWatcher : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SignalWatcher)

public:
    explicit SignalWatcher(QObject *parent = nullptr);
    ~SignalWatcher() override;

Q_SIGNALS:
    void raised(int number);

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace simulator
