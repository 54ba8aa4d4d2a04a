#include "tests/support/low_memory.h"

#include <windows.h>

void* page_at_65536()
{
    static void* const page = VirtualAlloc(reinterpret_cast<void*>(65536), 4096,
                                           MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    return page;
}
