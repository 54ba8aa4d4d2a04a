// Text to angles.
#include <gtest/gtest.h>

#include <string>

#include "tests/formats/double_bits.h"
#include "tests/support/text.h"
#include "zorutils/formats/angle_text.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

namespace {

// Degrees, minutes and seconds in the one order of operations that is required.
double dms(double deg, double min, double sec)
{
    return (sec / 60.0 + min) / 60.0 + deg;
}

struct Angle
{
    const WCHAR* text;
    double degrees;
    int rest; // the index where reading stops; -1 for the end of the text
};

template <size_t N>
void expect_angles(const Angle (&angles)[N])
{
    for (const Angle& angle : angles) {
        SCOPED_TRACE(shown(angle.text));
        double degrees = 77.0;
        const WCHAR* rest = nullptr;
        EXPECT_TRUE(StringToDegree(angle.text, degrees, &rest));
        EXPECT_SAME_DOUBLE(degrees, angle.degrees);
        const int length = Wide(angle.text).GetLength();
        EXPECT_EQ(rest - angle.text, angle.rest < 0 ? length : angle.rest);
        EXPECT_TRUE(is_str_degree(angle.text));
        degrees = 77.0;
        EXPECT_TRUE(StringToDegree(angle.text, degrees, nullptr));
        EXPECT_SAME_DOUBLE(degrees, angle.degrees);
    }
}

} // namespace

TEST(StringToDegree, TheGrammar)
{
    expect_angles({
        {ZOR_W("12"), 12.0, -1},
        {ZOR_W("12.3"), dms(12, 30, 0), -1},
        {ZOR_W("12.05"), dms(12, 5, 0), -1},
        {ZOR_W("12.3045"), dms(12, 30, 45), -1},
        {ZOR_W("12.30451"), dms(12, 30, 45.1), -1},
        {ZOR_W("12 30 45.25"), dms(12, 30, 45.25), -1},
        {ZOR_W("-12.3045"), -dms(12, 30, 45), -1},
        {ZOR_W("abc-12.30"), -dms(12, 30, 0), -1},
        {ZOR_W("12.5\u00B0"), 12.5, -1},
        {ZOR_W("12\u00B030'"), dms(12, 30, 0), -1},
        {ZOR_W("12\u00B030'45.05\""), dms(12, 30, 45 + 5 / 10.0 / 10.0), -1},
        {ZOR_W("30'"), dms(0, 30, 0), -1},
        {ZOR_W("45\""), dms(0, 0, 45), -1},
    });
}

TEST(StringToDegree, ThePackedForm)
{
    expect_angles({
        // Tens, when a digit alone stands at the very end.
        {ZOR_W(".5"), dms(0, 50, 0), -1},
        {ZOR_W("12.305"), dms(12, 30, 50), -1},
        {ZOR_W("12.30 5"), dms(12, 30, 5), -1},
        {ZOR_W("12.3 "), dms(12, 3, 0), -1},
        {ZOR_W("12.5 30"), dms(12, 5, 30), -1},
        {ZOR_W("12.305 "), dms(12, 30, 5), -1},
        {ZOR_W("12 3"), dms(12, 30, 0), -1},
        // Any separator is as good as another, and many are as good as one.
        {ZOR_W("12 30 45"), dms(12, 30, 45), -1},
        {ZOR_W("12-30-45"), dms(12, 30, 45), -1},
        {ZOR_W("12/30/45"), dms(12, 30, 45), -1},
        {ZOR_W("12,3045"), dms(12, 30, 45), -1},
        {ZOR_W("12::30...45,,25"), dms(12, 30, 45.25), -1},
        {ZOR_W("123 45 30.5"), dms(123, 45, 30.5), -1},
        {ZOR_W("12.304512"), dms(12, 30, 45.12), -1},
        {ZOR_W("12 30 45 25"), dms(12, 30, 45.25), -1},
        {ZOR_W("12 30 45 25 99"), dms(12, 30, 45.25), 11},
        // Carries.
        {ZOR_W("12.3075"), dms(12, 31, 15), -1},
        {ZOR_W("12.75"), dms(13, 15, 0), -1},
        {ZOR_W("12.5975"), dms(13, 0, 15), -1},
        {ZOR_W("12.9999"), dms(13, 40, 39), -1},
        // A letter ends it.
        {ZOR_W("12.30N"), dms(12, 30, 0), 5},
        {ZOR_W("12.3N"), dms(12, 3, 0), 4},
        {ZOR_W("12N30"), 12.0, 2},
        {ZOR_W("12.30 N"), dms(12, 30, 0), 6},
        {ZOR_W("12.3045.5E"), dms(12, 30, 45.5), 9},
        // What stands in front.
        {ZOR_W("N 12.30"), dms(12, 30, 0), -1},
        {ZOR_W("+12"), 12.0, -1},
        {ZOR_W(" \t12"), 12.0, -1},
        {ZOR_W("x.3"), dms(0, 30, 0), -1},
        {ZOR_W("-"), -0.0, -1},
        {ZOR_W("--12"), -dms(0, 12, 0), -1},
        {ZOR_W("."), 0.0, -1},
        {ZOR_W("-x"), -0.0, 1},
        {ZOR_W("-0"), -0.0, -1},
        // No limit of degrees but the integer's.
        {ZOR_W("361"), 361.0, -1},
        {ZOR_W("99999999999"), 2147483647.0, -1},
        {ZOR_W("2147483647.9999"), dms(2147483648.0, 40, 39), -1},
        // A digit of another script begins an angle, but it is no digit of one.
        {ZOR_W("\u0663.5"), dms(0, 50, 0), -1},
    });
}

TEST(StringToDegree, TheMarkedForm)
{
    expect_angles({
        {ZOR_W("12\u00B0"), 12.0, -1},
        {ZOR_W("-12\u00B030'"), -dms(12, 30, 0), -1},
        {ZOR_W("x12\u00B0"), 12.0, -1},
        {ZOR_W("12\u00B030.5'"), dms(12, 30.5, 0), -1},
        {ZOR_W("12,5\u00B0"), 12.5, -1},
        {ZOR_W("12.5\u00B030'"), dms(12.5, 30, 0), -1},
        {ZOR_W("12\u00B030'45\""), dms(12, 30, 45), -1},
        {ZOR_W("12\u00B030'45.5\""), dms(12, 30, 45.5), -1},
        {ZOR_W("12\u00B030'45,5\""), dms(12, 30, 45.5), -1},
        {ZOR_W("12\u00B030'45.\""), dms(12, 30, 45), -1},
        {ZOR_W("12\u00B030'45.0\""), dms(12, 30, 45), -1},
        {ZOR_W("12\u00B030'45.005\""), dms(12, 30, 45 + 5 / 10.0 / 10.0 / 10.0), -1},
        {ZOR_W("12\u00B030'45.123\""), dms(12, 30, 45 + 123 / 10.0 / 10.0 / 10.0), -1},
        {ZOR_W("12\u00B030'.5\""), dms(12, 30, 0.5), -1},
        {ZOR_W("12\u00B045\""), dms(12, 0, 45), -1},
        {ZOR_W("12\u00B0\""), 12.0, -1},
        {ZOR_W("12\u00B0'\""), 12.0, -1},
        {ZOR_W("30'45\""), dms(0, 30, 45), -1},
        {ZOR_W("30.25'"), dms(0, 30.25, 0), -1},
        {ZOR_W("0.5\""), dms(0, 0, 0.5), -1},
        // Blanks in front of a part are skipped.
        {ZOR_W("12\u00B0 30' 45\""), dms(12, 30, 45), -1},
        // Carries.
        {ZOR_W("12\u00B075'"), dms(13, 15, 0), -1},
        {ZOR_W("12\u00B030'75\""), dms(12, 31, 15), -1},
        {ZOR_W("12\u00B059'60\""), dms(13, 0, 0), -1},
        {ZOR_W("12\u00B0180'"), dms(15, 0, 0), -1},
        {ZOR_W("3600\""), dms(1, 0, 0), -1},
        // Reading stops behind the last sign.
        {ZOR_W("12\u00B0x"), 12.0, 3},
        {ZOR_W("12\u00B030'N"), dms(12, 30, 0), 6},
        {ZOR_W("12\u00B030'45\" E"), dms(12, 30, 45), 9},
        {ZOR_W("12\u00B030"), 12.0, 3},
        // A sign at the front counts as 0 of its kind.
        {ZOR_W("-\u00B030'"), -dms(0, 30, 0), -1},
        {ZOR_W("-'45\""), -dms(0, 0, 45), -1},
        {ZOR_W("-\""), -0.0, -1},
        // The decimal separator of the seconds is looked for behind their sign, too.
        {ZOR_W("12\u00B030'45\" 0.5"), dms(12, 30, 45.5), 9},
        {ZOR_W("45\".5\""), dms(0, 0, 45.5), 3},
        // Zeros up to the end of the text are no fraction, and the first sign counts.
        {ZOR_W("45\" .00"), dms(0, 0, 45), 3},
        {ZOR_W("12\u00B013\u00B0"), 12.0, 3},
        // A word may follow a number in front of its sign.
        {ZOR_W("12deg\u00B0"), 12.0, -1},
    });
}

TEST(StringToDegree, WhatIsNoAngle)
{
    for (const WCHAR* text : {
             static_cast<const WCHAR*>(nullptr),
             ZOR_W(""),
             ZOR_W("abc"),
             ZOR_W(" "),
             ZOR_W("+"),
             ZOR_W("\u00B0'\""),
             // Signs out of order.
             ZOR_W("12'30\u00B0"),
             ZOR_W("12\"30\u00B0"),
             ZOR_W("12\"30'"),
             // Parts that do not begin with a number.
             ZOR_W(".5\u00B0"),
             ZOR_W("-x\u00B0"),
             ZOR_W("12\u00B0x'"),
             ZOR_W("12\u00B0-5'"),
             ZOR_W("12\u00B0.5'"),
             ZOR_W("12\u00B030'x\""),
             ZOR_W("12\u00B030'-5\""),
             ZOR_W("12\u00B030'45.x\""),
             ZOR_W("12\u00B030'45. -5\""),
             // Numbers from 2147483648 up look negative.
             ZOR_W("2147483648\u00B0"),
             ZOR_W("2147483648'"),
             ZOR_W("2147483648\""),
             ZOR_W("1.2147483648\""),
         }) {
        SCOPED_TRACE(shown(text));
        double degrees = 77.0;
        const WCHAR* const untouched = ZOR_W("x");
        const WCHAR* rest = untouched;
        EXPECT_FALSE(StringToDegree(text, degrees, &rest));
        EXPECT_SAME_DOUBLE(degrees, 0.0);
        EXPECT_EQ(rest, untouched);
        EXPECT_FALSE(is_str_degree(text));
    }
}

TEST(StringToDegree, AFloodOfMinutesEnds)
{
    double degrees = 0.0;
    EXPECT_TRUE(StringToDegree(ZOR_W("2147483647'"), degrees, nullptr));
    EXPECT_SAME_DOUBLE(degrees, dms(35791394, 7, 0));
    EXPECT_TRUE(StringToDegree(ZOR_W("1e300'"), degrees, nullptr));
    EXPECT_NEAR(degrees, 1e300 / 60.0, 1e285);
    EXPECT_TRUE(StringToDegree(ZOR_W("1e999'"), degrees, nullptr));
    EXPECT_GT(degrees, 1e308);
}

TEST(CheckDegreeSuffix, ATrailingLetterMustBeAllowed)
{
    const struct
    {
        const WCHAR* text;
        const WCHAR* allowed;
        const WCHAR* flagged;
        bool result, is_flagged;
    } cases[] = {
        {nullptr, ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W(""), ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W("S"), ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W("X"), ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W("12.30"), ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W("12.30 "), ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W("12.30N"), ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W("12.30S"), ZOR_W("NS"), ZOR_W("S"), true, true},
        {ZOR_W("12.30 S \t"), ZOR_W("NS"), ZOR_W("S"), true, true},
        {ZOR_W("12.30E"), ZOR_W("NS"), ZOR_W("S"), false, false},
        {ZOR_W("12.30s"), ZOR_W("NS"), ZOR_W("S"), false, false},
        {ZOR_W("12.30E"), ZOR_W("NS"), ZOR_W("E"), false, false},
        {ZOR_W("12.30N"), nullptr, ZOR_W("N"), false, false},
        {ZOR_W("12.30N"), ZOR_W("N"), nullptr, true, false},
        {ZOR_W("12.30"), nullptr, nullptr, true, false},
        {ZOR_W("5S"), ZOR_W("NS"), ZOR_W("S"), true, true},
        {ZOR_W("5X"), ZOR_W("NS"), ZOR_W("S"), false, false},
        // Walked back to the second character: no check.
        {ZOR_W("5X "), ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W("5S "), ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W("X   "), ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W("    "), ZOR_W("NS"), ZOR_W("S"), true, false},
        {ZOR_W("12X "), ZOR_W("NS"), ZOR_W("S"), false, false},
        {ZOR_W("12\""), ZOR_W("NS"), ZOR_W("S"), true, false},
    };
    for (const auto& c : cases) {
        bool is_flagged = !c.is_flagged;
        EXPECT_EQ(CheckDegreeSuffix(c.text, c.allowed, c.flagged, is_flagged), c.result)
            << shown(c.text);
        EXPECT_EQ(is_flagged, c.is_flagged) << shown(c.text);
    }
}
