// zorutils/zorsys/heap.h: allocation inside the library, and the private heap for its hosts.
//
//     auto* points = static_cast<Point*>(dlmalloc(count * sizeof(Point)));
//     dlfree(points);
//
// The private heap is one space of its own for the process: Doug Lea's dlmalloc 2.8.6, which grows
// by 4 MiB at a time, gives memory back to the system when more than 2 MiB lie free at its end, and
// serves requests of every size from the space. The library itself doesn't use it.
#pragma once

#include "zorutils/core/zor_api.h"

#include <stddef.h>

// A block of `size` bytes from the C runtime that the library uses, to be released inside the
// library by free. Raises ZorBadAllocation, a std::bad_alloc whose text is "bad allocation". Any
// thread.
ZOR_API void* zor_operator_new(unsigned int size);

namespace dlheap {

// The private heap's figures in bytes; a namespace of its own keeps it apart from the record of the
// same name in some C libraries.
struct mallinfo
{
    size_t arena;    // got from the system, without mappings for single requests
    size_t ordblks;  // number of free blocks
    size_t smblks;   // 0
    size_t hblks;    // 0
    size_t hblkhd;   // in mappings for single requests
    size_t usmblks;  // the most ever got from the system
    size_t fsmblks;  // 0
    size_t uordblks; // in use
    size_t fordblks; // free
    size_t keepcost; // free at the end of the space, which can go back to the system
};

} // namespace dlheap

// As malloc, calloc, realloc and free, on the private heap; null when there is no memory. A block
// of one pair of them isn't for the other. Any thread.
extern "C" {
ZOR_API void* dlmalloc(size_t size);
ZOR_API void* dlcalloc(size_t count, size_t size);
ZOR_API void* dlrealloc(void* block, size_t size);
ZOR_API void dlfree(void* block);
ZOR_API dlheap::mallinfo dlmallinfo();
}
