// zorutils/platform/posix/memory.h: memory and system figures, and local blocks.
#pragma once

#include "zorutils/platform/win_types.h"

#define LMEM_FIXED 0

// Figures in bytes. Physical memory that the system can take back from its caches counts as
// available; the page file is physical memory and swap together; virtual is the address space of
// this process, within its limit.
struct MEMORYSTATUS
{
    DWORD dwLength;
    DWORD dwMemoryLoad; // physical memory in use, in percent
    SIZE_T dwTotalPhys;
    SIZE_T dwAvailPhys;
    SIZE_T dwTotalPageFile;
    SIZE_T dwAvailPageFile;
    SIZE_T dwTotalVirtual;
    SIZE_T dwAvailVirtual;
};

// Sets every field, dwLength too. Figures that the system doesn't tell are 0.
void GlobalMemoryStatus(MEMORYSTATUS* status);

// A block of `bytes`; `flags` is LMEM_FIXED. Null, with ERROR_NOT_ENOUGH_MEMORY, when there is
// none.
HLOCAL LocalAlloc(UINT flags, SIZE_T bytes);

// Releases a block of LocalAlloc or FormatMessageW; null is fine. Returns null.
HLOCAL LocalFree(HLOCAL block);
