#include "tests/support/failing_allocation.h"

#include <stdlib.h>

#include <atomic>
#include <new>

namespace {

thread_local int t_until_failure = 0; // 0: none is to come
thread_local int t_failures_left = 0;
thread_local bool t_happened = false;
std::atomic<long> g_live_blocks{0};

void* allocate(size_t size)
{
    if (t_until_failure > 0 && --t_until_failure == 0 && t_failures_left > 0) {
        t_happened = true;
        if (--t_failures_left > 0)
            t_until_failure = 1;
        throw std::bad_alloc();
    }
    void* const block = malloc(size == 0 ? 1 : size);
    if (block == nullptr)
        throw std::bad_alloc();
    g_live_blocks.fetch_add(1, std::memory_order_relaxed);
    return block;
}

void release(void* block)
{
    if (block == nullptr)
        return;
    g_live_blocks.fetch_sub(1, std::memory_order_relaxed);
    free(block);
}

} // namespace

namespace zor_test {

FailingAllocation::FailingAllocation(int n, int failures)
{
    t_happened = false;
    t_failures_left = failures;
    t_until_failure = n;
}

FailingAllocation::~FailingAllocation()
{
    t_until_failure = 0;
}

bool FailingAllocation::happened() const
{
    return t_happened;
}

long live_blocks()
{
    return g_live_blocks.load(std::memory_order_relaxed);
}

} // namespace zor_test

void* operator new(size_t size)
{
    return allocate(size);
}

void* operator new[](size_t size)
{
    return allocate(size);
}

void operator delete(void* block) noexcept
{
    release(block);
}

void operator delete[](void* block) noexcept
{
    release(block);
}

void operator delete(void* block, size_t) noexcept
{
    release(block);
}

void operator delete[](void* block, size_t) noexcept
{
    release(block);
}
