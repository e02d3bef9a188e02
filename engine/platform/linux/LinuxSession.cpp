#include "engine/platform/Session.h"

#include <QFile>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// Whether the system's table at @p path has an entry of another user's whose number was made of the file of
/// this @p status. All that a file gives to a number are its lower three bytes.
bool tableHasAnothers(const QString &path, const struct stat &status)
{
    constexpr quint32 inodeBits = 0xffff;
    constexpr quint32 deviceBits = 0xff;
    const quint32 wanted = (quint32(status.st_ino) & inodeBits) | (quint32(status.st_dev) & deviceBits) << 16;
    QFile table(path);
    if (!table.open(QIODevice::ReadOnly)) {
        return false;
    }
    const int user = table.readLine().simplified().split(' ').indexOf("uid");
    // There may be a thousand lines, and every start reads them: those of other keys are not taken apart. The
    // key comes first.
    std::array<char, 512> line{};
    while (table.readLine(line.data(), line.size()) > 0) {
        const auto key = quint32(std::strtol(line.data(), nullptr, 10));
        if ((key & 0xffffff) == wanted &&
            QByteArray(line.data()).simplified().split(' ').value(user).toUInt() != ::geteuid()) {
            return true;
        }
    }
    return false;
}

} // namespace

void Session::print(const QString &text, bool toError)
{
    std::fputs(text.toLocal8Bit().constData(), toError ? stderr : stdout);
}

void Session::keepOthersFromWriting()
{
    const mode_t mask = ::umask(S_IWGRP | S_IWOTH);
    if ((mask & S_IWOTH) != 0) {
        ::umask(mask);
    }
}

bool Session::isAnothers(const QString &keyFile)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(keyFile).constData(), &status) == 0 &&
           (tableHasAnothers(QStringLiteral("/proc/sysvipc/shm"), status) ||
            tableHasAnothers(QStringLiteral("/proc/sysvipc/sem"), status));
}

QString Session::userMark()
{
    return {}; // names are kept in the user's runtime directory
}

void Session::letOthersComeToFront() {}

void Session::bringToFront(quintptr) {}
