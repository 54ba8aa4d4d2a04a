// Local time in the zones that the test programs are run in.
#include "tests/support/zone.h"
#include "zorutils/platform/crt.h"
#include "zorutils/platform/winapi.h"

#include <gtest/gtest.h>

namespace {

// The clock goes from 2:00 to 3:00 on 31 March 2024, at 1:00 UTC, and back on 27 October at 1:00
// UTC.
constexpr INT64 spring_change = 1711846800;
constexpr INT64 autumn_change = 1729990800;

std::string local(INT64 time)
{
    tm f = {};
    EXPECT_EQ(_localtime64_s(&f, &time), 0);
    char text[80];
    snprintf(text, sizeof(text), "%d-%02d-%02d %02d:%02d:%02d dst %d", f.tm_year + 1900,
             f.tm_mon + 1, f.tm_mday, f.tm_hour, f.tm_min, f.tm_sec, f.tm_isdst);
    return text;
}

INT64 made(int month, int day, int hour, int minute, int dst, int year = 2024)
{
    tm fields = {};
    fields.tm_min = minute;
    fields.tm_hour = hour;
    fields.tm_mday = day;
    fields.tm_mon = month - 1;
    fields.tm_year = year - 1900;
    fields.tm_isdst = dst;
    return _mktime64(&fields);
}

// Bias and what GetTimeZoneInformation returns for zones without summer time.
void expect_zone_without_summer_time(LONG bias)
{
    TIME_ZONE_INFORMATION zone = {};
    EXPECT_EQ(GetTimeZoneInformation(&zone), DWORD(TIME_ZONE_ID_UNKNOWN));
    EXPECT_EQ(zone.Bias, bias);
    EXPECT_EQ(zone.StandardBias, 0);
    EXPECT_EQ(zone.DaylightBias, -60);
}

class ZonePlatformPrague : public testing::Test
{
    void SetUp() override { ZOR_NEEDS_ZONE("Europe/Prague"); }
};

TEST_F(ZonePlatformPrague, LocaltimeFollowsTheClockChanges)
{
    EXPECT_EQ(local(0), "1970-01-01 01:00:00 dst 0");
    EXPECT_EQ(local(spring_change - 1), "2024-03-31 01:59:59 dst 0");
    EXPECT_EQ(local(spring_change), "2024-03-31 03:00:00 dst 1");
    EXPECT_EQ(local(autumn_change - 1), "2024-10-27 02:59:59 dst 1");
    EXPECT_EQ(local(autumn_change), "2024-10-27 02:00:00 dst 0");
    EXPECT_EQ(local(autumn_change + 3600), "2024-10-27 03:00:00 dst 0");
    EXPECT_EQ(local(32535215999), "3001-01-01 00:59:59 dst 0");
}

struct MadeCase
{
    int month, day, hour, minute, dst;
    INT64 expected;
};

TEST_F(ZonePlatformPrague, MktimeChoosesByTheSummerTimeFlag)
{
    const MadeCase cases[] = {
        {1, 1, 12, 0, -1, 1704106800},
        {1, 1, 12, 0, 0, 1704106800},
        {1, 1, 12, 0, 1, 1704103200}, // summer time in winter: an hour earlier
        {7, 1, 12, 0, -1, 1719828000},
        {7, 1, 12, 0, 1, 1719828000},
        {7, 1, 12, 0, 0, 1719831600}, // standard time in summer: an hour later
        {3, 31, 1, 59, -1, spring_change - 60},
        {3, 31, 2, 0, -1, spring_change - 3600}, // the hour that the clock leaps over
        {3, 31, 2, 30, -1, spring_change - 1800},
        {3, 31, 2, 30, 1, spring_change - 1800},
        {3, 31, 2, 30, 0, spring_change + 1800},
        {3, 31, 3, 0, -1, spring_change},
        {10, 27, 1, 59, -1, autumn_change - 3660},
        {10, 27, 2, 0, -1, autumn_change}, // the hour that comes twice
        {10, 27, 2, 30, -1, autumn_change + 1800},
        {10, 27, 2, 30, 0, autumn_change + 1800},
        {10, 27, 2, 30, 1, autumn_change - 1800},
        {10, 27, 3, 0, -1, autumn_change + 3600},
    };
    for (const MadeCase& c : cases) {
        EXPECT_EQ(made(c.month, c.day, c.hour, c.minute, c.dst), c.expected)
            << c.month << '-' << c.day << ' ' << c.hour << ':' << c.minute << " dst " << c.dst;
    }
}

TEST_F(ZonePlatformPrague, MktimeSetsTheFieldsAnew)
{
    tm fields = {};
    fields.tm_min = 30;
    fields.tm_hour = 2;
    fields.tm_mday = 31;
    fields.tm_mon = 2;
    fields.tm_year = 124;
    fields.tm_isdst = 0;
    EXPECT_EQ(_mktime64(&fields), spring_change + 1800);
    EXPECT_EQ(fields.tm_hour, 3);
    EXPECT_EQ(fields.tm_isdst, 1);
    EXPECT_EQ(fields.tm_wday, 0);
    EXPECT_EQ(fields.tm_yday, 90);
}

TEST_F(ZonePlatformPrague, MktimeRefusesATimeBefore1970InUtc)
{
    EXPECT_EQ(made(1, 1, 0, 59, -1, 1970), -1);
    EXPECT_EQ(made(1, 1, 1, 0, -1, 1970), 0);
}

TEST_F(ZonePlatformPrague, HasSummerTime)
{
    TIME_ZONE_INFORMATION zone = {};
    const DWORD id = GetTimeZoneInformation(&zone);
    const INT64 now = _time64(nullptr);
    tm fields = {};
    ASSERT_EQ(_localtime64_s(&fields, &now), 0);
    EXPECT_EQ(id, DWORD(fields.tm_isdst ? TIME_ZONE_ID_DAYLIGHT : TIME_ZONE_ID_STANDARD));
    EXPECT_EQ(zone.Bias, -60);
    EXPECT_EQ(zone.StandardBias, 0);
    EXPECT_EQ(zone.DaylightBias, -60);
}

class ZonePlatformKolkata : public testing::Test
{
    void SetUp() override { ZOR_NEEDS_ZONE("Asia/Kolkata"); }
};

TEST_F(ZonePlatformKolkata, IsHalfAnHourOffTheHour)
{
    EXPECT_EQ(local(0), "1970-01-01 05:30:00 dst 0");
    EXPECT_EQ(local(spring_change), "2024-03-31 06:30:00 dst 0");
    expect_zone_without_summer_time(-330);
}

TEST_F(ZonePlatformKolkata, MktimeIgnoresTheFlagWithoutSummerTime)
{
    for (const int dst : {-1, 0, 1})
        EXPECT_EQ(made(3, 31, 2, 30, dst), 1711832400);
}

class ZonePlatformNewYork : public testing::Test
{
    void SetUp() override { ZOR_NEEDS_ZONE("America/New_York"); }
};

TEST_F(ZonePlatformNewYork, IsWestOfUtc)
{
    EXPECT_EQ(local(0), "1969-12-31 19:00:00 dst 0");
    EXPECT_EQ(local(1710053999), "2024-03-10 01:59:59 dst 0");
    EXPECT_EQ(local(1710054000), "2024-03-10 03:00:00 dst 1");
    EXPECT_EQ(local(1730613599), "2024-11-03 01:59:59 dst 1");
    EXPECT_EQ(local(1730613600), "2024-11-03 01:00:00 dst 0");
    EXPECT_EQ(made(3, 10, 2, 30, -1), 1710052200);
    EXPECT_EQ(made(11, 3, 1, 30, -1), 1730615400);
    EXPECT_EQ(made(11, 3, 1, 30, 1), 1730611800);
    TIME_ZONE_INFORMATION zone = {};
    GetTimeZoneInformation(&zone);
    EXPECT_EQ(zone.Bias, 300);
    EXPECT_EQ(zone.DaylightBias, -60);
}

TEST(ZonePlatform, UtcIsLocalTimeInUtc)
{
    ZOR_NEEDS_ZONE("UTC");
    EXPECT_EQ(local(0), "1970-01-01 00:00:00 dst 0");
    EXPECT_EQ(made(1, 1, 0, 0, -1, 1970), 0);
    expect_zone_without_summer_time(0);
}

TEST(ZonePlatform, TwoHoursEastHasNoSummerTime)
{
    ZOR_NEEDS_ZONE("Etc/GMT-2");
    EXPECT_EQ(local(spring_change), "2024-03-31 03:00:00 dst 0");
    EXPECT_EQ(made(7, 1, 12, 0, 1), 1719828000);
    expect_zone_without_summer_time(-120);
}

} // namespace
