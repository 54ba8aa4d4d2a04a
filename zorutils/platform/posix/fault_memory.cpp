#include "zorutils/platform/posix/fault_memory.h"

#include <malloc.h>
#include <string.h>
#include <sys/mman.h>

#include <atomic>
#include <mutex>
#include <new>
#include <string>

#include "zorutils/platform/fault_state.h"

// The functions that the C++ library keeps of this template take memory there, out of the linker's
// reach; these are this library's own.
template class std::basic_string<char>;

namespace zor::platform {

namespace {

// Pages that are not used cost nothing.
constexpr size_t memory_size = size_t{64} << 20;

std::atomic<char*> memory{nullptr};
void* heap = nullptr; // within, once `memory` is there

bool takes_memory_aside()
{
    return handles_fault() && memory.load(std::memory_order_acquire) != nullptr;
}

} // namespace

bool is_fault_memory(const void* block)
{
    const char* const start = memory.load(std::memory_order_acquire);
    const auto* const place = static_cast<const char*>(block);
    return start != nullptr && place >= start && place < start + memory_size;
}

bool set_fault_memory_aside()
{
    if (memory.load(std::memory_order_acquire) != nullptr)
        return true;
    static std::mutex making;
    const std::lock_guard<std::mutex> lock(making);
    if (memory.load(std::memory_order_relaxed) != nullptr)
        return true;
    void* const place = mmap(nullptr, memory_size, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (place == MAP_FAILED)
        return false;
    heap = zor_fault_heap_make(place, memory_size);
    memory.store(static_cast<char*>(place), std::memory_order_release);
    return true;
}

} // namespace zor::platform

using namespace zor::platform;

extern "C" {

void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* block, size_t size);
void __real_free(void* block);
void* __real__Znwm(size_t size);
void* __real__Znam(size_t size);
void* __real__ZnwmRKSt9nothrow_t(size_t size, const std::nothrow_t& nothrow);
void __real__ZdlPv(void* block);
void __real__ZdaPv(void* block);
void __real__ZdlPvm(void* block, size_t size);
void __real__ZdaPvm(void* block, size_t size);

void* __wrap_malloc(size_t size)
{
    return takes_memory_aside() ? zor_fault_heap_allocate(heap, size) : __real_malloc(size);
}

void* __wrap_calloc(size_t count, size_t size)
{
    if (!takes_memory_aside())
        return __real_calloc(count, size);
    size_t whole = 0;
    if (__builtin_mul_overflow(count, size, &whole))
        return nullptr;
    void* const block = zor_fault_heap_allocate(heap, whole);
    return block == nullptr ? nullptr : memset(block, 0, whole);
}

void __wrap_free(void* block)
{
    if (is_fault_memory(block))
        zor_fault_heap_free(heap, block);
    else if (!takes_memory_aside())
        __real_free(block);
}

void* __wrap_realloc(void* block, size_t size)
{
    const bool aside = is_fault_memory(block);
    if (!aside && !takes_memory_aside())
        return __real_realloc(block, size);
    void* const moved = __wrap_malloc(size);
    if (moved == nullptr)
        return nullptr;
    if (block != nullptr) {
        const size_t had = aside ? zor_fault_heap_block_size(block) : malloc_usable_size(block);
        memcpy(moved, block, had < size ? had : size);
    }
    __wrap_free(block);
    return moved;
}

void* __wrap__Znwm(size_t size)
{
    if (!takes_memory_aside())
        return __real__Znwm(size);
    if (void* const block = zor_fault_heap_allocate(heap, size))
        return block;
    throw std::bad_alloc();
}

void* __wrap__Znam(size_t size)
{
    return takes_memory_aside() ? __wrap__Znwm(size) : __real__Znam(size);
}

void* __wrap__ZnwmRKSt9nothrow_t(size_t size, const std::nothrow_t& nothrow)
{
    return takes_memory_aside() ? zor_fault_heap_allocate(heap, size)
                                : __real__ZnwmRKSt9nothrow_t(size, nothrow);
}

// A block that was set aside, or any while a fault is handled, has no way to the common heap.
static bool stays_here(void* block)
{
    const bool stays = is_fault_memory(block) || takes_memory_aside();
    if (stays)
        __wrap_free(block);
    return stays;
}

void __wrap__ZdlPv(void* block)
{
    if (!stays_here(block))
        __real__ZdlPv(block);
}

void __wrap__ZdaPv(void* block)
{
    if (!stays_here(block))
        __real__ZdaPv(block);
}

void __wrap__ZdlPvm(void* block, size_t size)
{
    if (!stays_here(block))
        __real__ZdlPvm(block, size);
}

void __wrap__ZdaPvm(void* block, size_t size)
{
    if (!stays_here(block))
        __real__ZdaPvm(block, size);
}
}
