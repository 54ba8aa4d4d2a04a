// Delimited values and masks.
#include "zorutils/formats/value_lists.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "tests/support/text.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

namespace {

typedef std::vector<std::string> Texts;

Texts texts_of(const StringArray& values)
{
    Texts texts;
    for (const Wide& value : values)
        texts.push_back(shown(value));
    return texts;
}

} // namespace

TEST(ValueLists, MasksTakeDigitsAndLettersForNineAndElseThemselves)
{
    const struct
    {
        const WCHAR* text;
        const WCHAR* mask;
        bool fits;
    } cases[] = {
        {nullptr, nullptr, true},
        {nullptr, ZOR_W(""), true},
        {ZOR_W(""), nullptr, true},
        {ZOR_W(""), ZOR_W(""), true},
        {ZOR_W(""), ZOR_W("9"), false},
        {nullptr, ZOR_W("9"), false},
        {ZOR_W("1"), nullptr, false},
        {ZOR_W("2013-10-01"), ZOR_W("9999-99-99"), true},
        {ZOR_W("abcd-ef-gh"), ZOR_W("9999-99-99"), true},
        {ZOR_W("2013-10-01 "), ZOR_W("9999-99-99"), false},
        {ZOR_W("2013/10/01"), ZOR_W("9999-99-99"), false},
        {ZOR_W("201--10-01"), ZOR_W("9999-99-99"), false},
        {ZOR_W("9"), ZOR_W("9"), true},
        {ZOR_W("\u00e9"), ZOR_W("9"), true},
        {ZOR_W(" "), ZOR_W("9"), false},
        {ZOR_W("."), ZOR_W("9"), false},
        {ZOR_W("8"), ZOR_W("8"), true},
        {ZOR_W("7"), ZOR_W("8"), false},
        {ZOR_W("a"), ZOR_W("A"), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CheckFormat(c.text, c.mask), c.fits) << shown(c.text) << " " << shown(c.mask);
}

TEST(ValueLists, SplittingAtAnyOfSeveralDelimiters)
{
    const struct
    {
        const char* text;
        const char* delimiters;
        Texts items;
    } cases[] = {
        {"", ",", {""}},
        {"a", ",", {"a"}},
        {"a,b", ",", {"a", "b"}},
        {"a,b,", ",", {"a", "b"}},
        {",", ",", {","}},
        {",a", ",", {",a"}},
        {"a,,b", ",", {"a", ",b"}},
        {"a,,", ",", {"a", ","}},
        {"-1-2", "-", {"-1-2"}},
        {"1-2--3", "-", {"1", "2", "-3"}},
        {"a;b,c", ",;", {"a", "b", "c"}},
        {" a , b\t", ",", {"a", "b"}},
        {"a b", ",", {"a b"}},
        {"a\rb\n,\r\nc\r\n", ",", {"ab", "c"}},
        {"   ", ",", {""}},
        {" ,a", ",", {"", "a"}},
        {"a,b", "", {"a,b"}},
        {"2013-10-01 08:29:35", " ", {"2013-10-01", "08:29:35"}},
    };
    for (const auto& c : cases) {
        StringArray values;
        EXPECT_TRUE(ParseDelimitersValues(Wide(c.text), values, Wide(c.delimiters)));
        EXPECT_EQ(texts_of(values), c.items) << c.text;
    }
}

TEST(ValueLists, SplittingAtOneDelimiterRefusesForbiddenCharacters)
{
    const struct
    {
        const char* text;
        char delimiter;
        const char* forbidden;
        bool result;
        Texts items;
    } cases[] = {
        {"", ',', "", true, {""}},
        {"a", ',', "", true, {"a"}},
        {"a,b", ',', "", true, {"a", "b"}},
        {"a,b,", ',', "", true, {"a", "b"}},
        {",", ',', "", true, {","}},
        {",a,b", ',', "", true, {",a,b"}},
        {"a,,b", ',', "", true, {"a", "", "b"}},
        {"a,,", ',', "", true, {"a", ""}},
        {" a ,\r\n b ", ',', "", true, {"a", "b"}},
        {"a,b?,c", ',', "?!", false, {"a"}},
        {"!", ',', "?!", false, {}},
        {"a,b", ',', ",", true, {"a", "b"}},
        {",a", ',', ",", false, {}},
        {"a b,c", ',', " ", false, {}},
        // The forbidden characters are looked for in the cleaned item.
        {" a ,c", ',', " ", true, {"a", "c"}},
    };
    for (const auto& c : cases) {
        StringArray values;
        EXPECT_EQ(ParseValues(Wide(c.text), values, c.delimiter, Wide(c.forbidden)), c.result)
            << c.text;
        EXPECT_EQ(texts_of(values), c.items) << c.text;
    }
}

TEST(ValueLists, ParsersAppendAndNeverClear)
{
    StringArray values;
    values.Add(ZOR_W("old"));
    ParseDelimitersValues(ZOR_W("a,b"), values, ZOR_W(","));
    ParseValues(ZOR_W("c,d"), values, ',', ZOR_W(""));
    EXPECT_EQ(texts_of(values), (Texts{"old", "a", "b", "c", "d"}));
}

TEST(ValueLists, AnItemOfTheArrayMayBeSplitIntoIt)
{
    StringArray values;
    values.Add(ZOR_W("1,2,3,4,5,6,7,8,9,10,11,12"));
    ParseDelimitersValues(values[0], values, ZOR_W(","));
    EXPECT_EQ(values.GetSize(), 13);
    ParseValues(values[0], values, ',', values[12]);
    EXPECT_EQ(values.GetSize(), 13);
    ParseValues(values[0], values, ',', ZOR_W(""));
    ASSERT_EQ(values.GetSize(), 25);
    EXPECT_EQ(shown(values[24]), "12");
}

TEST(ValueLists, JoiningPutsTheDelimiterBetween)
{
    StringArray values;
    EXPECT_EQ(shown(StringArrayToString(values, ';')), "");
    values.Add(ZOR_W("a"));
    EXPECT_EQ(shown(StringArrayToString(values, ';')), "a");
    values.Add(ZOR_W(""));
    values.Add(ZOR_W("b"));
    EXPECT_EQ(shown(StringArrayToString(values, ';')), "a;;b");
    EXPECT_EQ(shown(StringArrayToString(values, 0xB0)), "a\\u00B0\\u00B0b");
}

TEST(ValueLists, LookingForAText)
{
    StringArray values;
    EXPECT_FALSE(IsStringInStringArray(values, ZOR_W("")));
    values.Add(ZOR_W("a"));
    values.Add(ZOR_W("B"));
    EXPECT_TRUE(IsStringInStringArray(values, ZOR_W("B")));
    EXPECT_FALSE(IsStringInStringArray(values, ZOR_W("b")));
    EXPECT_FALSE(IsStringInStringArray(values, ZOR_W("")));
    EXPECT_FALSE(IsStringInStringArray(values, ZOR_W("aB")));
}

TEST(ValueLists, LookingForANumberComparesTheBits)
{
    UIntArray values;
    EXPECT_FALSE(IsUIntInUIntArray(values, 0));
    values.Add(7);
    values.Add(UINT_MAX);
    EXPECT_TRUE(IsUIntInUIntArray(values, 7));
    EXPECT_TRUE(IsUIntInUIntArray(values, -1));
    EXPECT_FALSE(IsUIntInUIntArray(values, 0));
    EXPECT_FALSE(IsUIntInUIntArray(values, INT_MAX));
}
