#pragma once

#include <QtGlobal>

/// The lock files ("LCK..ttyACM0") by which programs keep serial ports to themselves. The serial port library
/// makes and removes ours; one that a killed program left stands in a folder where only its user can remove
/// it.
namespace PortLocks
{

/// Removes those that name @p process, which has ended. One that another process holds meanwhile stays.
void removeOf(qint64 process);

} // namespace PortLocks
