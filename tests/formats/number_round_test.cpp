// Rounding, bit for bit.
#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>

#include "tests/formats/double_bits.h"
#include "zorutils/formats/number_text.h"

using namespace zor_formats;

namespace {

const double infinity = std::numeric_limits<double>::infinity();
const double nan_value = std::numeric_limits<double>::quiet_NaN();

double outward(double value)
{
    return std::nextafter(value, value < 0.0 ? -infinity : infinity);
}

struct Rounded
{
    double value;
    int prec;
    double result;
};

} // namespace

TEST(RoundPrec, RoundsHalvesAwayFromZeroAndSteps)
{
    const Rounded cases[] = {
        {2.5, 0, outward(3.0)},
        {-2.5, 0, outward(-3.0)},
        {2.4, 0, outward(2.0)},
        {0.125, 2, outward(0.13)},
        {-0.125, 2, outward(-0.13)},
        {1.0, 9, outward(1.0)},
        {123456789.987654321, 9, outward(std::floor(123456789.987654321 * 1e9 + 0.5) / 1e9)},
        {0.25, 10, outward(0.25)},
        {0.25, 16, outward(0.25)},
        {149.0, -2, outward(std::floor(149.0 * 0.01 + 0.5) / 0.01)},
        {151.0, -2, outward(std::floor(151.0 * 0.01 + 0.5) / 0.01)},
        {-151.0, -2, outward(std::ceil(-151.0 * 0.01 - 0.5) / 0.01)},
        // What rounds to nothing becomes the smallest step.
        {0.1, 0, DBL_TRUE_MIN},
        {-0.1, 0, -DBL_TRUE_MIN},
        {0.0, 5, 0.0},
        {-0.0, 5, 0.0},
        {nan_value, 5, 0.0},
        // The step goes toward the largest finite value.
        {infinity, 3, DBL_MAX},
        {-infinity, 3, -DBL_MAX},
        {DBL_MAX, 3, DBL_MAX},
        {DBL_MAX, 0, DBL_MAX},
    };
    for (const Rounded& c : cases)
        EXPECT_SAME_DOUBLE(round_prec(c.value, c.prec), c.result) << c.value << " " << c.prec;
    for (int prec = -20; prec <= 20; ++prec)
        EXPECT_SAME_DOUBLE(round_prec(0.0, prec), 0.0);
}

TEST(RoundPrec, ScalesBeyondTheTableAreMadeBySquaring)
{
    // 10^23 by squaring: 10^16 * (10^4 * (10^2 * 10)).
    const double scale = 10.0 * 1e2 * 1e4 * 1e16;
    EXPECT_SAME_DOUBLE(round_prec(1.5e-23, 23), outward(std::floor(1.5e-23 * scale + 0.5) / scale));
    const double unit = 1.0 / scale;
    EXPECT_SAME_DOUBLE(round_prec(3e23, -23), outward(std::floor(3e23 * unit + 0.5) / unit));
    // 10^400 is infinite: the value times it, and that by it, is no number; so is the step.
    const double nothing = round_prec(1.0, 400);
    EXPECT_NE(nothing, nothing);
    EXPECT_NE(round_prec(1.0, INT_MIN), 1.0);
}

TEST(FormatFloat, RoundsTheFractionThroughThirtyTwoBits)
{
    const double lowest = -2147483648.0;
    const Rounded cases[] = {
        {1.26, 1, 3.0 / 10.0 + 1.0},
        {1.25, 1, 3.0 / 10.0 + 1.0},
        {-1.26, 1, -2.0 / 10.0 + -1.0},
        {-1.26, 2, -25.0 / 100.0 + -1.0},
        {2.5, 0, 3.0},
        {2.4, 0, 2.0},
        {-2.5, 0, -2.0},
        {-2.6, 0, -2.0},
        {2.6, -5, 3.0},
        {0.0, 3, 0.0},
        {0.123456, 4, 1235.0 / 10000.0},
        // A whole part outside 32 bits.
        {3e9, 0, lowest + lowest},
        {-3e9, 0, -852516351.0 + lowest},
        // A fraction that is too long.
        {0.5, 10, lowest / 1e10},
    };
    for (const Rounded& c : cases)
        EXPECT_SAME_DOUBLE(FormatFloat(c.value, c.prec), c.result) << c.value << " " << c.prec;
    EXPECT_SAME_DOUBLE(FormatFloat(nan_value, 1), lowest / 10.0 + lowest);
    EXPECT_SAME_DOUBLE(FormatFloat(0.5, INT_MAX), 0.0);
}

TEST(RoundDouble, AddsHalfAUnitAwayFromZero)
{
    const double tenth = 0.1, hundredth = 0.1 * 0.1;
    const Rounded cases[] = {
        {1.0, 0, 1.5},
        {-1.0, 0, -1.5},
        {1.0, 1, 1.0 + tenth * 0.5},
        {1.0, 2, 1.0 + hundredth * 0.5},
        {0.0, 2, -(hundredth * 0.5)},
        {-0.0, 2, -(hundredth * 0.5)},
        {1.0, 3, 1.0 + (tenth * hundredth) * 0.5},
        {1.0, -1, 1.0 + (1.0 / tenth) * 0.5},
        {-7.0, -2, -7.0 - (1.0 / hundredth) * 0.5},
    };
    for (const Rounded& c : cases)
        EXPECT_SAME_DOUBLE(RoundDouble(c.value, c.prec), c.result) << c.value << " " << c.prec;
    EXPECT_NEAR(RoundDouble(0.0, 2), -0.005, 1e-17);
    const double nothing = RoundDouble(nan_value, 2);
    EXPECT_NE(nothing, nothing);
}
