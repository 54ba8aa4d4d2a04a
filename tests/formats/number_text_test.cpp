// Numbers to text.
#include "zorutils/formats/number_text.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cstdlib>
#include <limits>
#include <string>
#include <thread>

#include "tests/support/text.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

namespace {

const double infinity = std::numeric_limits<double>::infinity();
const double nan_value = std::numeric_limits<double>::quiet_NaN();

struct Printed
{
    double value;
    int prec;
    const char* text;
};

} // namespace

TEST(DoubleToStringPlain, ShortestFormWithAtMostTwelveDecimals)
{
    const struct
    {
        double value;
        const char* text;
    } cases[] = {
        {0.0, "0"},
        {-0.0, "-0"},
        {1.0, "1"},
        {10.0, "10"},
        {100.0, "100"},
        {2.5, "2.5"},
        {-2.5, "-2.5"},
        {0.1, "0.1"},
        {1e-12, "0.000000000001"},
        {-1e-12, "-0.000000000001"},
        {5.1e-13, "0.000000000001"},
        {4.9e-13, "0"},
        {4e-13, "0"},
        {-4e-13, "-0"},
        {0.5, "0.5"},
        {123.456, "123.456"},
        // Cut, not rounded: at 15 characters with a point, at 14 without.
        {3.14159265358979, "3.14159265359"},
        {20000.0 / 3.0, "6666.6666666666"},
        {-20000.0 / 3.0, "-6666.666666666"},
        {123456789012345.0, "12345678901234"},
        {-123456789012345.0, "-1234567890123"},
        {12345678901234.5, "12345678901234."},
        {99999999999999.0, "99999999999999"},
        {1e22, "10000000000000"},
        {2.0 / 3.0, "0.666666666667"},
        {20.0 / 3.0, "6.666666666667"},
        {infinity, "1.#INF"},
        {-infinity, "-1.#INF"},
        {nan_value, "1.#QNAN"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(shown(DoubleToString(c.value)), c.text) << c.value;
}

TEST(DoubleToStringFixed, EveryRowOfTheTable)
{
    const char* const third[] = {"0.3",
                                 "0.33",
                                 "0.333",
                                 "0.3333",
                                 "0.33333",
                                 "0.333333",
                                 "0.3333333",
                                 "0.33333333",
                                 "0.333333333",
                                 "0.3333333333",
                                 "0.33333333333",
                                 "0.333333333333",
                                 "0.3333333333333",
                                 "0.33333333333333",
                                 "0.333333333333333",
                                 "0.3333333333333334"}; // the last shows the step
    for (int prec = 1; prec <= 16; ++prec) {
        const std::string zeros(static_cast<size_t>(prec), '0');
        EXPECT_EQ(shown(DoubleToString(1.0 / 3.0, prec)), third[prec - 1]);
        EXPECT_EQ(shown(DoubleToString(0.0, prec)), "0." + zeros);
    }
}

TEST(DoubleToStringFixed, RoundsThroughTheNudgedValue)
{
    const Printed cases[] = {
        {0.5, 1, "0.5"},        {9.95, 1, "10.0"},           {-9.95, 1, "-10.0"},
        {2.5, 1, "2.5"},        {2.675, 2, "2.68"},          {1.005, 2, "1.00"},
        {1.015, 2, "1.01"},     {-2.675, 2, "-2.68"},        {0.125, 2, "0.13"},
        {-0.125, 2, "-0.13"},   {12.3456, 2, "12.35"},       {0.0004, 3, "0.000"},
        {-0.0004, 3, "-0.000"}, {-0.0005, 3, "-0.001"},      {0.0, 3, "0.000"},
        {-0.0, 3, "0.000"},     {123456.789, 1, "123456.8"}, {0.1 + 0.2, 16, "0.3000000000000002"},
        {nan_value, 2, "0.00"},
    };
    for (const Printed& c : cases)
        EXPECT_EQ(shown(DoubleToString(c.value, c.prec)), c.text) << c.value << " " << c.prec;
}

TEST(DoubleToStringFixed, OtherPrecisionsPrintTheValueAsItIs)
{
    const Printed cases[] = {
        {0.5, 0, "1"},
        {1.5, 0, "2"},
        {2.5, 0, "3"},
        {-0.5, 0, "-1"},
        {0.49999999999999994, 0, "0"}, // rounding by adding a half would give 1
        {-0.4, 0, "-0"},
        {4503599627370497.0, 0, "4503599627370497"}, // and here 4503599627370498
        {1e22, 0, "10000000000000000000000"},
        {0.1, 17, "0.10000000000000001"},
        {0.1, 20, "0.10000000000000000555"},
        {1.0, 17, "1.00000000000000000"},
        {infinity, 0, "1"},
        {infinity, 17, "1.#INF0000000000000"},
        {-infinity, 17, "-1.#INF0000000000000"},
        {nan_value, 17, "1.#QNAN000000000000"},
        {1.5, -1, "-1lf"},
        {infinity, -1, "-1lf"},
        {1.5, -12, "-12lf"},
        {1.5, INT_MIN, "-2147483648lf"},
    };
    for (const Printed& c : cases)
        EXPECT_EQ(shown(DoubleToString(c.value, c.prec)), c.text) << c.value << " " << c.prec;
}

TEST(DoubleToStringFixed, AnInfiniteValueIsNudgedToTheLargestFiniteOne)
{
    const std::string largest = shown(DoubleToString(infinity, 2));
    EXPECT_EQ(largest.substr(0, 20), "17976931348623157081");
    EXPECT_EQ(largest.size(), 312u);
    EXPECT_EQ(shown(DoubleToString(-infinity, 2)), "-" + largest);
}

TEST(DoubleToStringFixed, AFloodOfDecimalsIsCut)
{
    EXPECT_EQ(DoubleToString(1.0, 131070).GetLength(), 131072);
    EXPECT_EQ(DoubleToString(1.0, INT_MAX).GetLength(), 131072);
}

TEST(ConvertFloat, FixedDecimalsWithTheSignGiven)
{
    const struct
    {
        double value;
        int prec;
        const char* sign;
        const char* text;
    } cases[] = {
        {12.3456, 2, ".", "12.35"},
        {12.3456, 2, ",", "12,35"},
        {12.3456, 2, "<>", "12<>35"},
        {12.3456, 2, "", "1235"},
        {0.25, 2, ".", "0.25"},
        {0.25, 1, ".", "0.3"},
        {-0.25, 1, ".", "-0.3"},
        {0.05, 2, ".", "0.05"},
        {0.05, 1, ".", "0.1"},
        {0.0004, 2, ".", "0.00"},
        {0.0004, 3, ".", "0.000"},
        {-0.0004, 3, ".", "0.000"},
        {-0.0005, 3, ".", "-0.001"},
        {0.0, 0, ".", "0"},
        {0.0, 3, ".", "0.000"},
        {-0.0, 3, ".", "0.000"},
        {0.5, 0, ".", "1"},
        {0.4, 0, ".", "0"},
        {0.05, 0, ".", "0"},
        {-0.4, 0, ".", "0"},
        {-0.5, 0, ".", "-1"},
        {7.0, 0, ".", "7"},
        {99.95, 1, ".", "100.0"},
        {100.0, 2, ".", "100.00"},
        {1.5, 20, ".", "1.50000000000000000000"},
        {0.1, 20, ".", "0.10000000000000000555"},
        {2.675, 2, ".", "2.67"}, // no round_prec here
        {1e22, 1, ".", "10000000000000000000000.0"},
        {1234.5, -2, ".", "1235"},
        {infinity, 2, ",", "1,#J"},
        {-infinity, 2, ".", "-1.#J"},
        {infinity, 4, ".", "1.#INF"},
        {nan_value, 5, ".", "1.#QNAN"},
        {infinity, 0, ".", "1"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(shown(ConvertFloatEx(c.value, c.prec, Wide(c.sign), false)), c.text)
            << c.value << " " << c.prec;
}

TEST(ConvertFloat, UsesTheLocalesSign)
{
    EXPECT_EQ(shown(ConvertFloat(12.3456, 2, false)), "12" + shown(DecimalSignString()) + "35");
    EXPECT_EQ(shown(ConvertFloat(-0.0004, 3, false)), "0" + shown(DecimalSignString()) + "000");
    EXPECT_EQ(shown(ConvertFloat(12.3456, 0, false)), "12");
}

TEST(ConvertFloatStrip, TextsThatDoNotEndInZeroStayAsTheyAre)
{
    EXPECT_EQ(shown(ConvertFloatEx(1.25, 2, ZOR_W("."), true)), "1.25");
    EXPECT_EQ(shown(ConvertFloatEx(-0.75, 2, ZOR_W("."), true)), "-0.75");
    // Without decimals nothing is stripped, whatever the end.
    EXPECT_EQ(shown(ConvertFloatEx(10.0, 0, ZOR_W("."), true)), "10");
    EXPECT_EQ(shown(ConvertFloatEx(0.0, 0, ZOR_W("."), true)), "0");
}

TEST(ConvertFloatStrip, TheLastIndexIsTakenForACharacter)
{
    // 49 characters: the last index is 48, which is the code of "0", and every zero goes.
    EXPECT_EQ(shown(ConvertFloatEx(1.5, 47, ZOR_W("."), true)), "1.5");
    EXPECT_EQ(shown(ConvertFloatEx(10.5, 46, ZOR_W("."), true)), "1.5");
    EXPECT_EQ(shown(ConvertFloatEx(100.0, 45, ZOR_W("."), true)), "1.");
    // 50 characters: each "1" goes, and with the 49 that are left each zero.
    EXPECT_EQ(shown(ConvertFloatEx(1.5, 48, ZOR_W("."), true)), ".5");
}

TEST(ConvertFloatStrip, ADecimalSignAtTheEndIsSoughtInTheSameWay)
{
    // "199" ends with the sign "9", which starts at index 2, and no character has that code.
    EXPECT_EQ(shown(ConvertFloatEx(1.9, 1, ZOR_W("9"), true)), "199");
    // Here the sign starts at index 1, and the character of that code goes.
    EXPECT_EQ(shown(ConvertFloatEx(1.25, 1,
                                   ZOR_W("\1"
                                         "3"),
                                   true)),
              "1\\u000133");
}

namespace {

// Ends the process when its time is over.
class TimeLimit
{
public:
    TimeLimit()
    {
        std::thread([] {
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            _Exit(out_of_time);
        }).detach();
    }
    static constexpr int out_of_time = 42;
};

} // namespace

TEST(ConvertFloatStripDeathTest, ATextThatEndsInZeroDoesNotComeBack)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto strip = [](double value, int prec) {
        const TimeLimit limit;
        ConvertFloatEx(value, prec, ZOR_W("."), true);
        _Exit(0);
    };
    EXPECT_EXIT(strip(1.25, 2), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(strip(1.5, 2), testing::ExitedWithCode(TimeLimit::out_of_time), "");
    EXPECT_EXIT(strip(0.0, 1), testing::ExitedWithCode(TimeLimit::out_of_time), "");
}

TEST(IntegersToText, PlainDecimal)
{
    EXPECT_EQ(shown(IntToString(0)), "0");
    EXPECT_EQ(shown(IntToString(INT_MIN)), "-2147483648");
    EXPECT_EQ(shown(IntToString(INT_MAX)), "2147483647");
    EXPECT_EQ(shown(UIntToString(UINT_MAX)), "4294967295");
    EXPECT_EQ(shown(UIntToString(0)), "0");
    EXPECT_EQ(shown(Int64ToString(LLONG_MIN)), "-9223372036854775808");
    EXPECT_EQ(shown(Int64ToString(LLONG_MAX)), "9223372036854775807");
}

TEST(Signs, DegreeDecimalAndCommas)
{
    EXPECT_EQ(shown(DegreeSignString()), "\\u00B0");
    EXPECT_GE(DecimalSignString().GetLength(), 1);
    EXPECT_LE(DecimalSignString().GetLength(), 4);
    EXPECT_EQ(shown(DecimalSignString()), shown(DecimalSignString()));
    const Wide text(ZOR_W("1,2,3.4"));
    EXPECT_EQ(shown(ReplaceCommasWithDecPt(text)), "1.2.3.4");
    EXPECT_EQ(shown(text), "1,2,3.4");
    EXPECT_EQ(shown(ReplaceCommasWithDecPt(ZOR_W(""))), "");
}
