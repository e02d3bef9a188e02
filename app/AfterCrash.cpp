#include "app/AfterCrash.h"

#include "device/PortLocks.h"

#include <new>

namespace
{

bool isDue(const void *memory, qint64 program)
{
    return !static_cast<const AfterCrash *>(memory)->messages.isEmpty() || PortLocks::areLeftOf(program);
}

void afterwards(void *memory, qint64 program)
{
    PortLocks::removeOf(program);
    const OwedMessages &messages = static_cast<AfterCrash *>(memory)->messages;
    if (!messages.isEmpty()) {
        messages.send();
    }
}

} // namespace

CrashTask AfterCrash::task()
{
    return {sizeof(AfterCrash), isDue, afterwards};
}

AfterCrash &AfterCrash::in(void *memory)
{
    static AfterCrash unshared;
    return memory ? *new (memory) AfterCrash : unshared;
}
