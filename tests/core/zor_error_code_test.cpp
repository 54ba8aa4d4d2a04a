// The returned truth value.
#include "zorutils/core/zor_error_code.h"

#include <gtest/gtest.h>

using mandatory_error::ZorErrorCode;

namespace {

ZorErrorCode<bool> answer(bool value)
{
    return value;
}

} // namespace

TEST(ZorErrorCode, ReadsAsTheValueItWasMadeFrom)
{
    EXPECT_TRUE(answer(true));
    EXPECT_FALSE(answer(false));
    const bool plain = answer(true);
    EXPECT_TRUE(plain);
    EXPECT_EQ(sizeof(ZorErrorCode<bool>), sizeof(bool));
}
