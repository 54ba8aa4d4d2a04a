// The C library's heap with a lock in front of it: these functions take the place of its own for
// the whole process. The checkers have their own, and keep them.
#include "tests/faults/heap_lock_posix.h"

#include <pthread.h>
#include <stddef.h>
#include <stdlib.h>
#include <unistd.h>

#ifdef ZOR_TEST_OWN_HEAP

namespace {

pthread_mutex_t heap = PTHREAD_MUTEX_INITIALIZER;

struct Lock
{
    Lock() { pthread_mutex_lock(&heap); }
    ~Lock() { pthread_mutex_unlock(&heap); }
};

} // namespace

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void __libc_free(void* block);

void* malloc(size_t size)
{
    const Lock lock;
    return __libc_malloc(size);
}
void* calloc(size_t count, size_t size)
{
    const Lock lock;
    return __libc_calloc(count, size);
}
void* realloc(void* block, size_t size)
{
    const Lock lock;
    return __libc_realloc(block, size);
}
void free(void* block)
{
    const Lock lock;
    __libc_free(block);
}
}

void lock_heap()
{
    pthread_mutex_lock(&heap);
}

#else

// What a thread that faulted had is never given back.
extern "C" __attribute__((visibility("default"))) int __lsan_is_turned_off()
{
    return 1;
}

void lock_heap()
{
    _exit(70);
}

#endif
