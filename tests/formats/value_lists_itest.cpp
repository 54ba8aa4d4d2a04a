// What stands behind a date mask.
#include "zorutils/formats/value_lists_internal.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

using zor_test::shown;

TEST(DateTexts, MonthAndDayAreChecked)
{
    const struct
    {
        const WCHAR* text;
        bool date;
    } cases[] = {
        {ZOR_W("2013-10-01"), true},
        {ZOR_W("2013-02-29"), true},
        {ZOR_W("2013-02-30"), false},
        {ZOR_W("2013-04-31"), true},
        {ZOR_W("2013-12-31"), true},
        {ZOR_W("2013-12-32"), false},
        {ZOR_W("2013-00-10"), false},
        {ZOR_W("2013-13-10"), false},
        {ZOR_W("2013-01-00"), false},
        {ZOR_W("0000-01-01"), true},
        {ZOR_W("abcd-01-01"), true},
        {ZOR_W("abcd-ef-gh"), false},
        {ZOR_W("2013-1-1"), true},
        {ZOR_W("2013-01"), false},
        {ZOR_W("2013-01-"), false},
        {ZOR_W("2013- -01"), false},
        {ZOR_W("2013-01- "), false},
        {ZOR_W(""), false},
        {nullptr, false},
        {ZOR_W("-2013-01-01"), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(zor_formats::IsDateText(c.text), c.date) << shown(c.text);
}

TEST(DateTexts, TimeMayReach245959)
{
    const struct
    {
        const WCHAR* text;
        bool date_time;
    } cases[] = {
        {ZOR_W("2013-10-01 08:29:35"), true},  {ZOR_W("2013-10-01 00:00:00"), true},
        {ZOR_W("2013-10-01 24:59:59"), true},  {ZOR_W("2013-10-01 25:00:00"), false},
        {ZOR_W("2013-10-01 00:60:00"), false}, {ZOR_W("2013-10-01 00:00:60"), false},
        {ZOR_W("2013-02-30 00:00:00"), false}, {ZOR_W("2013-10-01 ab:cd:ef"), true},
        {ZOR_W("2013-10-01 1: :2"), false},    {ZOR_W("2013-10-01"), false},
        {ZOR_W("2013-10-01 08:29"), false},    {ZOR_W(""), false},
        {ZOR_W("2013-10-01 1:\t:2"), true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(zor_formats::IsDateTimeText(c.text), c.date_time) << shown(c.text);
}
