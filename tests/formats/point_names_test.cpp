// Names of survey points.
#include "zorutils/formats/point_names.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "tests/support/text.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

namespace {

Wide wide(const std::string& ascii)
{
    return Wide(ascii.c_str());
}

} // namespace

TEST(PointNames, TheNextNameOfASequence)
{
    const std::string nines(255, '9'), ten_to_254 = "1" + std::string(254, '0');
    const struct
    {
        std::string name;
        int increment;
        bool result;
        std::string next;
    } cases[] = {
        {"P9", 1, true, "P10"},
        {"P09", 1, true, "P10"},
        {"A0099", 1, true, "A0100"},
        {"A099", 1, true, "A100"},
        {"A99", 1, true, "A100"},
        {"A010", -1, true, "A09"},
        {"A10", -1, true, "A9"},
        {"A100", -1, true, "A99"},
        {"ABC", 1, true, "ABC1"},
        {"ABC", -1, false, "ABC"},
        {"", 5, true, "5"},
        {"", -5, false, ""},
        {"AB000", 1, true, "AB001"},
        {"AB000", 10, true, "AB0010"},
        {"AB000", -1, false, "AB000"},
        {"0", 1, true, "1"},
        {"0", -1, false, "0"},
        {"000", 1, true, "001"},
        {"007", 3, true, "010"},
        {"007", 993, true, "01000"},
        {"007", -7, true, "000"},
        {"P1", -1, true, "P0"},
        {"P1", -2, false, "P1"},
        {"P5", 0, false, "P5"},
        {"STA0099", 1, true, "STA0100"},
        {"A-001", 1, true, "A-002"},
        {"A-1", -1, true, "A-0"},
        {"12A", 1, true, "12A1"},
        {"12A7", 1, true, "12A8"},
        {"P1 ", 1, true, "P1 1"},
        {"P9", INT_MAX, true, "P2147483656"},
        {"P2147483648", -INT_MAX, true, "P1"},
        {"P2147483648", INT_MIN, false, "P2147483648"},
        {"99999999999999999999", 1, true, "100000000000000000000"},
        {nines, 1, true, "1" + std::string(255, '0')},
        {nines, -1, true, std::string(254, '9') + "8"},
        {"P0" + nines, 1, true, "P1" + std::string(255, '0')},
        {nines + "9", 1, false, nines + "9"},
        {"1" + std::string(255, '0'), -1, false, "1" + std::string(255, '0')},
        {"P" + ten_to_254, 1, true, "P1" + std::string(253, '0') + "1"},
        // Zeros in front are no significant digits.
        {std::string(300, '0') + "7", 1, true, std::string(300, '0') + "8"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name + " and " + std::to_string(c.increment));
        Wide name = wide(c.name);
        const Wide shares_the_block = name;
        EXPECT_EQ(DoIncPtno(name, c.increment), c.result);
        EXPECT_EQ(shown(name), c.next);
        EXPECT_EQ(shown(shares_the_block), c.name);
    }
}

TEST(PointNames, OnlyAsciiDigitsCount)
{
    Wide name(ZOR_W("P\u0663"));
    EXPECT_TRUE(DoIncPtno(name, 1));
    EXPECT_EQ(shown(name), "P\\u06631");
    Wide low_byte(ZOR_W("P\u0131"));
    EXPECT_TRUE(DoIncPtno(low_byte, 1));
    EXPECT_EQ(shown(low_byte), "P\\u01311");
}

TEST(PointNames, AdmissibleAreAsciiLettersDigitsAndTheUnderscore)
{
    const std::string admissible =
        "_0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    for (int c = 0; c < 0x10000; ++c) {
        const bool expected = c < 128 && admissible.find(static_cast<char>(c)) != std::string::npos;
        EXPECT_EQ(IsAdmisibleCharacter(static_cast<WCHAR>(c)), expected) << c;
    }
}

TEST(PointNames, ValidIsFromOneToFortyAdmissibleCharacters)
{
    const struct
    {
        std::string name;
        bool valid;
    } cases[] = {
        {"", false},
        {"a", true},
        {"_P1", true},
        {std::string(40, 'a'), true},
        {"a b", false},
        {std::string(41, 'a'), false},
        {"a-1", false},
        {"a.1", false},
        {"a" + std::string(1, '\x7f'), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Wide name = wide(c.name);
        EXPECT_EQ(IsValidName(name), c.valid);
        EXPECT_EQ(IsValidFilename(name), c.valid);
        EXPECT_EQ(shown(name), shown(wide(c.name)));
    }
    EXPECT_FALSE(IsValidName(ZOR_W("\u00e9")));
}

TEST(PointNames, RepairReplacesHarmfulCharactersAndNothingElse)
{
    const std::string harmful = "!,?%*@#$^&'\"\\/|~;[]{}()<>`\t\r\n+=";
    for (int c = 1; c < 0x180; ++c) {
        const WCHAR text[] = {'a', static_cast<WCHAR>(c), 0};
        const bool replaced = c < 128 && harmful.find(static_cast<char>(c)) != std::string::npos;
        const WCHAR expected[] = {'a', replaced ? WCHAR('_') : static_cast<WCHAR>(c), 0};
        EXPECT_EQ(shown(MakeNameCorrect(text, 40)), shown(expected));
    }
}

TEST(PointNames, RepairCutsToTheLengthGiven)
{
    const struct
    {
        const char* name;
        int length;
        const char* correct;
    } cases[] = {
        {"", 0, ""},
        {"", 5, ""},
        {"a b", 40, "a b"},
        {"a:b-c.d", 40, "a:b-c.d"},
        {"abcd", 4, "abcd"},
        {"abcd", 3, "abc"},
        {"a+b+c", 3, "a_b"},
        {"abc", 0, ""},
        {"Church (old)", 40, "Church _old_"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(shown(MakeNameCorrect(wide(c.name), c.length)), c.correct);
}

TEST(PointNames, RepairPassesOverZeroCharactersAndLeavesItsArgument)
{
    const Wide name(ZOR_W("a\0+b"), 4);
    EXPECT_EQ(shown(MakeNameCorrect(name, 40)), "a\\u0000_b");
    EXPECT_EQ(shown(name), "a\\u0000+b");
}

TEST(PointNames, LoneAmpersandsAreDoubledWithTheDisplacedTwinThatIsRequired)
{
    const struct
    {
        const char* text;
        const char* shown;
    } cases[] = {
        {"", ""},
        {"abc", "abc"},
        {"&", "&&"},
        {"a&b", "a&&b"},
        {"&a", "&&a"},
        {"a&", "a&&"},
        {"a&&b", "a&&b"},
        {"&&&", "&&&"},
        {"a&b&c", "a&&&b&c"},
        {"a&&b&c", "a&&b&&c"},
        {"1&2&3&4", "1&&&2&&3&4"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(shown(DoubleAmpersandForDisplay(wide(c.text))), c.shown) << c.text;
}
