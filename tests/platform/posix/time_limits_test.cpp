// Limits that the system's documentation states and that not every implementation of it keeps.
#include "zorutils/platform/crt.h"
#include "zorutils/platform/winapi.h"

#include <gtest/gtest.h>

#include <errno.h>
#include <limits.h>

namespace {

TEST(TimeLimits, The29thOfFebruaryIsOfLeapYearsOnly)
{
    for (const WORD year : {WORD(1900), WORD(2023), WORD(2100)}) {
        const SYSTEMTIME fields = {year, 2, 0, 29, 0, 0, 0, 0};
        FILETIME time = {};
        EXPECT_FALSE(SystemTimeToFileTime(&fields, &time)) << year;
    }
}

TEST(TimeLimits, MktimeRefusesResultsOutOfRange)
{
    for (const int day : {INT_MIN, -719163, 40, INT_MAX}) {
        tm fields = {};
        fields.tm_mday = day;
        fields.tm_mon = 11;
        fields.tm_year = 1100;
        errno = 0;
        EXPECT_EQ(_mktime64(&fields), -1) << day;
        EXPECT_EQ(errno, EINVAL);
        EXPECT_EQ(fields.tm_mday, day);
    }
}

TEST(TimeLimits, MktimeTakesFieldsOfAnySize)
{
    tm fields = {};
    fields.tm_year = 100;
    fields.tm_sec = fields.tm_min = fields.tm_hour = fields.tm_mday = INT_MAX;
    fields.tm_mon = 0;
    EXPECT_EQ(_mktime64(&fields), -1);
    fields.tm_year = INT_MAX;
    fields.tm_mon = INT_MAX;
    EXPECT_EQ(_mktime64(&fields), -1);
    fields.tm_year = INT_MIN;
    fields.tm_mon = INT_MIN;
    EXPECT_EQ(_mktime64(&fields), -1);
}

TEST(TimeLimits, WcsftimeReportsATextThatDoesntFit)
{
    tm fields = {};
    WCHAR text[5] = {'u', 0};
    errno = 0;
    EXPECT_EQ(wcsftime(text, 4, ZOR_W("%H%M"), &fields), 0u);
    EXPECT_EQ(errno, ERANGE);
    EXPECT_EQ(text[0], 0);
    EXPECT_EQ(wcsftime(text, 5, ZOR_W("%H%M"), &fields), 4u);
}

TEST(TimeLimits, WcsftimeKeepsUnitsOfEveryKind)
{
    tm fields = {};
    WCHAR text[20] = {};
    EXPECT_EQ(wcsftime(text, 20, ZOR_W("\u0159 %H \U0001F600"), &fields), 7u);
    EXPECT_EQ(std::u16string(text), u"\u0159 00 \U0001F600");
}

} // namespace
