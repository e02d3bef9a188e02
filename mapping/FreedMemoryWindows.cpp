#include "mapping/FreedMemory.h"

#include <malloc.h>

FreedMemory::GiveBack::~GiveBack()
{
    ::_heapmin();
}
