#pragma once

#include <QString>

/// What a process leaves behind that was killed in the middle of a write.
namespace Leftovers
{

/// Removes the lock file @p lock if it names no process, which nothing else ever does: one that names a
/// process is cleared by whoever takes it next. Leaves it alone while it is so young that a process may be
/// about to write its name, or holds it.
void clearLock(const QString &lock);

/// Removes what a write of the settings file @p path that was killed has left beside it: the lock, as above,
/// and the file that was to take its place. The toolkit gives that a name that a user's copy could have, so
/// it goes only where the lock tells of a write that was killed, and the letters are thrown together. Not
/// while somebody writes the settings. For a lock that names no process yet it waits, a fifth of a second at
/// most.
void clearBesideSettings(const QString &path);

} // namespace Leftovers
