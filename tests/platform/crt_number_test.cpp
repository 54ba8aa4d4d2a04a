// The contract of the number calls of the run-time.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

#include "tests/support/text.h"
#include "zorutils/platform/crt.h"

using zor_test::shown;

TEST(CrtNumber, FcvtGivesRoundedDigitsAndThePoint)
{
    const struct
    {
        double value;
        int count;
        const char* digits;
        int point, sign;
    } rows[] = {
        {0.5, 0, "1", 1, 0},
        {2.5, 0, "3", 1, 0},
        {1.25, 1, "13", 1, 0},
        {62.125, 2, "6213", 2, 0},
        {2.675, 2, "267", 1, 0},
        {-0.5, 1, "5", 0, 1},
        {0.125, 0, "", 0, 0},
        {0.0123, 3, "12", -1, 0},
        {123.456, 2, "12346", 3, 0},
        {-62.125, 3, "62125", 2, 1},
        {0.1, 17, "10000000000000001", 0, 0},
    };
    for (const auto& row : rows) {
        int point = -99, sign = -99;
        EXPECT_STREQ(_fcvt(row.value, row.count, &point, &sign), row.digits) << row.value;
        EXPECT_EQ(point, row.point) << row.value;
        EXPECT_EQ(sign, row.sign) << row.value;
    }
}

TEST(CrtNumber, NextafterStepsOnce)
{
    EXPECT_EQ(_nextafter(1.0, DBL_MAX), 1.0 + DBL_EPSILON);
    EXPECT_EQ(_nextafter(0.0, -DBL_MAX), -5e-324);
    EXPECT_EQ(_nextafter(HUGE_VAL, DBL_MAX), DBL_MAX);
    EXPECT_EQ(_nextafter(2.0, 2.0), 2.0);
}

TEST(CrtNumber, ItowWritesDecimals)
{
    const struct
    {
        int value;
        const char* text;
    } rows[] = {{0, "0"},
                {-1, "-1"},
                {42, "42"},
                {2147483647, "2147483647"},
                {-2147483647 - 1, "-2147483648"}};
    for (const auto& row : rows) {
        WCHAR buffer[40];
        EXPECT_EQ(_itow(row.value, buffer, 10), buffer);
        EXPECT_EQ(shown(buffer), row.text);
    }
}

TEST(CrtNumber, WtoiReadsDigitsOfEveryScriptAndHoldsTheRange)
{
    const struct
    {
        const WCHAR* text;
        int value;
    } rows[] = {
        {ZOR_W("12abc"), 12},
        {ZOR_W(" -5"), -5},
        {ZOR_W("+5"), 5},
        {ZOR_W("- 5"), 0},
        {ZOR_W(""), 0},
        {ZOR_W("abc"), 0},
        {ZOR_W("99999999999"), 2147483647},
        {ZOR_W("-99999999999"), -2147483647 - 1},
        {ZOR_W("99999999999999999999999999"), 2147483647},
        {ZOR_W("0x10"), 0},
        {ZOR_W("\x0661\x0662"), 12},
        {ZOR_W("\xFF15"), 5},
        {ZOR_W("5\x0660"), 50},
        {ZOR_W("\x00A0"
               "5"),
         5},
        {ZOR_W("\x00B2"), 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(_wtoi(row.text), row.value) << shown(row.text);
}

TEST(CrtNumber, WcstodTellsWhereTheNumberEnds)
{
    const struct
    {
        const WCHAR* text;
        double value;
        int end;
    } rows[] = {
        {ZOR_W("12abc"), 12, 2},
        {ZOR_W("\t\n 12"), 12, 5},
        {ZOR_W("1e+"), 1, 1},
        {ZOR_W("."), 0, 0},
        {ZOR_W("-."), 0, 0},
        {ZOR_W("5."), 5, 2},
        {ZOR_W("1.5.6"), 1.5, 3},
        {ZOR_W("1,5"), 1, 1},
        {ZOR_W("1e400"), HUGE_VAL, 5},
        {ZOR_W("5e+0005"), 5e5, 7},
        {ZOR_W("\x00A0"
               "5"),
         0, 0},
        {ZOR_W("infx"), HUGE_VAL, 3},
        {ZOR_W("infinit"), HUGE_VAL, 3},
        {ZOR_W("0x1p3"), 8, 5},
        {ZOR_W("0xg"), 0, 1},
        {ZOR_W("1d5"), 1, 1},
        {ZOR_W("+.5e-2x"), 0.005, 6},
        {ZOR_W(" "), 0, 0},
    };
    for (const auto& row : rows) {
        WCHAR* end = nullptr;
        EXPECT_EQ(wcstod(row.text, &end), row.value) << shown(row.text);
        EXPECT_EQ(end - row.text, row.end) << shown(row.text);
    }
}

TEST(CrtNumber, EveryDoubleComesBackFromItsDigitsBitForBit)
{
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const unsigned long long bits = random();
        double value;
        memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value))
            continue;
        WCHAR text[64];
        _snwprintf(text, 64, ZOR_W("%.17g"), value);
        double scanned = 0;
        EXPECT_EQ(wcstod(text, nullptr), value);
        ASSERT_EQ(swscanf(text, ZOR_W("%lf"), &scanned), 1);
        ASSERT_EQ(scanned, value) << shown(text);
    }
}
