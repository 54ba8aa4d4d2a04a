#include "zorutils/zorsys/zor_time.h"

#include "tests/support/debug_capture.h"
#include "tests/support/text.h"
#include "zorutils/core/atl_exception.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

using base::CTime;
using base::CTimeSpan;
using zor_test::shown;

static_assert(std::is_trivially_copyable_v<CTime>);
static_assert(sizeof(CTime) == 8);

constexpr INT64 greatest_time = 32535244799; // the last that the run-time breaks into fields
constexpr INT64 unbreakable[] = {-1, greatest_time + 1, std::numeric_limits<INT64>::max(),
                                 std::numeric_limits<INT64>::min()};

template <class Operation>
HRESULT atl_code(Operation operation)
{
    try {
        operation();
    } catch (const CAtlException& error) {
        return error.m_hr;
    }
    return 0;
}

template <class Operation>
std::string enforce_text(Operation operation)
{
    try {
        operation();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "nothing raised";
}

constexpr HRESULT e_fail = static_cast<HRESULT>(0x80004005);

// --- Construction.

TEST(CTime, IsZeroByDefaultAndKeepsAnyValue)
{
    EXPECT_EQ(CTime().GetTime(), 0);
    EXPECT_EQ(CTime(-7).GetTime(), -7);
    CTime time;
    EXPECT_EQ(&(time = std::numeric_limits<INT64>::max()), &time);
    EXPECT_EQ(time.GetTime(), std::numeric_limits<INT64>::max());
}

TEST(CTime, IsMadeOfLocalFields)
{
    const CTime time(2024, 2, 29, 13, 14, 15, -1);
    EXPECT_EQ(time.GetYear(), 2024);
    EXPECT_EQ(time.GetMonth(), 2);
    EXPECT_EQ(time.GetDay(), 29);
    EXPECT_EQ(time.GetHour(), 13);
    EXPECT_EQ(time.GetMinute(), 14);
    EXPECT_EQ(time.GetSecond(), 15);
    EXPECT_EQ(time.GetDayOfWeek(), 5);
}

TEST(CTime, CountsWeekdaysFromSundayAsOne)
{
    for (int day = 0; day < 7; ++day)
        EXPECT_EQ(CTime(2024, 3, 3 + day, 12, 0, 0, -1).GetDayOfWeek(), day + 1);
}

TEST(CTime, RunsOnIntoTheNextMonth)
{
    const CTime time(2024, 2, 31, 0, 0, 0, -1);
    EXPECT_EQ(time.GetMonth(), 3);
    EXPECT_EQ(time.GetDay(), 2);
    EXPECT_EQ(CTime(2023, 2, 31, 12, 0, 0, -1).GetDay(), 3);
    EXPECT_EQ(CTime(2024, 4, 31, 12, 0, 0, -1).GetMonth(), 5);
}

struct Fields
{
    int year, month, day, hour, minute, second;
};

TEST(CTime, RaisesTheCodeForFieldsOutOfRangeWithoutAReport)
{
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int greatest = std::numeric_limits<int>::max();
    const Fields cases[] = {
        {1899, 12, 31, 0, 0, 0},   {-2024, 1, 1, 0, 0, 0},       {least, 1, 1, 0, 0, 0},
        {2024, 0, 1, 0, 0, 0},     {2024, 13, 1, 0, 0, 0},       {2024, -1, 1, 0, 0, 0},
        {2024, least, 1, 0, 0, 0}, {2024, greatest, 1, 0, 0, 0}, {2024, 1, 0, 0, 0, 0},
        {2024, 1, 32, 0, 0, 0},    {2024, 1, -1, 0, 0, 0},       {2024, 1, least, 0, 0, 0},
        {2024, 1, 1, 24, 0, 0},    {2024, 1, 1, -1, 0, 0},       {2024, 1, 1, 0, 60, 0},
        {2024, 1, 1, 0, -1, 0},    {2024, 1, 1, 0, 0, 60},       {2024, 1, 1, 0, 0, -1},
    };
    DebugCapture capture;
    for (const Fields& f : cases) {
        const auto make = [&f] { CTime(f.year, f.month, f.day, f.hour, f.minute, f.second, -1); };
        EXPECT_EQ(atl_code(make), e_fail) << f.year << '-' << f.month << '-' << f.day;
    }
    EXPECT_TRUE(capture.texts().empty());
}

TEST(CTime, AcceptsTheEndsOfEachRange)
{
    EXPECT_EQ(CTime(2024, 1, 1, 0, 0, 0, -1).GetMonth(), 1);
    EXPECT_EQ(CTime(2024, 12, 31, 23, 59, 59, -1).GetSecond(), 59);
    EXPECT_EQ(CTime(3000, 12, 31, 23, 59, 59, -1).GetYear(), 3000);
}

TEST(CTime, EnforcesAYearThatTheSystemRefuses)
{
    const char* const text = "Error Illegal input time\nzorsys\\zor_time\n@185";
    EXPECT_EQ(enforce_text([] { CTime(1900, 1, 1, 0, 0, 0, -1); }), text);
    EXPECT_EQ(enforce_text([] { CTime(1969, 12, 30, 0, 0, 0, -1); }), text);
    EXPECT_EQ(enforce_text([] { CTime(3001, 1, 1, 0, 0, 0, -1); }), text);
    EXPECT_EQ(enforce_text([] { CTime(std::numeric_limits<int>::max(), 1, 1, 0, 0, 0, -1); }),
              text);
}

TEST(CTime, ReportsWhatItEnforces)
{
    DebugCapture capture;
    EXPECT_THROW(CTime(1900, 1, 1, 0, 0, 0, -1), std::exception);
    ASSERT_FALSE(capture.texts().empty());
    EXPECT_NE(capture.texts()[0].find(u"DBGCHK Illegal input time zorsys\\zor_time @ 185"),
              std::u16string::npos);
}

// --- Packed DOS dates.

unsigned short dos_date(int year, int month, int day)
{
    return static_cast<unsigned short>(((year - 1980) << 9) | (month << 5) | day);
}

unsigned short dos_time(int hour, int minute, int second)
{
    return static_cast<unsigned short>((hour << 11) | (minute << 5) | (second / 2));
}

TEST(CTimeOfDosDate, HasTwoSecondSteps)
{
    const CTime time(dos_date(2024, 2, 29), dos_time(23, 59, 58), -1);
    EXPECT_EQ(time, CTime(2024, 2, 29, 23, 59, 58, -1));
    EXPECT_EQ(CTime(dos_date(1980, 1, 1), dos_time(0, 0, 1), -1), CTime(1980, 1, 1, 0, 0, 0, -1));
    EXPECT_EQ(CTime(dos_date(2107, 12, 31), dos_time(0, 0, 0), -1),
              CTime(2107, 12, 31, 0, 0, 0, -1));
}

// No field is checked: they run over into the greater ones.
TEST(CTimeOfDosDate, TakesFieldsOutOfTheirRanges)
{
    EXPECT_EQ(CTime(dos_date(2024, 0, 1), 0, -1), CTime(2023, 12, 1, 0, 0, 0, -1));
    EXPECT_EQ(CTime(dos_date(2024, 1, 0), 0, -1), CTime(2023, 12, 31, 0, 0, 0, -1));
    EXPECT_EQ(CTime(dos_date(2024, 15, 1), 0, -1), CTime(2025, 3, 1, 0, 0, 0, -1));
    EXPECT_EQ(CTime(dos_date(2024, 1, 1), dos_time(31, 63, 62), -1),
              CTime(2024, 1, 2, 8, 4, 2, -1));
    EXPECT_EQ(CTime(static_cast<unsigned short>(0), static_cast<unsigned short>(0), -1),
              CTime(1979, 11, 30, 0, 0, 0, -1));
}

// --- SYSTEMTIME.

SYSTEMTIME system_time(WORD year, WORD month, WORD day, WORD hour = 0)
{
    SYSTEMTIME fields = {};
    fields.wYear = year;
    fields.wMonth = month;
    fields.wDay = day;
    fields.wHour = hour;
    fields.wMilliseconds = 999;
    return fields;
}

TEST(CTimeOfSystemTime, IsZeroBefore1900)
{
    EXPECT_EQ(CTime(system_time(1899, 12, 31), -1).GetTime(), 0);
    EXPECT_EQ(CTime(system_time(1601, 99, 99, 99), -1).GetTime(), 0);
    EXPECT_EQ(CTime(system_time(0, 0, 0), -1).GetTime(), 0);
}

TEST(CTimeOfSystemTime, IsCheckedLikeFieldsFrom1900)
{
    EXPECT_EQ(CTime(system_time(2024, 5, 6, 7), -1), CTime(2024, 5, 6, 7, 0, 0, -1));
    EXPECT_EQ(atl_code([] { CTime(system_time(2024, 13, 1), -1); }), e_fail);
    EXPECT_EQ(atl_code([] { CTime(system_time(2024, 1, 1, 24), -1); }), e_fail);
    EXPECT_EQ(enforce_text([] { CTime(system_time(1900, 1, 1), -1); }),
              "Error Illegal input time\nzorsys\\zor_time\n@185");
}

TEST(CTime, GivesASystemTimeWithoutMilliseconds)
{
    SYSTEMTIME fields = system_time(1, 1, 1);
    ASSERT_TRUE(CTime(2024, 3, 10, 11, 12, 13, -1).GetAsSystemTime(fields));
    EXPECT_EQ(fields.wYear, 2024);
    EXPECT_EQ(fields.wMonth, 3);
    EXPECT_EQ(fields.wDayOfWeek, 0);
    EXPECT_EQ(fields.wDay, 10);
    EXPECT_EQ(fields.wHour, 11);
    EXPECT_EQ(fields.wMinute, 12);
    EXPECT_EQ(fields.wSecond, 13);
    EXPECT_EQ(fields.wMilliseconds, 0);
}

// --- FILETIME.

FILETIME file_time(UINT64 value)
{
    FILETIME time;
    time.dwLowDateTime = static_cast<DWORD>(value);
    time.dwHighDateTime = static_cast<DWORD>(value >> 32);
    return time;
}

TEST(CTimeOfFileTime, IsZeroBefore1900)
{
    EXPECT_EQ(CTime(file_time(UINT64(864000000000)), -1).GetTime(), 0);
}

TEST(CTimeOfFileTime, EnforcesATimeThatHasNoFields)
{
    EXPECT_EQ(enforce_text([] { CTime(file_time(UINT64(1) << 63), -1); }),
              "Error Invalid argument\nzorsys\\zor_time\n@241");
}

TEST(CTime, KnowsWhichFileTimesHaveFields)
{
    EXPECT_NE(CTime::IsValidFILETIME(file_time(UINT64(864000000000))), 0);
    EXPECT_NE(CTime::IsValidFILETIME(file_time(UINT64(133485408000000000))), 0);
    EXPECT_EQ(CTime::IsValidFILETIME(file_time(UINT64(0xC000000000000000))), 0);
}

struct FileTimeCase
{
    INT64 time;
    DWORD high, low;
};

TEST(FileTime, IsCountedFrom1601)
{
    const FileTimeCase cases[] = {
        {0, 0x019DB1DE, 0xD53E8000},
        {1, 0x019DB1DE, 0xD5D71680},
        {1709164800, 0x01DA6AA2, 0x3CE90000},
        {-11644473600, 0, 0},
    };
    for (const FileTimeCase& expected : cases) {
        FILETIME time = {};
        base::to_FILETIME(expected.time, time);
        EXPECT_EQ(time.dwHighDateTime, expected.high) << expected.time;
        EXPECT_EQ(time.dwLowDateTime, expected.low) << expected.time;
    }
}

TEST(FileTime, ComesBackAsTheSameTime)
{
    for (const INT64 time :
         {INT64(0), INT64(1), INT64(1709164800), INT64(0x7FFFFFFF), greatest_time}) {
        FILETIME file = {};
        base::to_FILETIME(time, file);
        EXPECT_EQ(base::to_time_t(file), time);
    }
}

TEST(FileTime, DropsFractionsToward1970)
{
    constexpr UINT64 start = 116444736000000000;
    EXPECT_EQ(base::to_time_t(file_time(start + 19999999)), 1);
    EXPECT_EQ(base::to_time_t(file_time(start - 9999999)), 0);
    EXPECT_EQ(base::to_time_t(file_time(start - 10000000)), -1);
    EXPECT_EQ(base::to_time_t(file_time(0)), -11644473600);
}

// --- Fields.

TEST(CTime, HasNoFieldsOutsideTheRange)
{
    for (const INT64 value : unbreakable) {
        const CTime time(value);
        tm fields = {};
        SYSTEMTIME system = {};
        EXPECT_EQ(time.GetLocalTm(&fields), nullptr);
        EXPECT_EQ(time.GetGmtTm(&fields), nullptr);
        EXPECT_EQ(time.GetYear(), 0);
        EXPECT_EQ(time.GetMonth(), 0);
        EXPECT_EQ(time.GetDay(), 0);
        EXPECT_EQ(time.GetHour(), 0);
        EXPECT_EQ(time.GetMinute(), 0);
        EXPECT_EQ(time.GetSecond(), 0);
        EXPECT_EQ(time.GetDayOfWeek(), 0);
        EXPECT_FALSE(time.GetAsSystemTime(system));
        EXPECT_EQ(shown(time.Format(ZOR_W("%Y"))), "");
        EXPECT_EQ(shown(time.FormatGmt(ZOR_W("%Y"))), "");
    }
}

TEST(CTime, RaisesTheCodeForANullOut)
{
    EXPECT_EQ(atl_code([] { CTime().GetLocalTm(nullptr); }), e_fail);
    EXPECT_EQ(atl_code([] { CTime().GetGmtTm(nullptr); }), e_fail);
}

TEST(CTime, ReturnsTheFieldsThatItFilled)
{
    tm fields = {};
    EXPECT_EQ(CTime(1709164800).GetGmtTm(&fields), &fields);
    EXPECT_EQ(fields.tm_year, 124);
    EXPECT_EQ(fields.tm_mon, 1);
    EXPECT_EQ(fields.tm_mday, 29);
    EXPECT_EQ(fields.tm_hour, 0);
    EXPECT_EQ(fields.tm_wday, 4);
    EXPECT_EQ(fields.tm_yday, 59);
    EXPECT_EQ(fields.tm_isdst, 0);
    EXPECT_EQ(CTime(greatest_time).GetGmtTm(&fields), &fields);
    EXPECT_EQ(CTime(0).GetLocalTm(&fields), &fields);
}

TEST(CTime, TellsTheCurrentTime)
{
    const INT64 before = time(nullptr);
    const INT64 now = CTime::GetTickCount().GetTime();
    EXPECT_GE(now, before);
    EXPECT_LE(now, INT64(time(nullptr)));
}

// --- Operators.

TEST(CTime, ShiftsByASpan)
{
    CTime time(1000);
    EXPECT_EQ((time + CTimeSpan(5)).GetTime(), 1005);
    EXPECT_EQ((time - CTimeSpan(5)).GetTime(), 995);
    EXPECT_EQ((time - CTime(1010)).GetTimeSpan(), -10);
    EXPECT_EQ((time += CTimeSpan(1)).GetTime(), 1001);
    EXPECT_EQ((time -= CTimeSpan(2)).GetTime(), 999);
}

TEST(CTime, ComparesAsSigned)
{
    const CTime less(-1);
    const CTime greater(1);
    EXPECT_TRUE(less == CTime(-1));
    EXPECT_FALSE(less == greater);
    EXPECT_TRUE(less != greater);
    EXPECT_FALSE(less != CTime(-1));
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
