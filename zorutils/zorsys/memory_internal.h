// zorutils/zorsys/memory_internal.h: the system's memory figures.
#pragma once

#include "zorutils/platform/winapi.h"

namespace MemoryFuncs {

MEMORYSTATUS memory_status();

// The greatest figure that 32 bits hold for every greater one.
DWORD in_32_bits(SIZE_T bytes);

} // namespace MemoryFuncs
