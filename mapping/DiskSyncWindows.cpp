#include "mapping/DiskSync.h"

#include <cerrno>
#include <io.h>

QString DiskSync::sync(int fileDescriptor)
{
    return ::_commit(fileDescriptor) == 0 ? QString() : qt_error_string(errno);
}
