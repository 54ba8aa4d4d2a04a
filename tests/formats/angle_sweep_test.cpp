// Over the whole circle: no 60, and what was printed reads back.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "tests/support/text.h"
#include "zorutils/formats/angle_text.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

namespace {

constexpr int circle = 1296000; // arc seconds

// The number behind `from` and in front of `to`; 0 where a mark is missing.
int field_between(const Wide& text, WCHAR from, WCHAR to)
{
    const int start = text.Find(from), end = text.Find(to);
    if (start < 0 || end < 0)
        return 0;
    int value = 0;
    for (int i = start + 1; i < end && text[i] >= '0' && text[i] <= '9'; ++i)
        value = value * 10 + (text[i] - '0');
    return value;
}

// Degrees and minutes are cut and not rounded, so what was printed may be short of the angle by
// nearly a whole unit, or go beyond by the rounding to whole seconds.
struct Tolerance
{
    double short_by, beyond_by;
};

Tolerance tolerance_of(int prec)
{
    constexpr double noise = 2.5e-10; // of the angle in decimal degrees
    const double half = std::pow(10.0, -std::max(prec, 0)) / 2 + noise;
    if (prec <= -4)
        return {3600.0 - half, half};
    if (prec <= -2)
        return {60.0 - half, half};
    return {half, half};
}

bool reads_back(double seconds, int prec)
{
    const Wide text = DegreeToString(seconds, true, prec);
    double degrees = 0.0;
    const WCHAR* rest = nullptr;
    const bool read = StringToDegree(text, degrees, &rest) && *rest == 0;
    const double difference = seconds - degrees * 3600.0;
    const Tolerance tolerance = tolerance_of(prec);
    const bool good = read && difference <= tolerance.short_by &&
                      -difference <= tolerance.beyond_by && field_between(text, 0xB0, '\'') < 60 &&
                      field_between(text, '\'', '"') < 60;
    EXPECT_TRUE(good) << shown(text) << " for " << seconds << " with " << prec << ": "
                      << difference;
    return good;
}

} // namespace

TEST(AngleSweep, EveryWholeSecondOfTheCircle)
{
    for (int second = 0; second <= circle; ++second)
        if (!reads_back(second, 0))
            return;
}

TEST(AngleSweep, FractionsAtEveryPrecision)
{
    // In units of the last place; a stride that meets every second of the minute and every minute.
    const double fractions[] = {0.0, 0.25, 0.49, 0.4999, 0.5, 0.5001, 0.51, 0.75, 0.999, 0.999999};
    constexpr int stride = 241;
    for (int prec = -4; prec <= 8; ++prec) {
        const double unit = std::pow(10.0, -std::max(prec, 0));
        for (int second = 0; second < circle; second += stride)
            for (double fraction : fractions)
                if (!reads_back(second + fraction * unit, prec))
                    return;
    }
}

TEST(AngleSweep, TheLastUnitsOfEveryMinuteAtEveryPrecision)
{
    const double below[] = {2.0, 1.5, 1.0, 0.75, 0.51, 0.5, 0.49, 0.25, 0.01};
    constexpr int stride = 11; // minutes
    for (int prec = -4; prec <= 8; ++prec) {
        const double unit = std::pow(10.0, -std::max(prec, 0));
        for (int minute = 1; minute <= circle / 60; minute += stride)
            for (double units : below)
                if (!reads_back(minute * 60.0 - units * unit, prec))
                    return;
    }
}

TEST(AngleSweep, NegativeAnglesMirrorPositiveOnes)
{
    constexpr int stride = 1009;
    for (int prec = -4; prec <= 8; ++prec)
        for (int second = 1; second < circle; second += stride) {
            const double seconds = second + 0.123456789;
            const std::string positive = shown(DegreeToString(seconds, true, prec));
            const std::string negative = shown(DegreeToString(-seconds, true, prec));
            const bool zero = positive.find_first_of("123456789", 0) == std::string::npos ||
                              (prec <= -4 && seconds < 3600.0) || (prec <= -2 && seconds < 60.0);
            ASSERT_EQ(negative, (zero ? "" : "-") + positive) << prec;
        }
}
