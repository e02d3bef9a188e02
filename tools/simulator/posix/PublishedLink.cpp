#include "tools/simulator/posix/PublishedLink.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <climits>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace simulator
{

namespace
{

enum class Occupant { Nobody, DeviceLink, Other };

QByteArray linkTarget(const QByteArray &path)
{
    char target[PATH_MAX];
    const ssize_t length = ::readlink(path.constData(), target, sizeof target);
    return length < 0 ? QByteArray() : QByteArray(target, static_cast<int>(length));
}

Occupant occupant(const QByteArray &path)
{
    struct stat status = {};
    if (::lstat(path.constData(), &status) != 0) {
        return Occupant::Nobody;
    }
    const bool isDeviceLink = S_ISLNK(status.st_mode) && linkTarget(path).startsWith("/dev/pts/");
    return isDeviceLink ? Occupant::DeviceLink : Occupant::Other;
}

/// Whether reading what should be a lock could wait for ever: in a folder that users share, any of them could
/// have put a pipe there, or something endless.
bool isTrap(const QByteArray &lock)
{
    constexpr off_t longest = 4096; // bytes; locks hold a number and two names
    struct stat status = {};
    return ::lstat(lock.constData(), &status) == 0 && (!S_ISREG(status.st_mode) || status.st_size > longest);
}

QString text(const char *source)
{
    return QCoreApplication::translate("PublishedLink", source);
}

} // namespace

PublishedLink::PublishedLink(const QString &path)
    : m_path(path)
{
}

PublishedLink::~PublishedLink()
{
    withdraw();
}

bool PublishedLink::claim()
{
    const QString lockPath = m_path + QStringLiteral(".lock");
    if (isTrap(QFile::encodeName(lockPath))) {
        return fail(text("\"%1\" cannot be locked").arg(m_path));
    }
    auto lock = std::make_unique<QLockFile>(lockPath);
    // The process that holds the lock may live for days; only its death makes the lock stale.
    lock->setStaleLockTime(0);
    if (!lock->tryLock(0)) {
        qint64 pid = 0;
        QString host;
        QString program;
        if (lock->error() == QLockFile::LockFailedError && lock->getLockInfo(&pid, &host, &program)) {
            return fail(text("\"%1\" belongs to another simulator (process %2); choose another with --link")
                            .arg(m_path, QString::number(pid)));
        }
        return fail(text("\"%1\" cannot be locked").arg(m_path));
    }
    if (occupant(QFile::encodeName(m_path)) == Occupant::Other) {
        return fail(text("\"%1\" exists and is not a link to a virtual device").arg(m_path));
    }
    m_lock = std::move(lock);
    return true;
}

bool PublishedLink::publish(const QString &target)
{
    const QByteArray path = QFile::encodeName(m_path);
    const QByteArray beside = path + '.' + QByteArray::number(::getpid());
    ::unlink(beside.constData());
    if (::symlink(QFile::encodeName(target).constData(), beside.constData()) != 0 ||
        ::rename(beside.constData(), path.constData()) != 0) {
        const int reason = errno;
        ::unlink(beside.constData());
        return fail(
            text("\"%1\" cannot be made: %2").arg(m_path, QString::fromLocal8Bit(std::strerror(reason))));
    }
    m_target = target;
    return true;
}

void PublishedLink::withdraw()
{
    const QByteArray path = QFile::encodeName(m_path);
    if (!m_target.isEmpty() && linkTarget(path) == QFile::encodeName(m_target)) {
        ::unlink(path.constData());
    }
    m_target.clear();
}

bool PublishedLink::fail(const QString &error)
{
    m_error = error;
    return false;
}

} // namespace simulator
