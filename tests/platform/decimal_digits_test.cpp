// The one digit generator: exact digits, exact halves away from zero, the same on every target.
#include "zorutils/platform/decimal_digits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

using zor::platform::DecimalDigits;
using zor::platform::fixed_digits;
using zor::platform::fixed_text;
using zor::platform::scientific_digits;

TEST(DecimalDigits, ExactHalvesGoAwayFromZeroAtEveryPrecision)
{
    const struct
    {
        double value;
        int precision;
        const char* text;
    } rows[] = {
        {0.5, 0, "1"},
        {1.5, 0, "2"},
        {2.5, 0, "3"},
        {-0.5, 0, "-1"},
        {0.25, 1, "0.3"},
        {1.25, 1, "1.3"},
        {-1.25, 1, "-1.3"},
        {62.125, 2, "62.13"},
        {0.125, 2, "0.13"},
        {0.375, 2, "0.38"},
        {2.675, 2, "2.67"},
        {1.005, 2, "1.00"},
        {0.0625, 3, "0.063"},
        {0.03125, 4, "0.0313"},
        {9.5, 0, "10"},
        {99.5, 0, "100"},
        {999.96875, 4, "999.9688"},
        {8.5, 0, "9"},
        {4503599627370495.5, 0, "4503599627370496"},
        {403868904799699.625, 2, "403868904799699.63"},
        {-999.5, 0, "-1000"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(fixed_text(row.value, row.precision), row.text) << row.value;
}

TEST(DecimalDigits, HalvesOfEveryBinaryPlaceGoOutwardsByOneUnit)
{
    // k / 2^(p + 1) with k odd lies half a unit of place p above the lower text. All its digits fit
    // into 64 bits, where the rounding is plain arithmetic.
    const auto digits = [](double value, int precision) {
        return std::stoull(fixed_digits(value, precision).digits);
    };
    for (int p = 1; p <= 19; ++p) {
        for (int k : {1, 3, 5, 7, 11, 101, 1001, 99999}) {
            const double value = std::ldexp(k, -(p + 1));
            const auto with_half = digits(value, p + 1);
            ASSERT_EQ(with_half % 10, 5u) << k << ' ' << p;
            EXPECT_EQ(digits(value, p), (with_half + 5) / 10) << k << ' ' << p;
            EXPECT_EQ(fixed_text(-value, p), "-" + fixed_text(value, p));
        }
    }
}

TEST(DecimalDigits, DigitsAreThoseOfTheBinaryValue)
{
    EXPECT_EQ(fixed_text(0.1, 55), "0.1000000000000000055511151231257827021181583404541015625");
    EXPECT_EQ(fixed_text(1e22, 1), "10000000000000000000000.0");
    EXPECT_EQ(fixed_text(0.0, 3), "0.000");
    EXPECT_EQ(fixed_text(-0.0, 1), "-0.0");
    EXPECT_EQ(fixed_text(5e-324, 3), "0.000");
    EXPECT_EQ(fixed_text(std::numeric_limits<double>::max(), 0).size(), 309u);
    EXPECT_EQ(fixed_text(5e-324, 1074).back(), '5');
    EXPECT_EQ(fixed_text(5e-324, 2000).size(), 2002u);
}

TEST(DecimalDigits, PointStandsWhereTheConversionContractSays)
{
    const struct
    {
        double value;
        int precision;
        const char* digits;
        int point;
        bool negative;
    } rows[] = {
        {12.345, 2, "1235", 2, false}, {-62.125, 2, "6213", 2, true}, {0.5, 0, "1", 1, false},
        {0.25, 0, "", 0, false},       {0.0, 0, "", 0, false},        {0.0, 3, "000", 0, false},
        {0.0123, 3, "012", 0, false},  {1e-5, 3, "000", 0, false},    {-0.0004, 3, "000", 0, true},
        {0.999, 2, "100", 1, false},   {100.0, 0, "100", 3, false},   {0.125, 0, "", 0, false},
    };
    for (const auto& row : rows) {
        const DecimalDigits digits = fixed_digits(row.value, row.precision);
        EXPECT_EQ(digits.digits, row.digits) << row.value;
        EXPECT_EQ(digits.point, row.point) << row.value;
        EXPECT_EQ(digits.negative, row.negative) << row.value;
    }
}

TEST(DecimalDigits, ScientificFormRoundsTheSameWay)
{
    const struct
    {
        double value;
        int precision;
        const char* digits;
        int exponent;
    } rows[] = {{2.5, 0, "3", 0},
                {1.25, 1, "13", 0},
                {12345.678, 3, "1235", 4},
                {9.996, 2, "100", 1},
                {0.00012345, 4, "12345", -4},
                {0.0, 2, "000", 0},
                {1e300, 20, "100000000000000005250", 300}};
    for (const auto& row : rows) {
        const auto digits = scientific_digits(row.value, row.precision);
        EXPECT_EQ(digits.digits, row.digits) << row.value;
        EXPECT_EQ(digits.exponent, row.exponent) << row.value;
    }
}

TEST(DecimalDigits, TextIsWithinHalfAUnitOfTheLastPlace)
{
    std::mt19937_64 random(20261120);
    std::uniform_real_distribution<double> coordinate(-1e7, 1e7);
    for (int i = 0; i < 20000; ++i) {
        const double value = coordinate(random);
        const int precision = i % 8;
        const double back = std::stod(fixed_text(value, precision));
        // Reading back adds at most half a unit of the double's own last place.
        ASSERT_LE(std::fabs(back - value), 0.5 * std::pow(10.0, -precision) + 1e-9) << value;
    }
}
