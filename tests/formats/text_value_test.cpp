// Which kind of value a text holds.
#include "zorutils/formats/text_value.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

using zor_formats::getTextValType;
using zor_test::shown;

TEST(TextValue, TheNumbersAreTheInterface)
{
    EXPECT_EQ(ttvText, 0);
    EXPECT_EQ(ttvInteger, 1);
    EXPECT_EQ(ttvReal, 2);
    EXPECT_EQ(ttvEmpty, 3);
    EXPECT_EQ(ttvDate, 4);
    EXPECT_EQ(ttvDateTime, 5);
}

TEST(TextValue, TheShapeDecides)
{
    const struct
    {
        const WCHAR* text;
        TTextValType type;
    } cases[] = {
        {nullptr, ttvEmpty},
        {ZOR_W(""), ttvEmpty},
        {ZOR_W(" \t\r\n"), ttvEmpty},
        {ZOR_W("\u00A0"), ttvEmpty},
        {ZOR_W("12"), ttvInteger},
        {ZOR_W("-12"), ttvInteger},
        {ZOR_W("-"), ttvInteger},
        {ZOR_W(" 12 "), ttvInteger},
        {ZOR_W(" - "), ttvInteger},
        {ZOR_W("000"), ttvInteger},
        {ZOR_W("12.5"), ttvReal},
        {ZOR_W("12,5"), ttvReal},
        {ZOR_W("-12.5"), ttvReal},
        {ZOR_W(" 12.5 \t"), ttvReal},
        {ZOR_W(".5"), ttvReal},
        {ZOR_W(",5"), ttvReal},
        {ZOR_W("5."), ttvReal},
        {ZOR_W("-."), ttvReal},
        {ZOR_W("-.5"), ttvReal},
        {ZOR_W(". "), ttvReal}, // something follows the point
        {ZOR_W("."), ttvText},
        {ZOR_W(","), ttvText},
        {ZOR_W("  ."), ttvText},
        {ZOR_W("1.2.3"), ttvText},
        {ZOR_W("1,2.3"), ttvText},
        {ZOR_W("1e5"), ttvText},
        {ZOR_W("+5"), ttvText},
        {ZOR_W("--5"), ttvText},
        {ZOR_W("5-"), ttvText},
        {ZOR_W("1 2"), ttvText},
        {ZOR_W("1.5 m"), ttvText},
        {ZOR_W("- 5"), ttvText},
        {ZOR_W("P1"), ttvText},
        {ZOR_W("2013-10-01"), ttvDate},
        {ZOR_W("2013-02-29"), ttvDate},
        {ZOR_W("2013-04-31"), ttvDate},
        {ZOR_W("abcd-10-01"), ttvDate}, // the year is not read
        {ZOR_W("2013-02-30"), ttvText},
        {ZOR_W("2013-13-01"), ttvText},
        {ZOR_W("2013-00-01"), ttvText},
        {ZOR_W("2013-10-00"), ttvText},
        {ZOR_W("2013-10-32"), ttvText},
        {ZOR_W("abcd-ef-gh"), ttvText},
        {ZOR_W(" 2013-10-01"), ttvText}, // dates stand alone
        {ZOR_W("2013-10-01 "), ttvText},
        {ZOR_W("2013-1-1"), ttvText},
        {ZOR_W("2013/10/01"), ttvText},
        {ZOR_W("2013-10-01 08:29:35"), ttvDateTime},
        {ZOR_W("2013-10-01 24:59:59"), ttvDateTime},
        {ZOR_W("2013-10-01 25:00:00"), ttvText},
        {ZOR_W("2013-10-01 08:60:00"), ttvText},
        {ZOR_W("2013-10-01 08:00:60"), ttvText},
        {ZOR_W("2013-02-30 08:29:35"), ttvText},
        {ZOR_W("2013-10-01T08:29:35"), ttvText},
        {ZOR_W("2013-10-01 08:29"), ttvText},
    };
    for (const auto& c : cases)
        EXPECT_EQ(getTextValType(c.text), c.type) << shown(c.text);
}
