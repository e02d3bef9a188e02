#include "device/PortLocks.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QSysInfo>

#include <algorithm>
#include <array>

namespace
{

// Where the serial port library looks for a folder to put them in.
constexpr std::array folders{"/var/lock", "/etc/locks", "/var/spool/locks",  "/var/spool/uucp",
                             "/tmp",      "/var/tmp",   "/var/lock/lockdev", "/run/lock"};

bool isLinux()
{
    return QSysInfo::kernelType() == QLatin1String("linux");
}

constexpr qint64 longestLock = 4096; // bytes; they hold a number and two names

bool isTrap(const QFileInfo &lock)
{
    return lock.isSymLink() || (lock.exists() && (!lock.isFile() || lock.size() > longestLock));
}

/// The process that holds the lock, 0 for none of this machine.
qint64 holderOfFile(const QString &lockFile)
{
    qint64 holder = 0;
    QString host;
    QString program;
    const bool read =
        !isTrap(QFileInfo(lockFile)) && QLockFile(lockFile).getLockInfo(&holder, &host, &program);
    return read && (host.isEmpty() || host == QSysInfo::machineHostName()) ? holder : 0;
}

/// The paths of those that name the process.
QStringList locksOf(qint64 process)
{
    QStringList found;
    for (const char *folder : folders) {
        const QDir locks(QString::fromLatin1(folder));
        const QStringList names = locks.entryList({QStringLiteral("LCK..*")}, QDir::Files | QDir::Hidden);
        for (const QString &name : names) {
            if (holderOfFile(locks.filePath(name)) == process) {
                found.append(locks.filePath(name));
            }
        }
    }
    return found;
}

} // namespace

bool PortLocks::areLeftOf(qint64 process)
{
    return !locksOf(process).isEmpty();
}

void PortLocks::removeOf(qint64 process)
{
    const QStringList paths = locksOf(process);
    for (const QString &path : paths) {
        QLockFile(path).removeStaleLockFile();
    }
}

qint64 PortLocks::holderOf(const QString &path)
{
    const QString name = QStringLiteral("LCK..") + QFileInfo(path).fileName();
    for (const char *folder : folders) {
        const qint64 holder = holderOfFile(QDir(QString::fromLatin1(folder)).filePath(name));
        // Who has ended holds nothing any more.
        if (holder > 0 && QFileInfo::exists(QStringLiteral("/proc/%1").arg(holder))) {
            return holder;
        }
    }
    return 0;
}

QString PortLocks::trapFor(const QString &path)
{
    // As the serial port library names them.
    QString name = path.startsWith(QLatin1String("/dev/")) ? path.mid(int(qstrlen("/dev/"))) : path;
    name.replace(QLatin1Char('/'), QLatin1Char('_')).prepend(QLatin1String("LCK.."));
    for (const char *folder : folders) {
        const QFileInfo lock(QDir(QString::fromLatin1(folder)), name);
        if (isTrap(lock)) {
            return lock.filePath();
        }
    }
    return {};
}

bool PortLocks::haveNoPlace()
{
    return isLinux() && std::none_of(folders.begin(), folders.end(), [](const char *folder) {
               return QFileInfo(QString::fromLatin1(folder)).isWritable();
           });
}
