#include "zorutils/zorsys/memory.h"

#include <gtest/gtest.h>

namespace {

TEST(MemoryFuncs, TellFreeMemory)
{
    EXPECT_GT(MemoryFuncs::GetFreeSliderMemory(), 0u);
    EXPECT_GT(MemoryFuncs::GetFreeVirtMemory(), 0u);
}

// The two are asked one after the other, so that memory may have become free in between: whichever
// side of a pair is asked last, one round without a change of that size shows the rule.
TEST(MemoryFuncs, FreeVirtMemoryNeverExceedsFreeSliderMemory)
{
    bool held = false;
    for (int round = 0; round < 20 && !held; ++round) {
        const auto before = MemoryFuncs::GetFreeSliderMemory();
        const auto virt = MemoryFuncs::GetFreeVirtMemory();
        const auto after = MemoryFuncs::GetFreeSliderMemory();
        held = virt <= before || virt <= after;
    }
    EXPECT_TRUE(held);
}

} // namespace
