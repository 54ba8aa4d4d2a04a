// What the value formats share, with decimal signs that the test's own locale need not have.
#include "zorutils/formats/number_text_internal.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "tests/formats/double_bits.h"
#include "tests/support/text.h"
#include "zorutils/formats/number_text.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

TEST(TextToDouble, AllThreeDecimalSignsCount)
{
    const struct
    {
        const char* text;
        const char* sign;
        double value;
    } cases[] = {
        {"12.5", ".", 12.5},   {"12,5", ".", 12.5},  {"12.5", ",", 12.5},  {"12,5", ",", 12.5},
        {"12<>5", "<>", 12.5}, {"12.5", "<>", 12.5}, {"12<5", "<>", 12.0}, {"<>5", "<>", 0.5},
        {"12<>", "<>", 12.0},  {"1.2.3", ".", 1.2},  {"1,2.3", ".", 1.2},  {"1.2<>3", "<>", 1.2},
        {"12..5", "..", 12.5}, {"", ".", 0.0},       {"abc", ".", 0.0},    {" -1,5x", ".", -1.5},
        {"1,,5", ",,", 1.5},   {"1,5,,", ",,", 1.5}, {"1e3", ".", 1000.0}, {".", ".", 0.0},
        {"0,1", ".", 0.1},
    };
    for (const auto& c : cases)
        EXPECT_SAME_DOUBLE(text_to_double(Wide(c.text), Wide(c.sign)), c.value)
            << c.text << " " << c.sign;
    EXPECT_SAME_DOUBLE(LocalTextToDouble(ZOR_W("12,5")), 12.5);
}

TEST(DoubleText, ASignOfSeveralCharactersCountsAsOnePoint)
{
    EXPECT_TRUE(is_double_text(ZOR_W("1<>5"), false, false, ZOR_W("<>")));
    EXPECT_TRUE(is_double_text(ZOR_W("<>"), false, false, ZOR_W("<>")));
    EXPECT_FALSE(is_double_text(ZOR_W("1<5"), false, false, ZOR_W("<>")));
    EXPECT_FALSE(is_double_text(ZOR_W("1<>5.2"), false, false, ZOR_W("<>")));
    EXPECT_FALSE(is_double_text(ZOR_W("1<>5<>2"), false, false, ZOR_W("<>")));
    EXPECT_FALSE(is_double_text(ZOR_W("1e<>5"), false, true, ZOR_W("<>")));
    EXPECT_FALSE(is_double_text(ZOR_W("<>-5"), true, true, ZOR_W("<>")));
    // What passes here is not read by StringToDouble, which knows "." and "," alone.
    double value = 0.0;
    EXPECT_TRUE(StringToDouble(ZOR_W("1<>5"), value));
    EXPECT_SAME_DOUBLE(value, 1.0);
}

TEST(TextToIntOrZero, EmptyIsZero)
{
    EXPECT_EQ(TextToIntOrZero(ZOR_W("")), 0);
    EXPECT_EQ(TextToIntOrZero(ZOR_W("012x")), 12);
    EXPECT_EQ(TextToIntOrZero(ZOR_W(" -7")), -7);
    EXPECT_EQ(TextToIntOrZero(ZOR_W("x")), 0);
    EXPECT_EQ(TextToIntOrZero(ZOR_W("99999999999")), INT_MAX);
}

TEST(TruncateToInt, GoesTowardZeroAndIsTheLowestOutside)
{
    const struct
    {
        double value;
        int result;
    } cases[] = {
        {0.0, 0},
        {0.9, 0},
        {-0.9, 0},
        {2147483647.9, INT_MAX},
        {2147483648.0, INT_MIN},
        {-2147483648.9, INT_MIN},
        {-2147483649.0, INT_MIN},
        {1e300, INT_MIN},
        {std::numeric_limits<double>::infinity(), INT_MIN},
        {std::numeric_limits<double>::quiet_NaN(), INT_MIN},
    };
    for (const auto& c : cases)
        EXPECT_EQ(truncate_to_int(c.value), c.result) << c.value;
}

TEST(ThousandSign, IsOneOfTheLocaleOrAPoint)
{
    const Wide sign = ThousandSignString();
    EXPECT_GE(sign.GetLength(), 1);
    EXPECT_LE(sign.GetLength(), 4);
}
