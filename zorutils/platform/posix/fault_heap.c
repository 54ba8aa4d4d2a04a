/* The published dlmalloc 2.8.6 once more, as a heap in a range of memory of its own: the private
 * heap (zorsys/dlmalloc_settings.c) is the hosts', and may be what broke. It calls no part of the
 * system.
 */
#include "zorutils/platform/posix/fault_memory.h"

#define _GNU_SOURCE
#include <time.h>

#define __wasilibc_unmodified_upstream 1

#define ONLY_MSPACES 1
#define USE_LOCKS 1
#define USE_SPIN_LOCKS 1
#define HAVE_MORECORE 0
#define HAVE_MMAP 0
#define NO_MALLINFO 1
#define NO_MALLOC_STATS 1
#define LACKS_TIME_H 1
#define MALLOC_FAILURE_ACTION
#define DLMALLOC_EXPORT static __attribute__((unused))
#define malloc_getpagesize ((size_t)4096)

#include ZOR_DLMALLOC_SOURCE

void* zor_fault_heap_make(void* memory, size_t size)
{
    return create_mspace_with_base(memory, size, 1);
}

void* zor_fault_heap_allocate(void* heap, size_t size)
{
    return mspace_malloc(heap, size);
}

void zor_fault_heap_free(void* heap, void* block)
{
    mspace_free(heap, block);
}

size_t zor_fault_heap_block_size(const void* block)
{
    return mspace_usable_size(block);
}
