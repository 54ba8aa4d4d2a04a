// The common printer of angles.
#include "zorutils/formats/angle_text_internal.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/text.h"

using namespace zor_formats;
using zor_test::shown;

namespace {

std::string fields(bool negative, int deg, int min, double sec, bool show_sign, int prec)
{
    return shown(AngleFieldsToString(negative, deg, min, sec, ZOR_W("d"), ZOR_W("'"), ZOR_W("\""),
                                     ZOR_W("."), show_sign, prec));
}

} // namespace

TEST(AngleFields, SecondsWithinTheMarginOfTenGetNoLeadingZero)
{
    EXPECT_EQ(fields(false, 1, 2, 10.0 - 0.9e-12, true, 2), "1d02'10.00\"");
    // Outside of the margin the zero stands, whatever is printed behind it.
    EXPECT_EQ(fields(false, 1, 2, 10.0 - 1.2e-12, true, 2), "1d02'010.00\"");
    EXPECT_EQ(fields(false, 1, 2, 10.0 + 0.9e-12, true, 2), "1d02'10.00\"");
    EXPECT_EQ(fields(false, 1, 2, 9.99, true, 2), "1d02'09.99\"");
    EXPECT_EQ(fields(false, 1, 2, 0.0, true, 2), "1d02'00.00\"");
}

TEST(AngleFields, FieldsArePrintedAsTheyAre)
{
    EXPECT_EQ(fields(false, 400, 60, 60.0, true, 1), "400d60'60.0\"");
    EXPECT_EQ(fields(true, 0, 0, 0.04, true, 1), "0d00'00.0\"");
    EXPECT_EQ(fields(true, 0, 0, 0.05, true, 1), "-0d00'00.1\"");
    EXPECT_EQ(fields(true, 0, 9, 0.0, true, 1), "-0d09'00.0\"");
    EXPECT_EQ(fields(true, 0, 9, 5.0, true, -4), "0d");
    EXPECT_EQ(fields(true, 7, 9, 5.0, true, -4), "-7d");
    EXPECT_EQ(fields(true, 7, 9, 5.0, false, 0), "7d09'05\"");
}

TEST(DMSToStringEx, PrintsPackedAnglesWithTheSignsGiven)
{
    EXPECT_EQ(
        shown(DMSToStringEx(-12.050725, ZOR_W("d"), ZOR_W("m"), ZOR_W("s"), ZOR_W(","), true, 2)),
        "-12d05m07,25s");
    // The seconds come out as a close value below 10, within the margin.
    EXPECT_EQ(shown(DMSToStringEx(12.001, ZOR_W("d"), ZOR_W("m"), ZOR_W("s"), ZOR_W("."), true, 2)),
              "12d00m10.00s");
}
