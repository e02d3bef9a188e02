#include "remote/RemotePlace.h"

#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr mode_t onlyOwner = S_IRWXU;
constexpr mode_t others = S_IRWXG | S_IRWXO;

QString folder()
{
    // Where the session names none, the toolkit makes one of the user's own in the temporary directory, and
    // says none when somebody else's is there.
    const QString users = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return users.isEmpty() ? QString() : users + QStringLiteral("/veltrix");
}

QString systemsReason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

// Not through a link: that could lead to somebody else's.
QString whatIsWrongWithFolder(const QString &path)
{
    struct stat found = {};
    if (::lstat(QFile::encodeName(path).constData(), &found) != 0) {
        return QStringLiteral("the folder %1 cannot be used: %2").arg(path, systemsReason());
    }
    const char *fault = !S_ISDIR(found.st_mode)          ? "%1 is no folder"
                        : found.st_uid != ::geteuid()    ? "the folder %1 is another user's"
                        : (found.st_mode & others) != 0U ? "the folder %1 is open to other users"
                                                         : nullptr;
    return fault == nullptr ? QString() : QString::fromLatin1(fault).arg(path);
}

QString socketIn(const QString &path)
{
    return path + QStringLiteral("/remote");
}

RemotePlace unusable(const QString &problem)
{
    return {QString(), problem};
}

} // namespace

RemotePlace RemotePlace::toListen(const QString &)
{
    const QString path = folder();
    if (path.isEmpty()) {
        return unusable(QStringLiteral("the user has no runtime folder"));
    }
    if (::mkdir(QFile::encodeName(path).constData(), onlyOwner) != 0 && errno != EEXIST) {
        return unusable(QStringLiteral("the folder %1 cannot be made: %2").arg(path, systemsReason()));
    }
    const QString fault = whatIsWrongWithFolder(path);
    if (!fault.isEmpty()) {
        return unusable(fault);
    }
    const QString socket = socketIn(path);
    const QByteArray name = QFile::encodeName(socket);
    struct stat found = {};
    if (::lstat(name.constData(), &found) == 0) {
        if (!S_ISSOCK(found.st_mode)) {
            return unusable(QStringLiteral("%1 is no socket").arg(socket));
        }
        ::unlink(name.constData());
    }
    return {socket, QString()};
}

RemotePlace RemotePlace::toAsk(const QString &)
{
    const QString path = folder();
    if (path.isEmpty() || (::access(QFile::encodeName(path).constData(), F_OK) != 0 && errno == ENOENT)) {
        return {};
    }
    const QString fault = whatIsWrongWithFolder(path);
    return fault.isEmpty() ? RemotePlace{socketIn(path), QString()} : unusable(fault);
}

bool RemotePlace::isOwn(qintptr socket)
{
    ucred peer = {};
    socklen_t size = sizeof peer;
    return ::getsockopt(static_cast<int>(socket), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == ::geteuid();
}
