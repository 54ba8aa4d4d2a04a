#include "zorutils/zorsys/zor_time.h"

#include "tests/support/text.h"
#include "tests/support/zone.h"

#include <gtest/gtest.h>

namespace {

using base::CTime;
using zor_test::shown;

// A way into a private member: naming one in an explicit instantiation is allowed.
int call_get_bias(int& id, int& bias, int& standard, int& daylight);

template <int (*Function)(int&, int&, int&, int&)>
struct BiasAccess
{
    friend int call_get_bias(int& id, int& bias, int& standard, int& daylight)
    {
        return Function(id, bias, standard, daylight);
    }
};
template struct BiasAccess<&CTime::GetBias>;

struct Bias
{
    int result, id, bias, standard, daylight;
};

Bias bias()
{
    Bias b = {};
    b.result = call_get_bias(b.id, b.bias, b.standard, b.daylight);
    return b;
}

std::string xs(INT64 time)
{
    return shown(CTime::TimeToXSString(CTime(time), false));
}

FILETIME file_time(INT64 time)
{
    FILETIME file;
    base::to_FILETIME(time, file);
    return file;
}

constexpr INT64 summer = 1719828000; // 2024-07-01 10:00 UTC
constexpr INT64 winter = 1704106800; // 2024-01-01 11:00 UTC

TEST(ZoneTime, UtcIsWrittenWithZ)
{
    ZOR_NEEDS_ZONE("UTC");
    EXPECT_EQ(xs(summer), "2024-07-01T10:00:00Z");
    EXPECT_EQ(shown(CTime::TimeToXSString(CTime(summer), true)), "2024-07-01T10:00:00Z");
    EXPECT_EQ(CTime(file_time(summer), -1).GetTime(), summer);
    const Bias b = bias();
    EXPECT_EQ(b.result, 0);
    EXPECT_EQ(b.id, 0);
}

class ZoneTwoHoursEast : public testing::Test
{
    void SetUp() override { ZOR_NEEDS_ZONE("Etc/GMT-2"); }
};

TEST_F(ZoneTwoHoursEast, IsWrittenWithItsOffset)
{
    EXPECT_EQ(xs(summer), "2024-07-01T12:00:00+02:00");
    EXPECT_EQ(xs(winter), "2024-01-01T13:00:00+02:00");
    EXPECT_EQ(xs(1709247600), "2024-03-01T01:00:00+02:00"); // UTC is still on 29 February
    EXPECT_EQ(shown(CTime::TimeToXSString(CTime(summer), true)), "2024-07-01T10:00:00Z");
}

// Required: only behind a leap year is the offset right across the turn of the year.
TEST_F(ZoneTwoHoursEast, IsADayTooGreatAfterACommonYear)
{
    EXPECT_EQ(xs(1672525800), "2023-01-01T00:30:00+26:00");
    EXPECT_EQ(xs(1672531199), "2023-01-01T01:59:59+26:00");
    EXPECT_EQ(xs(1672531200), "2023-01-01T02:00:00+02:00");
    EXPECT_EQ(xs(1704061800), "2024-01-01T00:30:00+26:00");
    EXPECT_EQ(xs(1735684200), "2025-01-01T00:30:00+02:00");
    EXPECT_EQ(xs(1735689599), "2025-01-01T01:59:59+02:00");
}

TEST_F(ZoneTwoHoursEast, HasItsBias)
{
    const Bias b = bias();
    EXPECT_EQ(b.result, -120);
    EXPECT_EQ(b.id, 0);
    EXPECT_EQ(b.bias, -120);
    EXPECT_EQ(b.standard, 0);
    EXPECT_EQ(b.daylight, -60);
}

TEST_F(ZoneTwoHoursEast, FileTimesComeBackInAZoneWithoutSummerTime)
{
    for (const int dst : {-1, 0, 1}) {
        EXPECT_EQ(CTime(file_time(summer), dst).GetTime(), summer);
        EXPECT_EQ(CTime(file_time(winter), dst).GetTime(), winter);
    }
}

TEST_F(ZoneTwoHoursEast, FormatIsLocalAndFormatGmtIsnt)
{
    EXPECT_EQ(shown(CTime(summer).Format(ZOR_W("%H:%M"))), "12:00");
    EXPECT_EQ(shown(CTime(summer).FormatGmt(ZOR_W("%H:%M"))), "10:00");
    EXPECT_EQ(CTime(summer).GetHour(), 12);
}

TEST(ZoneTime, KolkataHasMinutesInItsOffset)
{
    ZOR_NEEDS_ZONE("Asia/Kolkata");
    EXPECT_EQ(xs(summer), "2024-07-01T15:30:00+05:30");
    EXPECT_EQ(xs(1719858600), "2024-07-02T00:00:00+05:30");
    EXPECT_EQ(bias().result, -330);
    EXPECT_EQ(CTime(file_time(summer), -1).GetTime(), summer);
}

TEST(ZoneTime, NewYorkIsWrittenWithMinus)
{
    ZOR_NEEDS_ZONE("America/New_York");
    EXPECT_EQ(xs(summer), "2024-07-01T06:00:00-04:00");
    EXPECT_EQ(xs(winter), "2024-01-01T06:00:00-05:00");
    EXPECT_EQ(xs(1735693200), "2024-12-31T20:00:00-05:00"); // UTC is on 1 January 2025
    // Required: a day too much across the end of a common year.
    EXPECT_EQ(xs(1704070800), "2023-12-31T20:00:00-29:00");
}

class ZonePrague : public testing::Test
{
    void SetUp() override { ZOR_NEEDS_ZONE("Europe/Prague"); }
};

TEST_F(ZonePrague, OffsetFollowsSummerTime)
{
    EXPECT_EQ(xs(summer), "2024-07-01T12:00:00+02:00");
    EXPECT_EQ(xs(winter), "2024-01-01T12:00:00+01:00");
    EXPECT_EQ(xs(1711846799), "2024-03-31T01:59:59+01:00");
    EXPECT_EQ(xs(1711846800), "2024-03-31T03:00:00+02:00");
    EXPECT_EQ(xs(1729990799), "2024-10-27T02:59:59+02:00");
    EXPECT_EQ(xs(1729990800), "2024-10-27T02:00:00+01:00");
}

TEST_F(ZonePrague, FieldsAreTakenByTheFlag)
{
    EXPECT_EQ(CTime(2024, 10, 27, 2, 30, 0, -1).GetTime(), 1729992600);
    EXPECT_EQ(CTime(2024, 10, 27, 2, 30, 0, 0).GetTime(), 1729992600);
    EXPECT_EQ(CTime(2024, 10, 27, 2, 30, 0, 1).GetTime(), 1729989000);
    EXPECT_EQ(CTime(2024, 3, 31, 2, 30, 0, -1).GetTime(), 1711845000);
}

TEST_F(ZonePrague, EnforcesALocalTimeBefore1970InUtc)
{
    EXPECT_THROW(CTime(1970, 1, 1, 0, 59, 59, -1), std::exception);
    EXPECT_EQ(CTime(1970, 1, 1, 1, 0, 0, -1).GetTime(), 0);
}

TEST_F(ZonePrague, BiasIsWhatIsInForceNow)
{
    const Bias b = bias();
    tm now = {};
    ASSERT_NE(CTime::GetTickCount().GetLocalTm(&now), nullptr);
    EXPECT_EQ(b.id, now.tm_isdst ? 2 : 1);
    EXPECT_EQ(b.bias, -60);
    EXPECT_EQ(b.result, now.tm_isdst ? -120 : -60);
}

// Required: the first step uses the offset in force now, the second the one of the date, so that in
// one half of the year the times of the other half come out an hour off.
TEST_F(ZonePrague, FileTimesGoThroughBothOffsets)
{
    const INT64 now_offset = -60 * bias().result;
    EXPECT_EQ(CTime(file_time(winter), -1).GetTime(), winter + now_offset - 3600);
    EXPECT_EQ(CTime(file_time(summer), -1).GetTime(), summer + now_offset - 7200);
    EXPECT_EQ(CTime(file_time(summer), 1).GetTime(), summer + now_offset - 7200);
    EXPECT_EQ(CTime(file_time(summer), 0).GetTime(), summer + now_offset - 3600);
    EXPECT_EQ(CTime(file_time(winter), 1).GetTime(), winter + now_offset - 7200);
}

} // namespace
