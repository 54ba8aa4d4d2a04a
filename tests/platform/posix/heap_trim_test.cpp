// Windows takes back a mapping as a whole only, so that there the end of the private heap's first
// mapping stays.
#include "zorutils/zorsys/heap.h"

#include <gtest/gtest.h>

#include <stdlib.h>

namespace {

constexpr size_t mebibyte = 1024 * 1024;

size_t from_system()
{
    const dlheap::mallinfo info = dlmallinfo();
    return info.arena + info.hblkhd;
}

// What lies free at the end goes back only if nothing in use stands in its mapping, so this needs a
// heap that nobody has used: a process of its own.
TEST(HeapTrimDeathTest, GivesMemoryBackBehindTwoFreeMebibytes)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto give_back = [] {
        void* block = dlmalloc(63 * mebibyte);
        const size_t with = from_system();
        dlfree(block);
        const bool given_back = from_system() == 4 * mebibyte;
        const bool kept_in_mind = dlmallinfo().usmblks == with;
        exit(with == 64 * mebibyte && given_back && kept_in_mind ? 0 : 1);
    };
    EXPECT_EXIT(give_back(), testing::ExitedWithCode(0), "");
}

} // namespace
