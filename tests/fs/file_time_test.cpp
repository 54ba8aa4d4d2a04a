#include "zorutils/fs/file_time.h"

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "tests/support/zone.h"
#include "zorutils/fs/platform_file.h"
#include "zorutils/zorsys/zor_time.h"

using namespace zor::file_time;
using zor_test::shown;
using zor_test::TempFolder;
using zor_test::Wide;

namespace {

FILETIME file_time(INT64 seconds)
{
    FILETIME time;
    base::to_FILETIME(seconds, time);
    return time;
}

INT64 seconds_of(const FILETIME& time)
{
    return base::to_time_t(time);
}

bool touch(const Wide& path, INT64 access, INT64 write)
{
    const base::PlatformFile file = base::CreatePlatformFile(
        path, base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_WRITE, nullptr, nullptr);
    const bool touched = base::TouchPlatformFile(file, access, write);
    return base::ClosePlatformFile(file) && touched;
}

// Date and clock of a time, in the zone of the run.
std::string printed(INT64 seconds)
{
    FILETIME time = file_time(seconds);
    Wide date, clock;
    EXPECT_TRUE(ConvertAndFormatFileTime(time, &date, &clock));
    return shown(date) + " " + shown(clock);
}

constexpr INT64 first_of_june = 1717203600; // 2024-06-01 01:00 UTC

// Around both clock changes of Central Europe in 2024, and of the Chatham Islands.
const INT64 around_changes[] = {1711846799, 1711846800, 1729990799,   1729990800, 1729994400,
                                1712411999, 1712412000, 1727531999,   1727532000, 0,
                                1301183999, 1301184000, first_of_june};

} // namespace

// In every zone that the tests run in: what is kept is UTC.
TEST(ZoneFileTimes, ComeBackAsTheyWereWritten)
{
    const TempFolder folder;
    const Wide path = folder.write("file", "x");
    for (const INT64 time : around_changes) {
        ASSERT_TRUE(touch(path, time + 7, time)) << time;
        FILETIME created = {}, accessed = {}, written = {};
        ASSERT_TRUE(zorGetFileTimes(path.c_str(), &created, &accessed, &written));
        EXPECT_EQ(seconds_of(written), time);
        EXPECT_EQ(seconds_of(accessed), time + 7);
    }
}

TEST(FileTime, EachTimeMayBeLeftOut)
{
    const TempFolder folder;
    const Wide path = folder.write("file", "x");
    ASSERT_TRUE(touch(path, 1000, 2000));
    FILETIME time = {};
    EXPECT_TRUE(zorGetFileTimes(path.c_str(), nullptr, nullptr, nullptr));
    EXPECT_TRUE(zorGetFileTimes(path.c_str(), nullptr, &time, nullptr));
    EXPECT_EQ(seconds_of(time), 1000);
    EXPECT_TRUE(zorGetFileTimes(path.c_str(), nullptr, nullptr, &time));
    EXPECT_EQ(seconds_of(time), 2000);
}

TEST(FileTime, AMissingFileWritesNothing)
{
    const TempFolder folder;
    FILETIME time = {1, 2};
    EXPECT_FALSE(zorGetFileTimes(folder.wide("none").c_str(), &time, &time, &time));
    EXPECT_EQ(time.dwLowDateTime, 1u);
    EXPECT_EQ(time.dwHighDateTime, 2u);
    EXPECT_FALSE(zorGetFileTimes(folder.wide("a..b").c_str(), &time, &time, &time));
}

TEST(ZoneFileTimePrinting, FollowsTheZone)
{
    if (zor_test::in_zone("UTC"))
        EXPECT_EQ(printed(first_of_june), "06/01/2024 01:00");
    else if (zor_test::in_zone("Asia/Kolkata"))
        EXPECT_EQ(printed(first_of_june), "06/01/2024 06:30");
    else if (zor_test::in_zone("Etc/GMT-2"))
        EXPECT_EQ(printed(first_of_june), "06/01/2024 03:00");
    else if (zor_test::in_zone("Europe/Moscow"))
        EXPECT_EQ(printed(1301184000), "03/27/2011 03:00"); // today's offset, not that year's
    else
        GTEST_SKIP() << "the offset of today is not known here";
}

TEST(ZoneFileTimePrinting, ShiftsByTheOffsetOfTodayAlone)
{
    // As Windows does: summer and winter of one file are printed the same way.
    const std::string summer = printed(1719792000 + 43200), winter = printed(1704067200 + 43200);
    EXPECT_EQ(summer.substr(11), winter.substr(11));
}

TEST(FileTime, PartsOfThePrintingMayBeLeftOut)
{
    FILETIME time = file_time(first_of_june + 12 * 3600);
    Wide date, clock;
    EXPECT_TRUE(ConvertAndFormatFileTime(time, nullptr, nullptr));
    EXPECT_TRUE(ConvertAndFormatFileTime(time, &date, nullptr));
    EXPECT_TRUE(ConvertAndFormatFileTime(time, nullptr, &clock));
    EXPECT_EQ(date.GetLength(), 10);
    EXPECT_EQ(date.GetAt(2), '/');
    EXPECT_EQ(clock.GetLength(), 5);
    EXPECT_EQ(clock.GetAt(2), ':');
}

TEST(FileTime, ThreeTimesArePrintedCrossed)
{
    FILETIME first = file_time(first_of_june), second = file_time(first_of_june + 86400),
             third = file_time(first_of_june + 2 * 86400);
    Wide d1, c1, d2, c2, d3, c3;
    EXPECT_TRUE(zorGetFileTimeFormatted(&first, &second, &third, &d1, &c1, &d2, &c2, &d3, &c3));
    Wide date1, date2, date3, clock;
    ConvertAndFormatFileTime(first, &date1, &clock);
    ConvertAndFormatFileTime(second, &date2, nullptr);
    ConvertAndFormatFileTime(third, &date3, nullptr);
    EXPECT_EQ(shown(d1), shown(date1));
    EXPECT_EQ(shown(d2), shown(date3)) << "the third stands second, on purpose";
    EXPECT_EQ(shown(d3), shown(date2));
    EXPECT_EQ(shown(c1), shown(clock));
    EXPECT_EQ(shown(c2), shown(clock));
    EXPECT_NE(shown(d2), shown(d3));
}

TEST(FileTime, WithoutTheFirstDateNothingIsPrinted)
{
    FILETIME time = file_time(first_of_june);
    Wide c1("old"), d2("old"), c2("old"), d3("old"), c3("old");
    EXPECT_TRUE(zorGetFileTimeFormatted(&time, &time, &time, nullptr, &c1, &d2, &c2, &d3, &c3));
    for (const Wide* text : {&c1, &d2, &c2, &d3, &c3})
        EXPECT_EQ(shown(*text), "old");
    EXPECT_TRUE(zorGetFileTimeFormatted(ZOR_W("none"), nullptr, &c1, &d2, &c2, &d3, &c3));
    EXPECT_EQ(shown(c1), "old");
}

TEST(FileTime, MissingTimesArePassedOver)
{
    FILETIME time = file_time(first_of_june);
    Wide d1("old"), c1("old"), d2("old"), c2("old"), d3("old"), c3("old");
    EXPECT_TRUE(zorGetFileTimeFormatted(nullptr, nullptr, &time, &d1, &c1, &d2, &c2, &d3, &c3));
    EXPECT_EQ(shown(d1), "old");
    EXPECT_NE(shown(d2), "old");
    EXPECT_EQ(shown(d3), "old");
}

TEST(FileTime, AFilesTimesArePrintedCrossed)
{
    const TempFolder folder;
    const Wide path = folder.write("file", "x");
    ASSERT_TRUE(touch(path, first_of_june + 86400, first_of_june + 2 * 86400));
    FILETIME created = {}, accessed = {}, written = {};
    ASSERT_TRUE(zorGetFileTimes(path.c_str(), &created, &accessed, &written));
    Wide d1, c1, d2, c2, d3, c3, wanted_access, wanted_write;
    EXPECT_TRUE(zorGetFileTimeFormatted(path.c_str(), &d1, &c1, &d2, &c2, &d3, &c3));
    ConvertAndFormatFileTime(accessed, &wanted_access, nullptr);
    ConvertAndFormatFileTime(written, &wanted_write, nullptr);
    EXPECT_EQ(d1.GetLength(), 10);
    EXPECT_EQ(shown(d2), shown(wanted_write));
    EXPECT_EQ(shown(d3), shown(wanted_access));
    EXPECT_NE(shown(d2), shown(d3));
}

TEST(FileTime, AFileThatIsMissingPrintsNothing)
{
    Wide d1("old"), c1("old"), d2("old"), c2("old"), d3("old");
    EXPECT_TRUE(zorGetFileTimeFormatted(ZOR_W("no such file"), &d1, &c1, &d2, &c2, &d3, nullptr));
    for (const Wide* text : {&d1, &c1, &d2, &c2, &d3})
        EXPECT_EQ(shown(*text), "");
}

TEST(FileTime, NowIsNow)
{
    FILETIME now;
    zorGetSystemTimeAsFileTime(now);
    const INT64 difference = base::CTime::GetTickCount().GetTime() - seconds_of(now);
    EXPECT_GE(difference, -1);
    EXPECT_LE(difference, 2);
}
