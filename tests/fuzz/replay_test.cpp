// Each property of the readers of outside text, over the corpus of its fuzzer.
#include <gtest/gtest.h>

#include "tests/fuzz/replay.h"

TEST(FuzzCorpus, KeepsEveryProperty)
{
    for (const auto& property : zor_fuzz::all_properties)
        zor_fuzz::replay(property);
}

TEST(FuzzCorpus, ABrokenPromiseIsTold)
{
    EXPECT_THROW(zor_fuzz::require(false, "told"), std::logic_error);
    EXPECT_NO_THROW(zor_fuzz::require(true, "kept"));
}
