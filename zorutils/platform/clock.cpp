#include "zorutils/platform/clock.h"

#include <atomic>

#include "zorutils/platform/winapi.h"

namespace zor::platform {

namespace {

std::atomic<DWORD (*)()> other{nullptr};

} // namespace

DWORD tick_count()
{
    const auto counter = other.load(std::memory_order_relaxed);
    return counter != nullptr ? counter() : GetTickCount();
}

void set_tick_count(DWORD (*counter)())
{
    other.store(counter, std::memory_order_relaxed);
}

} // namespace zor::platform
