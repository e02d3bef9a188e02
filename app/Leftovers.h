#pragma once

#include <QString>

/// What a process leaves behind that was killed in the middle of a write.
namespace Leftovers
{

/// Removes the lock file @p lock if it names no process, which nothing else ever does: one that names a
/// process is cleared by whoever takes it next. Leaves it alone while it is so young that a process may be
/// about to write its name, or holds it.
void clearLock(const QString &lock);

/// Removes what killed writes of the file @p path have left beside it: its lock, as above, and the files that
/// were to take its place. Not while somebody writes it.
void clearBeside(const QString &path);

} // namespace Leftovers
