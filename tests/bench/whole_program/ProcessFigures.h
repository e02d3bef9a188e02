#pragma once

#include <QList>
#include <QtGlobal>

/// What the kernel counts for a process.
namespace processfigures
{

/// Time on a processor of all threads, in ns.
qint64 cpuTime(qint64 pid);

/// How often the main thread went to sleep of its own accord: as often it was woken.
qint64 wakeUps(qint64 pid);

/// Memory of its own, that no file stands behind, in KiB. Pages that a forked child still has in common with
/// it count; pages of libraries do not, not even while nobody else happens to use the library.
qint64 ownMemory(qint64 pid);

/// Of this, what no other process has in common with it, in KiB.
qint64 unsharedMemory(qint64 pid);

QList<qint64> children(qint64 pid);

} // namespace processfigures
