// zorutils/platform/posix/memory.h: memory and system figures, and local blocks.
#pragma once

#include "zorutils/platform/win_types.h"

#define LMEM_FIXED 0

// A block of `bytes`; `flags` is LMEM_FIXED. Null, with ERROR_NOT_ENOUGH_MEMORY, when there is
// none.
HLOCAL LocalAlloc(UINT flags, SIZE_T bytes);

// Releases a block of LocalAlloc or FormatMessageW; null is fine. Returns null.
HLOCAL LocalFree(HLOCAL block);
