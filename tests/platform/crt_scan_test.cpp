// The contract of the scanner on 16-bit units. Expected values are those of the Windows build.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "tests/support/text.h"
#include "zorutils/platform/crt.h"
#include "zorutils/platform/win_types.h"

using zor_test::shown;

TEST(CrtScan, WholeNumbersAreHeldToTheirRangeAndThenCut)
{
    constexpr int none = -77;
    const struct
    {
        const WCHAR* text;
        int result;
        int d;
        short h;
        unsigned u;
        INT64 q;
    } rows[] = {
        {ZOR_W("12"), 1, 12, 12, 12, 12},
        {ZOR_W("12abc"), 1, 12, 12, 12, 12},
        {ZOR_W(" \t\n12"), 1, 12, 12, 12, 12},
        {ZOR_W("-5"), 1, -5, -5, 4294967291u, -5},
        {ZOR_W("+5"), 1, 5, 5, 5, 5},
        {ZOR_W("- 5"), 0, none, none, 77, none},
        {ZOR_W(""), -1, none, none, 77, none},
        {ZOR_W("  "), -1, none, none, 77, none},
        {ZOR_W("abc"), 0, none, none, 77, none},
        {ZOR_W("99999999999"), 1, 2147483647, -1, 4294967295u, 99999999999},
        {ZOR_W("-99999999999"), 1, -2147483647 - 1, 0, 1, -99999999999},
        {ZOR_W("2147483648"), 1, 2147483647, -1, 2147483648u, 2147483648},
        {ZOR_W("4294967296"), 1, 2147483647, -1, 4294967295u, 4294967296},
        {ZOR_W("70000"), 1, 70000, 4464, 70000, 70000},
        {ZOR_W("-70000"), 1, -70000, -4464, 4294897296u, -70000},
        {ZOR_W("0x10"), 1, 0, 0, 0, 0},
        {ZOR_W("010"), 1, 10, 10, 10, 10},
        {ZOR_W("9223372036854775808"), 1, 2147483647, -1, 4294967295u, 9223372036854775807},
        {ZOR_W("-9223372036854775809"), 1, -2147483647 - 1, 0, 1, -9223372036854775807 - 1},
        {ZOR_W("\x0661"), 0, none, none, 77, none},
        {ZOR_W("1.5"), 1, 1, 1, 1, 1},
        {ZOR_W("--5"), 0, none, none, 77, none},
        {ZOR_W("+-5"), 0, none, none, 77, none},
        {ZOR_W("\x00A0\x3000"
               "5"),
         1, 5, 5, 5, 5},
        {ZOR_W("-"), 0, none, none, 77, none},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(shown(row.text));
        int d = none;
        LONG l = none;
        short h = none;
        unsigned u = 77;
        INT64 q = none;
        EXPECT_EQ(swscanf(row.text, ZOR_W("%d"), &d), row.result);
        EXPECT_EQ(swscanf(row.text, ZOR_W("%ld"), &l), row.result);
        EXPECT_EQ(swscanf(row.text, ZOR_W("%hd"), &h), row.result);
        EXPECT_EQ(swscanf(row.text, ZOR_W("%u"), &u), row.result);
        EXPECT_EQ(swscanf(row.text, ZOR_W("%I64d"), &q), row.result);
        EXPECT_EQ(d, row.d);
        EXPECT_EQ(l, row.d);
        EXPECT_EQ(h, row.h);
        EXPECT_EQ(u, row.u);
        EXPECT_EQ(q, row.q);
    }
}

TEST(CrtScan, RealNumbers)
{
    const struct
    {
        const WCHAR* text;
        int result;
        double value;
    } rows[] = {
        {ZOR_W("12"), 1, 12},
        {ZOR_W("12abc"), 1, 12},
        {ZOR_W("1e5"), 1, 1e5},
        {ZOR_W("1E5"), 1, 1e5},
        {ZOR_W("1e"), 1, 1},
        {ZOR_W("1e+x"), 1, 1},
        {ZOR_W("."), 0, -77},
        {ZOR_W("-."), 0, -77},
        {ZOR_W("+5"), 1, 5},
        {ZOR_W("5."), 1, 5},
        {ZOR_W(".5"), 1, 0.5},
        {ZOR_W("1d5"), 1, 1},
        {ZOR_W("1e400"), 1, HUGE_VAL},
        {ZOR_W("-1e400"), 1, -HUGE_VAL},
        {ZOR_W("1e-400"), 1, 0},
        {ZOR_W("\x0661"), 0, -77},
        {ZOR_W(""), -1, -77},
        {ZOR_W(" "), -1, -77},
        {ZOR_W("abc"), 0, -77},
        {ZOR_W("1,5"), 1, 1},
        {ZOR_W("1.5.6"), 1, 1.5},
        {ZOR_W("00012"), 1, 12},
        {ZOR_W("1.#INF"), 1, 1},
        {ZOR_W("--5"), 0, -77},
        {ZOR_W("inf"), 1, HUGE_VAL},
        {ZOR_W("-inf"), 1, -HUGE_VAL},
        {ZOR_W("infinit"), 0, -77},
        {ZOR_W("0x10"), 1, 16},
        {ZOR_W("0x1.8p1"), 1, 3},
        {ZOR_W("0x"), 0, -77},
        {ZOR_W("\x00A0"
               "5"),
         1, 5},
        {ZOR_W("\x3000"
               "5"),
         1, 5},
        {ZOR_W("0.1"), 1, 0.1},
        {ZOR_W("4.9e-324"), 1, 5e-324},
        {ZOR_W("2.4e-324"), 1, 0},
        {ZOR_W("9007199254740993"), 1, 9007199254740992},
        {ZOR_W("0.500000000000000166533453693773481063544750213623046875"), 1, 0.50000000000000022},
    };
    for (const auto& row : rows) {
        double value = -77;
        EXPECT_EQ(swscanf(row.text, ZOR_W("%lf"), &value), row.result) << shown(row.text);
        EXPECT_EQ(value, row.value) << shown(row.text);
    }
}

TEST(CrtScan, SeveralFieldsStopAtTheFirstMismatch)
{
    const struct
    {
        const WCHAR* text;
        int result;
        short fields[6];
    } rows[] = {
        {ZOR_W("2013-10-01 08:29:35"), 6, {2013, 10, 1, 8, 29, 35}},
        {ZOR_W("2013-10-01"), 3, {2013, 10, 1, -1, -1, -1}},
        {ZOR_W(" 2013 - 10-01"), 1, {2013, -1, -1, -1, -1, -1}},
        {ZOR_W("2013-10--1   8:29:3x"), 6, {2013, 10, -1, 8, 29, 3}},
    };
    for (const auto& row : rows) {
        short f[6] = {-1, -1, -1, -1, -1, -1};
        EXPECT_EQ(swscanf(row.text, ZOR_W("%hd-%hd-%hd %hd:%hd:%hd"), &f[0], &f[1], &f[2], &f[3],
                          &f[4], &f[5]),
                  row.result);
        EXPECT_EQ(memcmp(f, row.fields, sizeof f), 0) << shown(row.text);
    }
}

TEST(CrtScan, WidthsLiteralsAndSuppression)
{
    int a = -7, b = -7;
    EXPECT_EQ(swscanf(ZOR_W("123456"), ZOR_W("%2d%3d"), &a, &b), 2);
    EXPECT_EQ(a, 12);
    EXPECT_EQ(b, 345);
    EXPECT_EQ(swscanf(ZOR_W("5%6"), ZOR_W("%d%%%d"), &a, &b), 2);
    EXPECT_EQ(b, 6);
    WCHAR unit = 0;
    EXPECT_EQ(swscanf(ZOR_W("12x"), ZOR_W("%*d%c"), &unit), 1);
    EXPECT_EQ(unit, static_cast<WCHAR>('x'));
    EXPECT_EQ(swscanf(ZOR_W("ff"), ZOR_W("%x"), &a), 1);
    EXPECT_EQ(a, 255);
    EXPECT_EQ(swscanf(ZOR_W("0x1f 017"), ZOR_W("%i %i"), &a, &b), 2);
    EXPECT_EQ(a, 31);
    EXPECT_EQ(b, 15);
}

TEST(CrtScan, TextFieldsStoreUnits)
{
    WCHAR left[8] = {}, right[8] = {};
    EXPECT_EQ(swscanf(ZOR_W("ab  cd"), ZOR_W("%ls%ls"), left, right), 2);
    EXPECT_EQ(shown(left), "ab");
    EXPECT_EQ(shown(right), "cd");
    EXPECT_EQ(swscanf(ZOR_W("ab,cd"), ZOR_W("%l[^,],%l[a-z]"), right, left), 2);
    EXPECT_EQ(shown(right), "ab");
    EXPECT_EQ(shown(left), "cd");
}
