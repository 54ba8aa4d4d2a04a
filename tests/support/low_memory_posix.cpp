#include "tests/support/low_memory.h"

#include <sys/mman.h>

void* page_at_65536()
{
    static void* const page = [] {
        void* const wanted = reinterpret_cast<void*>(65536);
        void* const got = mmap(wanted, 4096, PROT_READ | PROT_WRITE,
                               MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
        if (got != MAP_FAILED && got != wanted)
            munmap(got, 4096);
        return got == wanted ? got : nullptr;
    }();
    return page;
}
