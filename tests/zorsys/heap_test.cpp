#include "zorutils/zorsys/heap.h"

#include <gtest/gtest.h>

#include <new>
#include <stdlib.h>
#include <string.h>

namespace {

TEST(ZorOperatorNew, GivesABlockThatFreeTakes)
{
    void* block = zor_operator_new(100);
    ASSERT_NE(block, nullptr);
    memset(block, 0x5A, 100);
    free(block);
}

TEST(ZorOperatorNew, GivesABlockForNoBytes)
{
    void* block = zor_operator_new(0);
    EXPECT_NE(block, nullptr);
    free(block);
}

} // namespace
