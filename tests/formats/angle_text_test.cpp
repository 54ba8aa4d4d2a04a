// Angles to text, and bearings.
#include "zorutils/formats/angle_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "tests/formats/double_bits.h"
#include "tests/support/text.h"
#include "zorutils/formats/number_text.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

namespace {

// As DegreeToString prints it in a locale with a decimal point, with "d" for the degree sign.
std::string printed(double seconds, bool show_sign, int prec)
{
    return shown(DegreeToStringEx(seconds, ZOR_W("d"), ZOR_W("'"), ZOR_W("\""), ZOR_W("."),
                                  show_sign, prec));
}

} // namespace

TEST(ParseDegree, SplitsAndRoundsWithCarry)
{
    const struct
    {
        double seconds;
        int prec;
        bool negative;
        int deg, min;
        double sec;
    } cases[] = {
        {0.0, 0, false, 0, 0, 0.0},
        {-0.0, 0, false, 0, 0, -0.0},
        {43507.25, 2, false, 12, 5, std::floor(7.25 / (1.0 / 10.0 / 10.0)) * (1.0 / 10.0 / 10.0)},
        {43507.25, 0, false, 12, 5, 7.0},
        {43507.5, 0, false, 12, 5, 8.0},
        {43507.49, 0, false, 12, 5, 7.0},
        {43507.49, -3, false, 12, 5, 7.0},
        {-43507.5, 0, true, 12, 5, 8.0},
        {59.5, 0, false, 0, 1, 0.0},
        {3599.5, 0, false, 1, 0, 0.0},
        {3599.5, -4, false, 1, 0, 0.0},
        {3599.999, 2, false, 1, 0, 0.0},
        {3599.994, 2, false, 0, 59, 5999.0 * (1.0 / 10.0 / 10.0)},
        {1295999.9999, 3, false, 360, 0, 0.0},
        {1800000.0, 0, false, 500, 0, 0.0},
        // A tenth is a little more than 1/10 in binary: this is no exact half of it, and goes down.
        {0.25, 1, false, 0, 0, 2.0 * (1.0 / 10.0)},
        {0.26, 1, false, 0, 0, 3.0 * (1.0 / 10.0)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.seconds) + " " + std::to_string(c.prec));
        bool negative = !c.negative;
        int deg = -1, min = -1;
        double sec = -1.0;
        ParseDegree(c.seconds, negative, deg, min, sec, c.prec);
        EXPECT_EQ(negative, c.negative);
        EXPECT_EQ(deg, c.deg);
        EXPECT_EQ(min, c.min);
        EXPECT_SAME_DOUBLE(sec, c.sec);
    }
}

TEST(ParseDegree, MeaninglessAnglesDoNoHarm)
{
    for (double seconds : {1e300, -1e300, std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN(), 2147483647.0 * 3600 + 3599.9})
        for (int prec : {-2147483647, -4, 0, 8, 400, 2147483647}) {
            bool negative;
            int deg, min;
            double sec;
            ParseDegree(seconds, negative, deg, min, sec, prec);
            EXPECT_EQ(negative, seconds < 0.0);
            ParseDMS(seconds, negative, deg, min, sec, prec);
            EXPECT_EQ(negative, seconds < 0.0);
        }
}

TEST(ParseDMS, SplitsWithoutCarry)
{
    const struct
    {
        double packed;
        int prec;
        bool negative;
        int deg, min;
        double sec;
    } cases[] = {
        {0.0, 0, false, 0, 0, 0.0},
        {12.3, 0, false, 12, 30, 0.0},
        {12.3045, 0, false, 12, 30, 45.0},
        {-12.3045, 0, true, 12, 30, 45.0},
        {12.304525, 2, false, 12, 30, 45.25},
        {12.30452, 0, false, 12, 30, 45.0},
        {12.30455, 0, false, 12, 30, 46.0},
        {12.30455, 1, false, 12, 30, 45.5},
        {12.30455, -3, false, 12, 30, 46.0},
        // Digits that say 60 give 60.
        {12.6, 0, false, 12, 60, 0.0},
        {12.3060, 0, false, 12, 30, 60.0},
        {12.99995, 0, false, 13, 0, 0.0},
        {12.59599, 0, false, 12, 59, 60.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.packed) + " " + std::to_string(c.prec));
        bool negative = !c.negative;
        int deg = -1, min = -1;
        double sec = -1.0;
        ParseDMS(c.packed, negative, deg, min, sec, c.prec);
        EXPECT_EQ(negative, c.negative);
        EXPECT_EQ(deg, c.deg);
        EXPECT_EQ(min, c.min);
        EXPECT_NEAR(sec, c.sec, 1e-11);
        // Its very arithmetic.
        double scale = 10000.0;
        for (int i = 0; i < c.prec; ++i)
            scale *= 10.0;
        const double t = std::floor(std::fabs(c.packed) * scale + 0.5) / scale;
        const double u = std::floor((t - deg) * 100.0 * (scale / 100.0) + 0.5) / (scale / 100.0);
        EXPECT_SAME_DOUBLE(sec, (u - min) * 100.0);
    }
}

TEST(DegreeToString, EveryRowOfThePrecisions)
{
    const double angle = 12 * 3600 + 5 * 60 + 7.25;
    const struct
    {
        int prec;
        const char* text;
    } cases[] = {
        {4, "12d05'07.2500\""}, {2, "12d05'07.25\""}, {1, "12d05'07.2\""},
        {0, "12d05'07\""},      {-1, "12d05'07\""},   {-2, "12d05'"},
        {-3, "12d05'"},         {-4, "12d"},          {-5, "12d"},
        {-100, "12d"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(printed(angle, true, c.prec), c.text) << c.prec;
}

TEST(DegreeToString, NeverShowsSixtyAndNoMinusBeforeZero)
{
    const struct
    {
        double seconds;
        bool show_sign;
        int prec;
        const char* text;
    } cases[] = {
        {3599.999, true, 2, "1d00'00.00\""},
        {59.999, true, 2, "0d01'00.00\""},
        {59.994, true, 2, "0d00'59.99\""},
        {9.996, true, 2, "0d00'10.00\""},
        {9.994, true, 2, "0d00'09.99\""},
        {-0.001, true, 2, "0d00'00.00\""},
        {-0.005, true, 2, "-0d00'00.01\""},
        {-3600.0, false, 0, "1d00'00\""},
        {-3600.0, true, 0, "-1d00'00\""},
        {-60.0, true, 0, "-0d01'00\""},
        {-1.0, true, 0, "-0d00'01\""},
        {-1.0, true, -2, "0d00'"},
        {-60.0, true, -2, "-0d01'"},
        {-60.0, true, -4, "0d"},
        {-3600.0, true, -4, "-1d"},
        // Rounded seconds carry even where they are not shown; others do not.
        {59.5, true, -2, "0d01'"},
        {59.4, true, -2, "0d00'"},
        {3599.5, true, -4, "1d"},
        {3570.0, true, -4, "0d"},
        {0.0, true, 0, "0d00'00\""},
        {1296000.0, true, 0, "360d00'00\""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(printed(c.seconds, c.show_sign, c.prec), c.text) << c.seconds << " " << c.prec;
}

TEST(DegreeToString, UsesTheDegreeSignAndTheLocalesDecimalSign)
{
    const std::string sign = shown(DecimalSignString());
    EXPECT_EQ(shown(DegreeToString(43507.25, true, 2)), "12\\u00B005'07" + sign + "25\"");
    EXPECT_EQ(shown(DegreeToString(-43507.25, false, 2)), "12\\u00B005'07" + sign + "25\"");
    EXPECT_EQ(shown(DMSToString(-12.050725, true, 2)), "-12\\u00B005'07" + sign + "25\"");
    EXPECT_EQ(shown(DMSToString(12.6, true, 0)), "12\\u00B060'00\"");
    EXPECT_EQ(shown(DMSToString(12.050725, true, -3)), "12\\u00B005'");
    EXPECT_EQ(shown(DMSToString(-0.00001, true, 0)), "0\\u00B000'00\"");
}

TEST(DegreeToString, TakesSignsOfAnyLength)
{
    const std::string sign(300, 'g');
    EXPECT_EQ(shown(DegreeToStringEx(43507.25, Wide(sign.c_str()), ZOR_W(""), ZOR_W(" sec"),
                                     ZOR_W("<>"), true, 1)),
              "12" + sign + "0507<>2 sec");
}

TEST(DegreeToBearing, EveryQuadrantAndTie)
{
    const struct
    {
        double degrees, bearing;
        const char* prefix;
        const char* suffix;
    } cases[] = {
        {0.0, 0.0, "N", "E"},
        {-0.0, -0.0, "N", "E"},
        {45.5, 45.5, "N", "E"},
        {90.0, 90.0, "N", "E"},
        {std::nextafter(90.0, 91.0), 180.0 - std::nextafter(90.0, 91.0), "S", "E"},
        {135.0, 45.0, "S", "E"},
        {180.0, 0.0, "S", "E"},
        {180.25, 0.25, "S", "W"},
        {270.0, 90.0, "S", "W"},
        {270.5, 89.5, "N", "W"},
        {360.0, 0.0, "N", "W"},
        {-45.0, 45.0, "N", "W"},
        {-90.0, 90.0, "S", "W"},
        {-180.0, 0.0, "S", "E"},
        {-270.0, 90.0, "N", "E"},
        {-360.0, 0.0, "N", "E"},
        // One turn only.
        {-400.0, 220.0, "S", "E"},
        {-1000.0, 820.0, "S", "E"},
        {360.5, 360.5, "?", "?"},
        {1000.0, 1000.0, "?", "?"},
        {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN(), "?",
         "?"},
    };
    for (const auto& c : cases) {
        Wide prefix(ZOR_W("?")), suffix(ZOR_W("?"));
        EXPECT_SAME_DOUBLE(DegreeToBearing(c.degrees, &prefix, &suffix), c.bearing);
        EXPECT_EQ(shown(prefix), c.prefix) << c.degrees;
        EXPECT_EQ(shown(suffix), c.suffix) << c.degrees;
        EXPECT_SAME_DOUBLE(DegreeToBearing(c.degrees, nullptr, nullptr), c.bearing);
        Wide alone(ZOR_W("?"));
        DegreeToBearing(c.degrees, nullptr, &alone);
        EXPECT_EQ(shown(alone), c.suffix);
        alone = ZOR_W("?");
        DegreeToBearing(c.degrees, &alone, nullptr);
        EXPECT_EQ(shown(alone), c.prefix);
    }
}
