#include "app/Leftovers.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>

namespace
{

// A process needs microseconds from making its lock file to filling it.
constexpr qint64 emptyLockAge = 200; // ms

} // namespace

void Leftovers::clearLock(const QString &lock)
{
    qint64 process = 0;
    QString host;
    QString program;
    QLockFile file(lock);
    const QFileInfo info(lock);
    if (info.isFile() && !file.getLockInfo(&process, &host, &program) &&
        info.lastModified().msecsTo(QDateTime::currentDateTime()) > emptyLockAge) {
        file.removeStaleLockFile();
    }
}

void Leftovers::clearBeside(const QString &path)
{
    clearLock(path + QStringLiteral(".lock"));
    const QFileInfo info(path);
    // The toolkit replaces the XXXXXX of its temporary files by letters.
    const QRegularExpression temporary(
        QStringLiteral("^%1\\.[A-Za-z]{6}$").arg(QRegularExpression::escape(info.fileName())));
    QDir folder = info.dir();
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden)) {
        if (temporary.match(name).hasMatch()) {
            folder.remove(name);
        }
    }
}
