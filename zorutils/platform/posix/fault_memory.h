/* zorutils/platform/posix/fault_memory.h: memory for a thread that handles a fault. C and C++.
 *
 * The C library's heap is out of reach then: the thread may hold its lock, and what broke may be
 * the heap itself. The linker leads this library's calls of malloc, calloc, realloc, free and the
 * operators new and delete here (--wrap). They go on to where they went before, but for a thread
 * that handles a fault (fault_state.h): it gets blocks of a heap of their own, which was set aside
 * before, and blocks of the common heap that it frees are left alone.
 *
 * A block set aside may outlive the fault. It knows its way back, whoever frees it and when.
 */
#ifndef ZORUTILS_PLATFORM_POSIX_FAULT_MEMORY_H
#define ZORUTILS_PLATFORM_POSIX_FAULT_MEMORY_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The heap set aside: made in a given range of memory, and never growing out of it. */
void* zor_fault_heap_make(void* memory, size_t size);
void* zor_fault_heap_allocate(void* heap, size_t size);
void zor_fault_heap_free(void* heap, void* block);
size_t zor_fault_heap_block_size(const void* block);

#ifdef __cplusplus
}

namespace zor::platform {

// Sets the memory aside; nothing if it is there. False if the system has none.
bool set_fault_memory_aside();

// Whether a block lies in it.
bool is_fault_memory(const void* block);

} // namespace zor::platform
#endif

#endif
