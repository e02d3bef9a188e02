#pragma once

#include <QString>

/// The lock files ("LCK..ttyACM0") by which programs keep serial ports to themselves. The serial port library
/// makes and removes ours; one that a killed program left stands in a folder where only its user can remove
/// it.
namespace PortLocks
{

/// Whether there are any that name @p process.
bool areLeftOf(qint64 process);

/// Removes those that name @p process, which has ended. One that another process holds meanwhile stays.
void removeOf(qint64 process);

/// The living process of this machine that the lock of the port at @p path names; 0 where there is none.
qint64 holderOf(const QString &path);

/// A lock of the port at @p path that nobody may try to read: a pipe, a link or something endless that
/// another user has put in the place of a file, on which reading would wait for ever. Empty where there is
/// none.
QString trapFor(const QString &path);

/// True where locks are usual and this user can put none anywhere: then every port is refused, held or not.
bool haveNoPlace();

} // namespace PortLocks
