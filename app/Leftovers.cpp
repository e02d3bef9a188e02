#include "app/Leftovers.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QThread>

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

bool namesNobody(const QString &lock)
{
    qint64 process = 0;
    QString host;
    QString program;
    return QFileInfo(lock).isFile() && !QLockFile(lock).getLockInfo(&process, &host, &program);
}

} // namespace

void Leftovers::clearLock(const QString &lock)
{
    QLockFile file(lock);
    const QFileInfo info(lock);
    if (namesNobody(lock) && info.lastModified().msecsTo(QDateTime::currentDateTime()) > emptyLockAge) {
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
        const QFileInfoList files = folder.entryInfoList(QDir::Files | QDir::Hidden);
        for (const QFileInfo &each : files) {
            if (temporary.match(each.fileName()).hasMatch() && each.lastModified() >= locked) {
                folder.remove(each.fileName());
            }
        }
    }
    clearLock(lock);
    if (namesNobody(lock)) { // a young one; the toolkit would wait for half a minute
        QThread::msleep(emptyLockAge + 1);
        clearLock(lock);
    }
}
