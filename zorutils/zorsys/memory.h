// zorutils/zorsys/memory.h: how much memory is free.
//
//     if (MemoryFuncs::GetFreeSliderMemory() < needed)
//         warn_of_low_memory();
//
// Both are in bytes; what 32 bits can't say is 0xFFFFFFFF, as the system's own 32-bit figures have
// it. Any thread may call.
#pragma once

#include "zorutils/core/zor_api.h"

namespace MemoryFuncs {

// Free address space of the process or free physical memory, whichever is less.
ZOR_API DWORD GetFreeVirtMemory();

// Free physical memory.
ZOR_API DWORD GetFreeSliderMemory();

} // namespace MemoryFuncs
