#include "zorutils/platform/crt.h"

#include <gtest/gtest.h>

#include <errno.h>
#include <limits.h>

namespace {

constexpr INT64 greatest_time = 32535244799;

tm filled()
{
    tm fields = {};
    fields.tm_sec = fields.tm_min = fields.tm_hour = 1111;
    return fields;
}

void expect_all_minus_one(const tm& f)
{
    for (const int field : {f.tm_sec, f.tm_min, f.tm_hour, f.tm_mday, f.tm_mon, f.tm_year,
                            f.tm_wday, f.tm_yday, f.tm_isdst})
        EXPECT_EQ(field, -1);
}

TEST(Time64, ReturnsAndStoresTheCurrentTime)
{
    INT64 stored = 0;
    const INT64 now = _time64(&stored);
    EXPECT_EQ(stored, now);
    EXPECT_LE(now - INT64(time(nullptr)), 0);
    EXPECT_GE(now - INT64(time(nullptr)), -5);
    EXPECT_GE(_time64(nullptr), now);
}

struct GmCase
{
    INT64 time;
    int year, month, day, hour, minute, second, weekday, yearday;
};

TEST(Gmtime64, BreaksATimeIntoFields)
{
    const GmCase cases[] = {
        {0, 70, 0, 1, 0, 0, 0, 4, 0},
        {86399, 70, 0, 1, 23, 59, 59, 4, 0},
        {951782400, 100, 1, 29, 0, 0, 0, 2, 59},
        {1709164800, 124, 1, 29, 0, 0, 0, 4, 59},
        {1735689599, 124, 11, 31, 23, 59, 59, 2, 365},
        {4107542400, 200, 2, 1, 0, 0, 0, 1, 59},
        {32535215999, 1100, 11, 31, 23, 59, 59, 3, 364},
        {greatest_time, 1101, 0, 1, 7, 59, 59, 4, 0},
    };
    for (const GmCase& expected : cases) {
        tm fields = filled();
        EXPECT_EQ(_gmtime64_s(&fields, &expected.time), 0);
        EXPECT_EQ(fields.tm_year, expected.year) << expected.time;
        EXPECT_EQ(fields.tm_mon, expected.month) << expected.time;
        EXPECT_EQ(fields.tm_mday, expected.day) << expected.time;
        EXPECT_EQ(fields.tm_hour, expected.hour) << expected.time;
        EXPECT_EQ(fields.tm_min, expected.minute) << expected.time;
        EXPECT_EQ(fields.tm_sec, expected.second) << expected.time;
        EXPECT_EQ(fields.tm_wday, expected.weekday) << expected.time;
        EXPECT_EQ(fields.tm_yday, expected.yearday) << expected.time;
        EXPECT_EQ(fields.tm_isdst, 0) << expected.time;
    }
}

TEST(Gmtime64, RefusesATimeOutOfRangeWithMinusOneInEachField)
{
    for (const INT64 time :
         {INT64(-1), INT64(-43200), greatest_time + 1, INT64(LLONG_MAX), INT64(LLONG_MIN)}) {
        tm fields = filled();
        errno = 0;
        EXPECT_EQ(_gmtime64_s(&fields, &time), EINVAL) << time;
        EXPECT_EQ(errno, EINVAL);
        expect_all_minus_one(fields);
        fields = filled();
        errno = 0;
        EXPECT_EQ(_localtime64_s(&fields, &time), EINVAL) << time;
        EXPECT_EQ(errno, EINVAL);
        expect_all_minus_one(fields);
    }
}

TEST(Localtime64, CoversTheSameRange)
{
    for (const INT64 time : {INT64(0), greatest_time}) {
        tm fields = filled();
        EXPECT_EQ(_localtime64_s(&fields, &time), 0) << time;
        EXPECT_NE(fields.tm_sec, 1111);
    }
}

tm fields_of(int year, int month, int day, int hour, int minute, int second, int dst)
{
    tm fields = {};
    fields.tm_sec = second;
    fields.tm_min = minute;
    fields.tm_hour = hour;
    fields.tm_mday = day;
    fields.tm_mon = month - 1;
    fields.tm_year = year - 1900;
    fields.tm_isdst = dst;
    return fields;
}

TEST(Mktime64, UndoesLocaltime)
{
    for (const INT64 time :
         {INT64(200000), INT64(1709164800), INT64(1719831600), INT64(4107542400)}) {
        tm fields = filled();
        ASSERT_EQ(_localtime64_s(&fields, &time), 0);
        const tm before = fields;
        EXPECT_EQ(_mktime64(&fields), time);
        EXPECT_EQ(fields.tm_hour, before.tm_hour);
        EXPECT_EQ(fields.tm_isdst, before.tm_isdst);
    }
}

struct NormalCase
{
    tm given;
    int year, month, day, hour, minute, second, weekday, yearday;
};

TEST(Mktime64, BringsFieldsIntoTheirRanges)
{
    const NormalCase cases[] = {
        {fields_of(2024, 2, 31, 0, 0, 0, -1), 124, 2, 2, 0, 0, 0, 6, 61},
        {fields_of(1980, 0, 0, 0, 0, 0, -1), 79, 10, 30, 0, 0, 0, 5, 333},
        {fields_of(2024, 14, 35, 25, 61, 61, -1), 125, 2, 8, 2, 2, 1, 6, 66},
        {fields_of(2024, 1, 1, -1, 0, 0, -1), 123, 11, 31, 23, 0, 0, 0, 364},
        {fields_of(2024, 0, 1, 0, 0, 0, -1), 123, 11, 1, 0, 0, 0, 5, 334},
        {fields_of(2024, -11, 1, 0, 0, 0, -1), 123, 0, 1, 0, 0, 0, 0, 0},
    };
    for (const NormalCase& expected : cases) {
        tm fields = expected.given;
        EXPECT_NE(_mktime64(&fields), -1);
        EXPECT_EQ(fields.tm_year, expected.year);
        EXPECT_EQ(fields.tm_mon, expected.month);
        EXPECT_EQ(fields.tm_mday, expected.day);
        EXPECT_EQ(fields.tm_hour, expected.hour);
        EXPECT_EQ(fields.tm_min, expected.minute);
        EXPECT_EQ(fields.tm_sec, expected.second);
        EXPECT_EQ(fields.tm_wday, expected.weekday);
        EXPECT_EQ(fields.tm_yday, expected.yearday);
    }
}

TEST(Mktime64, RefusesYearsOutside1970To3000)
{
    const tm cases[] = {
        fields_of(1900, 1, 1, 0, 0, 0, -1),  fields_of(1969, 12, 30, 0, 0, 0, -1),
        fields_of(1969, 12, 1, 0, 0, 0, -1), fields_of(3001, 1, 1, 0, 0, 0, -1),
        fields_of(2999, 25, 1, 0, 0, 0, -1), fields_of(10000, 1, 1, 0, 0, 0, -1),
        fields_of(1970, 1, -5, 0, 0, 0, -1),
    };
    for (const tm& given : cases) {
        tm fields = given;
        errno = 0;
        EXPECT_EQ(_mktime64(&fields), -1);
        EXPECT_EQ(errno, EINVAL);
    }
}

TEST(Mktime64, LeavesTheFieldsOfARefusedYear)
{
    tm fields = fields_of(3001, 1, 2, 3, 4, 5, -1);
    EXPECT_EQ(_mktime64(&fields), -1);
    EXPECT_EQ(fields.tm_year, 1101);
    EXPECT_EQ(fields.tm_mday, 2);
    EXPECT_EQ(fields.tm_hour, 3);
    EXPECT_EQ(fields.tm_wday, 0);
    EXPECT_EQ(fields.tm_isdst, -1);
}

TEST(Mktime64, AcceptsTheLastSecondOf3000)
{
    tm fields = fields_of(3000, 12, 31, 23, 59, 59, -1);
    EXPECT_NE(_mktime64(&fields), -1);
    EXPECT_EQ(fields.tm_year, 1100);
    EXPECT_EQ(fields.tm_sec, 59);
}

} // namespace
