#include "zorutils/zorsys/zor_time.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

using base::CTimeSpan;

static_assert(std::is_trivially_copyable_v<CTimeSpan>);
static_assert(sizeof(CTimeSpan) == 8);

TEST(CTimeSpan, IsZeroByDefault)
{
    EXPECT_EQ(CTimeSpan().GetTimeSpan(), 0);
}

TEST(CTimeSpan, KeepsItsSeconds)
{
    constexpr INT64 greatest = std::numeric_limits<INT64>::max();
    EXPECT_EQ(CTimeSpan(greatest).GetTimeSpan(), greatest);
    EXPECT_EQ(CTimeSpan(-5).GetTotalSeconds(), -5);
}

TEST(CTimeSpan, AddsUpItsPartsIn64Bits)
{
    EXPECT_EQ(CTimeSpan(1, 2, 3, 4).GetTimeSpan(), 93784);
    EXPECT_EQ(CTimeSpan(-1, 0, 0, 1).GetTimeSpan(), -86399);
    EXPECT_EQ(CTimeSpan(0, 100, 100, 100).GetTimeSpan(), 366100);
    EXPECT_EQ(CTimeSpan(2000000000, 0, 0, 0).GetTimeSpan(), INT64(172800000000000));
}

struct PartsCase
{
    INT64 seconds;
    INT64 total_minutes;
    INT64 total_hours;
    INT64 days;
    LONG hours;
    LONG minutes;
    LONG rest;
};

class CTimeSpanParts : public testing::TestWithParam<PartsCase>
{
};

TEST_P(CTimeSpanParts, AreTruncatedTowardZero)
{
    const PartsCase& expected = GetParam();
    const CTimeSpan span(expected.seconds);
    EXPECT_EQ(span.GetTotalSeconds(), expected.seconds);
    EXPECT_EQ(span.GetTotalMinutes(), expected.total_minutes);
    EXPECT_EQ(span.GetTotalHours(), expected.total_hours);
    EXPECT_EQ(span.GetDays(), expected.days);
    EXPECT_EQ(span.GetHours(), expected.hours);
    EXPECT_EQ(span.GetMinutes(), expected.minutes);
    EXPECT_EQ(span.GetSeconds(), expected.rest);
}

const PartsCase parts_cases[] = {
    {0, 0, 0, 0, 0, 0, 0},
    {90000, 1500, 25, 1, 1, 0, 0},
    {-90000, -1500, -25, -1, -1, 0, 0},
    {86399, 1439, 23, 0, 23, 59, 59},
    {-86399, -1439, -23, 0, -23, -59, -59},
    {93784, 1563, 26, 1, 2, 3, 4},
    {-61, -1, 0, 0, 0, -1, -1},
    {INT64(1) << 40, 18325193796, 305419896, 12725829, 0, 36, 16},
};
INSTANTIATE_TEST_SUITE_P(Cases, CTimeSpanParts, testing::ValuesIn(parts_cases));

TEST(CTimeSpan, AddsAndSubtracts)
{
    CTimeSpan span = CTimeSpan(100) + CTimeSpan(20);
    EXPECT_EQ(span.GetTimeSpan(), 120);
    EXPECT_EQ((span - CTimeSpan(150)).GetTimeSpan(), -30);
    span += CTimeSpan(5);
    EXPECT_EQ(span.GetTimeSpan(), 125);
    EXPECT_EQ((span -= CTimeSpan(25)).GetTimeSpan(), 100);
}

TEST(CTimeSpan, ComparesAsSigned)
{
    const CTimeSpan less(-1);
    const CTimeSpan greater(1);
    EXPECT_TRUE(less == CTimeSpan(-1));
    EXPECT_FALSE(less == greater);
    EXPECT_TRUE(less != greater);
    EXPECT_FALSE(less != CTimeSpan(-1));
    EXPECT_TRUE(less < greater);
    EXPECT_FALSE(less < less);
    EXPECT_TRUE(less <= less);
    EXPECT_FALSE(greater <= less);
    EXPECT_TRUE(greater > less);
    EXPECT_FALSE(less > less);
    EXPECT_TRUE(greater >= greater);
    EXPECT_FALSE(less >= greater);
}

} // namespace
