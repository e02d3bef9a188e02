#include "app/AfterCrash.h"

#include "device/PortLocks.h"

#include <new>

namespace
{

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
    return {sizeof(AfterCrash), afterwards};
}

AfterCrash &AfterCrash::in(void *memory)
{
    static AfterCrash unshared;
    return memory ? *new (memory) AfterCrash : unshared;
}
