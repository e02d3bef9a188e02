#pragma once

#include <QString>
#include <QtGlobal>

/// The system's entry that starts the program when the user logs on.
class AutostartEntry
{
    Q_DISABLE_COPY_MOVE(AutostartEntry)

public:
    AutostartEntry() = default;
    virtual ~AutostartEntry() = default;

    virtual bool exists() const = 0;

    /// Creates or replaces the entry. @p program is the executable's path with "/" as separator; quoting it
    /// for the system is the entry's business. A failure is logged and otherwise silent.
    virtual void write(const QString &program) = 0;

    /// Removes the entry; does nothing when there is none.
    virtual void remove() = 0;
};
