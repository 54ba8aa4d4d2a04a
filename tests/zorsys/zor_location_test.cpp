#include "zorutils/zorsys/zor_location.h"

#include <gtest/gtest.h>

TEST(Location, IsUnknownAtFirst)
{
    const zor::Location where;
    EXPECT_STREQ(where.function_name(), "Unknown");
    EXPECT_STREQ(where.file_name(), "Unknown");
    EXPECT_EQ(where.line_number(), -1);
}

TEST(Location, HoldsTheTextsThemselves)
{
    const char *const function = "Read", *const file = "points.cpp";
    zor::Location where(function, file, 42), copy;
    EXPECT_EQ(where.function_name(), function);
    EXPECT_EQ(where.file_name(), file);
    EXPECT_EQ(where.line_number(), 42);
    copy = where;
    where = zor::Location();
    EXPECT_EQ(copy.function_name(), function);
    EXPECT_EQ(copy.file_name(), file);
    EXPECT_EQ(copy.line_number(), 42);
    EXPECT_EQ(where.line_number(), -1);
}

TEST(Location, TakesNoTextsToo)
{
    const zor::Location where(nullptr, nullptr, 0);
    EXPECT_EQ(where.function_name(), nullptr);
    EXPECT_EQ(where.file_name(), nullptr);
}
