// The language's own limits that every other header relies on.
#include "zorutils/core/zor_api.h"

#include <gtest/gtest.h>

TEST(Target, WideCharacterIsOneUtf16Unit)
{
    const WCHAR text[] = ZOR_W("a\u00b0");
    EXPECT_EQ(sizeof text, 6u);
    EXPECT_EQ(static_cast<unsigned>(text[1]), 0xB0u);
}
