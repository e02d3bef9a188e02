#pragma once

#include <QObject>

#include <functional>
#include <memory>

/// Remembers whether the system has refused an event: an elevated window in front, for example. That is news
/// once, for the log and the user; what becomes of later events is not looked at.
class RefusedInput : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(RefusedInput)

public:
    RefusedInput() = default;

    /// To be told of every event whether the system took it.
    void note(bool taken);

    /// Calls @p told from the event loop when the first event is refused, for as long as the returned object
    /// lives.
    std::unique_ptr<QObject> watch(std::function<void()> told);

Q_SIGNALS:
    void firstRefused();

private:
    bool m_told = false;
};
