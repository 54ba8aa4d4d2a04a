#include "zorutils/zorsys/zor_time.h"

#include "tests/support/text.h"
#include "zorutils/core/atl_exception.h"

#include <gtest/gtest.h>

namespace {

using base::CTime;
using zor_test::shown;

std::string gmt(INT64 time, const WCHAR* format)
{
    return shown(CTime(time).FormatGmt(format));
}

TEST(CTimeFormat, WritesTheEpochForZero)
{
    EXPECT_EQ(gmt(0, ZOR_W("%Y-%m-%d %H:%M:%S")), "1970-01-01 00:00:00");
}

TEST(CTimeFormat, WritesLocalFields)
{
    const CTime time(2024, 3, 5, 9, 8, 7, -1);
    EXPECT_EQ(shown(time.Format(ZOR_W("%d.%m.%Y %H:%M:%S %a"))), "05.03.2024 09:08:07 Tue");
}

TEST(CTimeFormat, IsEmptyForNullAndEmptyFormats)
{
    const WCHAR* null = nullptr;
    EXPECT_EQ(shown(CTime(0).Format(null)), "");
    EXPECT_EQ(shown(CTime(0).FormatGmt(null)), "");
    EXPECT_EQ(gmt(0, ZOR_W("")), "");
}

TEST(CTimeFormat, IsEmptyForABadConversion)
{
    EXPECT_EQ(gmt(0, ZOR_W("%Y %q")), "");
    EXPECT_EQ(gmt(0, ZOR_W("%")), "");
}

TEST(CTimeFormat, WritesAtMost127Units)
{
    const std::basic_string<WCHAR> most(127, 'x');
    EXPECT_EQ(gmt(0, most.c_str()), std::string(127, 'x'));
    for (const size_t length : {size_t(128), size_t(129), size_t(130), size_t(500), size_t(5000)}) {
        const std::basic_string<WCHAR> longer(length, 'x');
        EXPECT_EQ(gmt(0, longer.c_str()), "") << length;
    }
    const std::basic_string<WCHAR> grows = std::basic_string<WCHAR>(120, 'x') + ZOR_W("%Y");
    EXPECT_EQ(gmt(0, grows.c_str()), std::string(120, 'x') + "1970");
    EXPECT_EQ(gmt(0, (grows + ZOR_W("%Y")).c_str()), "");
}

TEST(CTimeFormat, RaisesTheCodeWithoutTheResource)
{
    constexpr unsigned int no_such_id = 64999;
    const auto code = [](auto operation) {
        try {
            operation();
        } catch (const CAtlException& error) {
            return static_cast<DWORD>(error.m_hr);
        }
        return DWORD(0);
    };
    EXPECT_EQ(code([] { CTime(0).Format(no_such_id); }), 0x80004005u);
    EXPECT_EQ(code([] { CTime(0).FormatGmt(no_such_id); }), 0x80004005u);
}

TEST(TimeToXSString, EndsInZForUtc)
{
    EXPECT_EQ(shown(CTime::TimeToXSString(CTime(0), true)), "1970-01-01T00:00:00Z");
    EXPECT_EQ(shown(CTime::TimeToXSString(CTime(1709164805), true)), "2024-02-29T00:00:05Z");
    EXPECT_EQ(shown(CTime::TimeToXSString(CTime(32535215999), true)), "3000-12-31T23:59:59Z");
}

TEST(TimeToXSString, IsEmptyForATimeWithoutFields)
{
    EXPECT_EQ(shown(CTime::TimeToXSString(CTime(-1), true)), "");
    EXPECT_EQ(shown(CTime::TimeToXSString(CTime(-1), false)), "");
}

} // namespace
