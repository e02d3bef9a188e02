#include "mapping/FreedMemory.h"

#include <malloc.h>

FreedMemory::GiveBack::~GiveBack()
{
    ::malloc_trim(0);
}
