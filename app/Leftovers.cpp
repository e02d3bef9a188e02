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

// Left by a process that was killed while it held the lock.
bool isOfDead(const QString &lock)
{
    if (!QFileInfo(lock).isFile()) {
        return false;
    }
    QLockFile file(lock);
    file.setStaleLockTime(0); // a process that lives and holds it keeps it all the same
    return file.tryLock(0);
}

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

void Leftovers::clearBesideSettings(const QString &path)
{
    const QString lock = path + QStringLiteral(".lock");
    const QFileInfo info(path);
    const QDateTime locked = QFileInfo(lock).lastModified();
    if (isOfDead(lock)) {
        // The toolkit replaces the XXXXXX of its temporary files by letters.
        const QRegularExpression temporary(QStringLiteral("^%1\\.(?=.*[a-z][A-Z])[A-Za-z]{6}$")
                                               .arg(QRegularExpression::escape(info.fileName())));
        QDir folder = info.dir();
        for (const QFileInfo &each : folder.entryInfoList(QDir::Files | QDir::Hidden)) {
            if (temporary.match(each.fileName()).hasMatch() && each.lastModified() >= locked) {
                folder.remove(each.fileName());
            }
        }
    }
    clearLock(lock);
}
