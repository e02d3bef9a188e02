#include "app/GuardKeys.h"

#include "engine/platform/Session.h"

#include <QDir>
#include <QSharedMemory>
#include <QSystemSemaphore>

#include <chrono>
#include <cstdio>
#include <future>
#include <thread>
#include <utility>

namespace
{

constexpr std::chrono::milliseconds lockTimeout(500);

} // namespace

GuardKeys::GuardKeys(const QString &key)
    : m_key(key)
    , m_blockFile(QSharedMemory(key).nativeKey())
    , m_lockFile(m_blockFile)
{
    m_lockFile.replace(QLatin1String("qipc_sharedmemory_"), QLatin1String("qipc_systemsem_"));
}

bool GuardKeys::areAnothers() const
{
    const auto isAnothers = [](const QString &path) {
        if (!QDir::isAbsolutePath(path)) {
            return false;
        }
        // A file that comes only with the block would have its number when it is too late to look.
        QFile(path).open(QIODevice::ReadWrite);
        return Session::isAnothers(path);
    };
    return isAnothers(m_blockFile) || isAnothers(m_lockFile);
}

// On a thread of its own, since taking a lock cannot be bounded. One that hangs ends with the process.
bool GuardKeys::lockWorks() const
{
    std::packaged_task<bool()> takeAndGiveBack([key = m_key] {
        QSystemSemaphore lock(key, 1);
        return lock.acquire() && lock.release();
    });
    std::future<bool> works = takeAndGiveBack.get_future();
    std::thread(std::move(takeAndGiveBack)).detach();
    return works.wait_for(lockTimeout) == std::future_status::ready && works.get();
}

bool GuardKeys::renew()
{
    // Where the numbers are not made of files there is nothing to renew.
    return QDir::isAbsolutePath(m_blockFile) && renewFile(m_blockFile) && renewFile(m_lockFile);
}

bool GuardKeys::renewFile(const QString &path)
{
    auto used = std::make_unique<QFile>(path);
    if (used->open(QIODevice::ReadOnly)) {
        m_used.push_back(std::move(used));
    }
    const QString fresh = path + QStringLiteral(".new");
    QFile file(fresh);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    file.close();
    return std::rename(QFile::encodeName(fresh).constData(), QFile::encodeName(path).constData()) == 0;
}
