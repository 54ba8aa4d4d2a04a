// The contract of the text calls on 16-bit units and of the narrow non-standard ones.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "zorutils/platform/crt.h"

namespace {

int sign(int value)
{
    return (value > 0) - (value < 0);
}

using Units = std::basic_string<WCHAR>;

} // namespace

TEST(CrtText, OrderIsByUnsignedUnit)
{
    EXPECT_EQ(sign(wcscmp(ZOR_W("a"), ZOR_W("a"))), 0);
    EXPECT_EQ(sign(wcscmp(ZOR_W("\xFFFF"), ZOR_W("a"))), 1);
    EXPECT_EQ(sign(wcscmp(ZOR_W("ab"), ZOR_W("abc"))), -1);
    EXPECT_EQ(sign(wcscoll(ZOR_W("B"), ZOR_W("a"))), -1);
    EXPECT_EQ(sign(wcsncmp(ZOR_W("abc"), ZOR_W("abd"), 2)), 0);
    EXPECT_EQ(sign(wcsncmp(ZOR_W("abc"), ZOR_W("abd"), 3)), -1);
    EXPECT_EQ(sign(wcsncmp(ZOR_W("a\0x"), ZOR_W("a\0y"), 3)), 0);
}

TEST(CrtText, ComparisonWithoutCaseIsTheDifferenceOfTheLowerCharacters)
{
    EXPECT_EQ(_wcsicmp(ZOR_W("a"), ZOR_W("B")), -1);
    EXPECT_EQ(_wcsicmp(ZOR_W("Z"), ZOR_W("a")), 25);
    EXPECT_EQ(_wcsicmp(ZOR_W("["), ZOR_W("A")), -6);
    EXPECT_EQ(_wcsicmp(ZOR_W("\xE9"), ZOR_W("\xC9")), 32);
    EXPECT_EQ(_wcsicmp(ZOR_W("pOINT"), ZOR_W("Point")), 0);
    EXPECT_EQ(_stricmp("a", "B"), -1);
    EXPECT_EQ(sign(_stricmp("\xE9", "\xC9")), 1);
    EXPECT_EQ(_stricmp("pOINT", "Point"), 0);
    EXPECT_EQ(sign(_stricoll("a", "B")), -1);
    EXPECT_EQ(sign(_wcsicoll(ZOR_W("a"), ZOR_W("B"))), -1);
}

TEST(CrtText, Searches)
{
    const WCHAR* const text = ZOR_W("abcabc");
    EXPECT_EQ(wcschr(text, 'b'), text + 1);
    EXPECT_EQ(wcschr(text, 0), text + 6);
    EXPECT_EQ(wcschr(text, 'x'), nullptr);
    EXPECT_EQ(wcsrchr(text, 'b'), text + 4);
    EXPECT_EQ(wcsrchr(text, 'x'), nullptr);
    EXPECT_EQ(wcsstr(text, ZOR_W("ca")), text + 2);
    EXPECT_EQ(wcsstr(text, ZOR_W("")), text);
    EXPECT_EQ(wcsstr(text, ZOR_W("cc")), nullptr);
    EXPECT_EQ(wcspbrk(text, ZOR_W("xc")), text + 2);
    EXPECT_EQ(wcspbrk(text, ZOR_W("xy")), nullptr);
    EXPECT_EQ(wcsspn(text, ZOR_W("ba")), 2u);
    EXPECT_EQ(wcscspn(text, ZOR_W("c")), 2u);
    EXPECT_EQ(wcscspn(text, ZOR_W("x")), 6u);
    EXPECT_EQ(wcslen(text), 6u);
}

TEST(CrtText, CaseAndReverseInPlace)
{
    WCHAR wide[] = {'a', 'B', 0xE9, 0};
    EXPECT_EQ(_wcsupr(wide), wide);
    EXPECT_EQ(Units(wide), (Units{'A', 'B', 0xE9}));
    EXPECT_EQ(Units(_wcslwr(wide)), (Units{'a', 'b', 0xE9}));
    EXPECT_EQ(Units(_wcsrev(wide)), (Units{0xE9, 'b', 'a'}));
    char narrow[] = "aB\xE9";
    EXPECT_STREQ(_strupr(narrow), "AB\xE9");
    EXPECT_STREQ(_strlwr(narrow), "ab\xE9");
    EXPECT_STREQ(_strrev(narrow), "\xE9"
                                  "ba");
}
