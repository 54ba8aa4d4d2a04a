#include "zorutils/zorsys/memory.h"

#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/memory_internal.h"

#include <algorithm>
#include <limits>

namespace MemoryFuncs {

MEMORYSTATUS memory_status()
{
    MEMORYSTATUS status = {};
    status.dwLength = sizeof(status);
    GlobalMemoryStatus(&status);
    return status;
}

DWORD in_32_bits(SIZE_T bytes)
{
    constexpr SIZE_T greatest = std::numeric_limits<DWORD>::max();
    return static_cast<DWORD>(std::min(bytes, greatest));
}

DWORD GetFreeVirtMemory()
{
    const MEMORYSTATUS status = memory_status();
    return in_32_bits(std::min<SIZE_T>(status.dwAvailVirtual, status.dwAvailPhys));
}

DWORD GetFreeSliderMemory()
{
    return in_32_bits(memory_status().dwAvailPhys);
}

} // namespace MemoryFuncs
