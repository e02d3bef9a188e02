#include "tests/bench/whole_program/ProcessFigures.h"

#include <QDir>
#include <QFile>

namespace
{

QList<QByteArray> linesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
}

/// The sum of the numbers in the lines that begin with @p name.
qint64 sumOf(const QString &path, const QByteArray &name)
{
    qint64 sum = 0;
    for (const QByteArray &line : linesOf(path)) {
        if (line.startsWith(name)) {
            sum += line.mid(line.indexOf(':') + 1).simplified().split(' ').first().toLongLong();
        }
    }
    return sum;
}

} // namespace

qint64 processfigures::cpuTime(qint64 pid)
{
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(pid));
    qint64 sum = 0;
    for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        sum += linesOf(tasks.filePath(task + QStringLiteral("/schedstat")))
                   .value(0)
                   .split(' ')
                   .first()
                   .toLongLong();
    }
    return sum;
}

qint64 processfigures::wakeUps(qint64 pid)
{
    return sumOf(QStringLiteral("/proc/%1/task/%1/status").arg(pid), "voluntary_ctxt_switches");
}

qint64 processfigures::ownMemory(qint64 pid)
{
    return sumOf(QStringLiteral("/proc/%1/smaps_rollup").arg(pid), "Anonymous");
}

qint64 processfigures::unsharedMemory(qint64 pid)
{
    return sumOf(QStringLiteral("/proc/%1/smaps_rollup").arg(pid), "Private_Dirty");
}

QList<qint64> processfigures::children(qint64 pid)
{
    QList<qint64> result;
    const QByteArray line = linesOf(QStringLiteral("/proc/%1/task/%1/children").arg(pid)).value(0);
    for (const QByteArray &child : line.simplified().split(' ')) {
        if (!child.isEmpty()) {
            result.append(child.toLongLong());
        }
    }
    return result;
}
