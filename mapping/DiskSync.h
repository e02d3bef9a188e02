#pragma once

#include <QString>

/// Brings what was written to an open file onto the disk itself.
namespace DiskSync
{

/// Waits until all of the file is there. What stood in the way, in plain English; empty when nothing did, and
/// where the file's system knows no such thing.
QString sync(int fileDescriptor);

} // namespace DiskSync
