#include "zorutils/platform/winapi.h"

#include <gtest/gtest.h>

#include <time.h>

namespace {

FILETIME file_time(UINT64 value)
{
    FILETIME time;
    time.dwLowDateTime = static_cast<DWORD>(value);
    time.dwHighDateTime = static_cast<DWORD>(value >> 32);
    return time;
}

UINT64 value_of(const FILETIME& time)
{
    return (static_cast<UINT64>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

struct BrokenTime
{
    UINT64 value;
    SYSTEMTIME fields;
};

const BrokenTime broken_times[] = {
    {0, {1601, 1, 1, 1, 0, 0, 0, 0}},
    {9999, {1601, 1, 1, 1, 0, 0, 0, 0}},
    {10000, {1601, 1, 1, 1, 0, 0, 0, 1}},
    {35999999999, {1601, 1, 1, 1, 0, 59, 59, 999}},
    {116444736000000000, {1970, 1, 4, 1, 0, 0, 0, 0}},
    {94354848000000000, {1900, 1, 1, 1, 0, 0, 0, 0}},
    {125962560000000000, {2000, 2, 2, 29, 0, 0, 0, 0}},
    {133537247999990000, {2024, 2, 4, 29, 23, 59, 59, 999}},
    {133537248000000000, {2024, 3, 5, 1, 0, 0, 0, 0}},
    {157520160000000000, {2100, 3, 1, 1, 0, 0, 0, 0}},
    {9223149887999990000, {30827, 12, 5, 31, 23, 59, 59, 999}},
    {0x7FFFFFFFFFFFFFFF, {30828, 9, 4, 14, 2, 48, 5, 477}},
};

TEST(FileTimeToSystemTime, BreaksATimeIntoFields)
{
    for (const BrokenTime& expected : broken_times) {
        const FILETIME time = file_time(expected.value);
        SYSTEMTIME fields = {};
        EXPECT_TRUE(FileTimeToSystemTime(&time, &fields));
        EXPECT_EQ(fields.wYear, expected.fields.wYear) << expected.value;
        EXPECT_EQ(fields.wMonth, expected.fields.wMonth) << expected.value;
        EXPECT_EQ(fields.wDayOfWeek, expected.fields.wDayOfWeek) << expected.value;
        EXPECT_EQ(fields.wDay, expected.fields.wDay) << expected.value;
        EXPECT_EQ(fields.wHour, expected.fields.wHour) << expected.value;
        EXPECT_EQ(fields.wMinute, expected.fields.wMinute) << expected.value;
        EXPECT_EQ(fields.wSecond, expected.fields.wSecond) << expected.value;
        EXPECT_EQ(fields.wMilliseconds, expected.fields.wMilliseconds) << expected.value;
    }
}

TEST(FileTimeToSystemTime, RefusesATimeWithItsTopBitSet)
{
    for (const UINT64 value : {UINT64(1) << 63, ~UINT64(0)}) {
        const FILETIME time = file_time(value);
        SYSTEMTIME fields = {};
        fields.wYear = 4711;
        SetLastError(NO_ERROR);
        EXPECT_FALSE(FileTimeToSystemTime(&time, &fields));
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
        EXPECT_EQ(fields.wYear, 4711);
    }
}

TEST(SystemTimeToFileTime, PutsFieldsTogetherAgain)
{
    for (const BrokenTime& expected : broken_times) {
        FILETIME time = {};
        EXPECT_TRUE(SystemTimeToFileTime(&expected.fields, &time));
        EXPECT_EQ(value_of(time), expected.value / 10000 * 10000);
    }
}

TEST(SystemTimeToFileTime, DoesntLookAtTheWeekday)
{
    const SYSTEMTIME fields = {2024, 1, 99, 1, 0, 0, 0, 0};
    FILETIME time = {};
    EXPECT_TRUE(SystemTimeToFileTime(&fields, &time));
    EXPECT_EQ(value_of(time), UINT64(133485408000000000));
}

TEST(SystemTimeToFileTime, RefusesFieldsOutOfRange)
{
    const SYSTEMTIME cases[] = {
        {1600, 12, 0, 31, 0, 0, 0, 0},  {2024, 0, 0, 1, 0, 0, 0, 0},  {2024, 13, 0, 1, 0, 0, 0, 0},
        {2024, 1, 0, 0, 0, 0, 0, 0},    {2024, 1, 0, 32, 0, 0, 0, 0}, {2024, 4, 0, 31, 0, 0, 0, 0},
        {2024, 1, 0, 1, 24, 0, 0, 0},   {2024, 1, 0, 1, 0, 60, 0, 0}, {2024, 1, 0, 1, 0, 0, 60, 0},
        {2024, 1, 0, 1, 0, 0, 0, 1000},
    };
    for (const SYSTEMTIME& fields : cases) {
        FILETIME time = file_time(4711);
        SetLastError(NO_ERROR);
        EXPECT_FALSE(SystemTimeToFileTime(&fields, &time)) << fields.wMonth << '-' << fields.wDay;
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
        EXPECT_EQ(value_of(time), 4711u);
    }
}

// Whatever the date: the offset is the one in force now, in summer and winter alike.
TEST(FileTimeToLocalFileTime, ShiftsEveryTimeByTheSameOffset)
{
    const UINT64 winter = 133485408000000000; // 2024-01-01
    const UINT64 summer = 133642656000000000; // 2024-07-01
    FILETIME local = {};
    FILETIME time = file_time(winter);
    ASSERT_TRUE(FileTimeToLocalFileTime(&time, &local));
    const UINT64 offset = value_of(local) - winter;
    for (const UINT64 value : {UINT64(0), summer, UINT64(0x7FFFFFFFFFFFFFFF), ~UINT64(0)}) {
        time = file_time(value);
        EXPECT_TRUE(FileTimeToLocalFileTime(&time, &local));
        EXPECT_EQ(value_of(local), value + offset);
        EXPECT_TRUE(LocalFileTimeToFileTime(&time, &local));
        EXPECT_EQ(value_of(local), value - offset);
    }
}

TEST(GetSystemTimeAsFileTime, TellsTheCurrentTime)
{
    const UINT64 before = (static_cast<UINT64>(time(nullptr)) + 11644473600) * 10000000;
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    EXPECT_GE(value_of(now) + 20000000, before); // the two clocks may have different steps
    EXPECT_LE(value_of(now), before + 20000000);
}

TEST(GetTickCount, NeverGoesBack)
{
    const ULONGLONG long_before = GetTickCount64();
    const DWORD before = GetTickCount();
    EXPECT_LT(GetTickCount() - before, 10000u);
    EXPECT_GE(GetTickCount64(), long_before);
    EXPECT_LT(static_cast<DWORD>(long_before) - before + 100, 10000u)
        << "the 32-bit count is its low half";
}

} // namespace

TEST(FileTimesCompared, ByTheirWholeValue)
{
    const FILETIME times[] = {{0, 0}, {1, 0}, {0xFFFFFFFF, 0}, {0, 1}, {5, 0x80000000}};
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 5; ++j)
            EXPECT_EQ(CompareFileTime(&times[i], &times[j]), i < j ? -1 : i > j ? 1 : 0);
}

TEST(SystemTimeNow, IsThatOfTheFileTime)
{
    SYSTEMTIME fields;
    FILETIME before, now, after;
    GetSystemTimeAsFileTime(&before);
    GetSystemTime(&fields);
    GetSystemTimeAsFileTime(&after);
    ASSERT_TRUE(SystemTimeToFileTime(&fields, &now));
    // The fields end at milliseconds.
    const auto ticks = [](const FILETIME& time) {
        return static_cast<unsigned long long>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    };
    EXPECT_GE(ticks(now) + 20000, ticks(before));
    EXPECT_LE(ticks(now), ticks(after) + 20000);
}
