#pragma once

#include <QLockFile>
#include <QString>

/// Held by a start of the program while it finds out whether it is the first, and by what must not meet one:
/// as long as it is held, no copy begins to run. Given up after some seconds: a start is better than none.
class StartLock
{
    Q_DISABLE_COPY_MOVE(StartLock)

public:
    /// Waits for its turn. @p key names the instance guard.
    explicit StartLock(const QString &key);

    /// The user's own folder in which guard and lock are; empty when the user has none.
    static QString folder();

private:
    QString m_path;
    QLockFile m_file;
};
