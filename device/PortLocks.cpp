#include "device/PortLocks.h"

#include <QDir>
#include <QLockFile>
#include <QSysInfo>

void PortLocks::removeOf(qint64 process)
{
    // Where the serial port library looks for a folder to put them in.
    for (const char *folder : {"/var/lock", "/etc/locks", "/var/spool/locks", "/var/spool/uucp", "/tmp",
                               "/var/tmp", "/var/lock/lockdev", "/run/lock"}) {
        const QDir locks(QString::fromLatin1(folder));
        for (const QString &name : locks.entryList({QStringLiteral("LCK..*")}, QDir::Files | QDir::Hidden)) {
            QLockFile lock(locks.filePath(name));
            qint64 holder = 0;
            QString host;
            QString program;
            if (lock.getLockInfo(&holder, &host, &program) && holder == process &&
                (host.isEmpty() || host == QSysInfo::machineHostName())) {
                lock.removeStaleLockFile();
            }
        }
    }
}
