#include "device/PortHolder.h"

#include "device/PortLocks.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

// Some 20 ms, which nobody notices. Not a time: on a busy machine that may be over before anything was looked
// at.
constexpr int filesAtMost = 10000;

namespace fs = std::filesystem;

/// The other processes, the youngest first: who holds a port was started for it, most likely.
std::vector<qint64> otherProcesses()
{
    std::vector<qint64> processes;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end; entry.increment(error)) {
        bool isNumber = false;
        const qint64 number = QString::fromStdString(entry->path().filename().string()).toLongLong(&isNumber);
        if (isNumber && number != QCoreApplication::applicationPid()) {
            processes.push_back(number);
        }
    }
    std::sort(processes.rbegin(), processes.rend());
    return processes;
}

/// Whether @p process has @p device open; false, too, where the system does not tell.
bool hasOpen(qint64 process, const fs::path &device, int &filesLeft)
{
    std::error_code error;
    const fs::path files = "/proc/" + std::to_string(process) + "/fd";
    for (fs::directory_iterator file(files, error), end; !error && file != end && filesLeft > 0;
         file.increment(error)) {
        --filesLeft;
        std::error_code gone;
        if (fs::read_symlink(file->path(), gone) == device) {
            return true;
        }
    }
    return false;
}

qint64 processWithOpen(const QString &path)
{
    std::error_code error;
    const fs::path device = fs::canonical(path.toStdString(), error);
    if (error) {
        return 0;
    }
    int filesLeft = filesAtMost;
    const std::vector<qint64> processes = otherProcesses();
    const auto holder = std::find_if(processes.begin(), processes.end(),
                                     [&](qint64 process) { return hasOpen(process, device, filesLeft); });
    return holder == processes.end() ? 0 : *holder;
}

} // namespace

PortHolder PortHolder::of(const QString &path)
{
    PortHolder holder;
    holder.process = PortLocks::holderOf(path);
    if (holder.process == 0) {
        holder.process = processWithOpen(path);
    }
    QFile name(QStringLiteral("/proc/%1/comm").arg(holder.process));
    if (holder.process != 0 && name.open(QIODevice::ReadOnly)) {
        holder.program = QString::fromLocal8Bit(name.readLine().trimmed());
    }
    return holder;
}

bool PortHolder::isThere() const
{
    return process != 0 && QFileInfo::exists(QStringLiteral("/proc/%1").arg(process));
}
