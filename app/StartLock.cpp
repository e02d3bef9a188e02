#include "app/StartLock.h"

#include "app/Leftovers.h"

#include <QDeadlineTimer>
#include <QStandardPaths>
#include <QThread>

namespace
{

constexpr int patience = 30000; // ms; far more than any number of starts at once needs
constexpr int pause = 20;       // ms between two looks: fifty starts that look all the time slow each other

} // namespace

StartLock::StartLock(const QString &key)
    : m_path(folder() + QLatin1Char('/') + key + QStringLiteral(".lock"))
    , m_file(m_path)
{
    // A lock whose process is gone is stale at once; one whose process lives never is.
    m_file.setStaleLockTime(0);
    const QDeadlineTimer deadline(patience);
    while (!m_file.tryLock(0) && m_file.error() == QLockFile::LockFailedError && !deadline.hasExpired()) {
        Leftovers::clearLock(m_path);
        QThread::msleep(pause);
    }
}

QString StartLock::folder()
{
    // Looked up once: where the session names none it stands in the temporary folder, which the guard
    // replaces while it works.
    static const QString users = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return users;
}
