// Times as text, and a date and time read from an attribute.
#include "zorutils/formats/date_time_text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

#include "tests/formats/exact_text.h"
#include "tests/support/text.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

TEST(TimeToString, HoursWithBlanksAndSecondsWithThreeDecimals)
{
    const struct
    {
        double hours;
        const char* text;
    } cases[] = {
        {1.5, " 1:30:0.000"},
        {0.0, " 0: 0:0.000"},
        {12.0, "12: 0:0.000"},
        {123.25, "123:15:0.000"},
        {1.0 + 1.0 / 3600.0, " 1: 0:1.000"},
        {0.5125, " 0:30:45.000"},
        {10.0 + 5.0 / 60.0, "10: 5:0.000"},
        {1.0 + 7.125 / 3600.0, " 1: 0:7.125"},
        {-1.5, "-1:-30:0.000"},
        {-1.5125, "-1:-30:-45.000"},
        // A value just below a minute carries nothing.
        {1.0 + 59.9999 / 3600.0, " 1: 0:60.000"},
        {2.0 - 1e-9, " 1:59:60.000"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(shown(TimeToString(c.hours)), c.text) << c.hours;
}

TEST(TimeToString, HoursBeyondAnIntegerDoNoHarm)
{
    for (double hours : {3e9, -3e9, 1e300, std::numeric_limits<double>::infinity(),
                         std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(shown(TimeToString(hours)).substr(0, 12), "-2147483648:");
}

TEST(TimeSpanToString, WholeHoursMayHaveAnyNumberOfDigits)
{
    const struct
    {
        INT64 seconds;
        const char* text;
    } cases[] = {
        {0, "00:00:00"},       {1, "00:00:01"},
        {3599, "00:59:59"},    {3600, "01:00:00"},
        {86399, "23:59:59"},   {86400, "24:00:00"},
        {360000, "100:00:00"}, {36000000 + 61, "10000:01:01"},
        {-1, "00:00:-1"},      {-3661, "-1:-1:-1"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(shown(TimeSpanToString(base::CTimeSpan(c.seconds))), c.text);
}

TEST(TimeToXSString, IsTheTimesOwnForm)
{
    for (INT64 time : {INT64(0), INT64(1380608975), INT64(1704067199), INT64(1704067200)})
        for (bool utc : {false, true})
            EXPECT_EQ(shown(TimeToXSString(base::CTime(time), utc)),
                      shown(base::CTime::TimeToXSString(base::CTime(time), utc)));
    EXPECT_EQ(shown(TimeToXSString(base::CTime(INT64(1380608975)), true)), "2013-10-01T06:29:35Z");
}

TEST(DateTimeAttr, TheFormIsNamed)
{
    EXPECT_EQ(shown(GetDateTimeAttrFormat()), "yyyy-MM-dd HH:mm:ss");
}

TEST(DateTimeAttr, FieldsInFrontOfTheFirstMissingOneAreSet)
{
    constexpr WORD old = 7777;
    const struct
    {
        const char* text;
        bool result;
        WORD year, month, day, hour, minute, second;
    } cases[] = {
        {"2013-10-01 08:29:35", true, 2013, 10, 1, 8, 29, 35},
        {"2013-10-01 08:29:35.25 and more", true, 2013, 10, 1, 8, 29, 35},
        {"  2013-10-01   08:29:35", true, 2013, 10, 1, 8, 29, 35},
        {"2013-10-01", false, 2013, 10, 1, old, old, old},
        {"2013-10-01 08:29", false, 2013, 10, 1, 8, 29, old},
        {"2013-10-01T08:29:35", false, 2013, 10, 1, old, old, old},
        {"2013/10/01", false, 2013, old, old, old, old, old},
        {"x", false, old, old, old, old, old, old},
        {" ", false, old, old, old, old, old, old},
        // Nothing is checked.
        {"0-13-32 25:60:61", true, 0, 13, 32, 25, 60, 61},
        {"2013--1-01 08:29:35", true, 2013, 65535, 1, 8, 29, 35},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        SYSTEMTIME time = {old, old, old, old, old, old, old, old};
        EXPECT_EQ(ParseDtTimeAttrFormatFromStr(Wide(c.text), time), c.result);
        EXPECT_EQ(time.wYear, c.year);
        EXPECT_EQ(time.wMonth, c.month);
        EXPECT_EQ(time.wDay, c.day);
        EXPECT_EQ(time.wHour, c.hour);
        EXPECT_EQ(time.wMinute, c.minute);
        EXPECT_EQ(time.wSecond, c.second);
        EXPECT_EQ(time.wDayOfWeek, old);
        EXPECT_EQ(time.wMilliseconds, c.second / 1000);
    }
}

TEST(DateTimeAttr, MillisecondsAreTheSecondsDividedByAThousand)
{
    SYSTEMTIME time = {};
    EXPECT_TRUE(ParseDtTimeAttrFormatFromStr(ZOR_W("2013-10-01 08:29:32500"), time));
    EXPECT_EQ(time.wSecond, 32500);
    EXPECT_EQ(time.wMilliseconds, 32);
}

TEST(DateTimeAttr, AnEmptyTextTouchesNothing)
{
    SYSTEMTIME time, before;
    memset(&time, 0x55, sizeof time);
    before = time;
    EXPECT_FALSE(ParseDtTimeAttrFormatFromStr(ZOR_W(""), time));
    EXPECT_EQ(memcmp(&time, &before, sizeof time), 0);
}

TEST(DateTimeAttr, EveryStartOfATextIsRead)
{
    const std::basic_string<WCHAR> whole(ZOR_W("2013-10-01 08:29:35"));
    for (size_t length = 0; length <= whole.size(); ++length) {
        const ExactText text(whole.substr(0, length));
        SYSTEMTIME time = {};
        EXPECT_EQ(ParseDtTimeAttrFormatFromStr(text.get(), time), length >= whole.size() - 1);
    }
}
