#include "mapping/DiskSync.h"

#include <cerrno>
#include <unistd.h>

QString DiskSync::sync(int fileDescriptor)
{
    int result = 0;
    do {
        result = ::fsync(fileDescriptor);
    } while (result != 0 && errno == EINTR);
    const bool unknown = errno == EINVAL || errno == ENOSYS;
    return result == 0 || unknown ? QString() : qt_error_string(errno);
}
