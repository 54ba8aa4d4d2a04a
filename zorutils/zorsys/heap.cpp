#include "zorutils/zorsys/heap.h"

#include "zorutils/core/bad_allocation.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/library_allocation.h"

#include <limits>
#include <stdlib.h>

void* zor_operator_new(unsigned int size)
{
    void* block = malloc(size ? size : 1); // a size of 0 gets a block of its own too
    if (!block)
        throw ZorBadAllocation();
    return block;
}

void* zor_library_allocate(size_t size)
{
    if (size > std::numeric_limits<unsigned int>::max())
        throw ZorBadAllocation();
    return zor_operator_new(static_cast<unsigned int>(size));
}

// The private heap's source is C and asks for its tick count by this name where the system has
// none.
extern "C" unsigned int zor_heap_tick_count()
{
    return GetTickCount();
}
