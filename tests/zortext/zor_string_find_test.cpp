// Substrings, search, comparison and tokens of the string.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/text.h"
#include "zorutils/zortext/zor_string.h"

using namespace zor_test;
using zor_text::CZorStringT;

template <class T>
class FindIn : public testing::Test
{
public:
    using S = CZorStringT<T>;
    static S make(const char* ascii) { return S(text(ascii).c_str()); }
    static Text<T> text(const char* ascii) { return Text<T>(ascii, ascii + strlen(ascii)); }
};

using FindWidths = testing::Types<char, WCHAR>;
TYPED_TEST_SUITE(FindIn, FindWidths);

// --- Substrings.

TYPED_TEST(FindIn, LeftAndRightTakeAnEndOfTheText)
{
    const auto s = this->make("abcdef");
    const struct
    {
        int n;
        const char* left;
        const char* right;
    } rows[] = {{-1, "", ""},
                {0, "", ""},
                {1, "a", "f"},
                {5, "abcde", "bcdef"},
                {6, "abcdef", "abcdef"},
                {11, "abcdef", "abcdef"}};
    for (const auto& row : rows) {
        EXPECT_EQ(shown(s.Left(row.n)), row.left) << row.n;
        EXPECT_EQ(shown(s.Right(row.n)), row.right) << row.n;
    }
}

TYPED_TEST(FindIn, WholeTextIsSharedAndAPartIsANewBlock)
{
    const auto s = this->make("abcdef");
    EXPECT_EQ(s.Left(6).c_str(), s.c_str());
    EXPECT_EQ(s.Left(11).c_str(), s.c_str());
    EXPECT_EQ(s.Right(6).c_str(), s.c_str());
    EXPECT_EQ(s.Mid(0).c_str(), s.c_str());
    EXPECT_EQ(s.Mid(-3, 99).c_str(), s.c_str());
    const auto part = s.Left(3);
    EXPECT_EQ(part.GetAllocLength(), 3);
    EXPECT_NE(part.c_str(), s.c_str());
}

TYPED_TEST(FindIn, MidHoldsItsRangeToTheText)
{
    const auto s = this->make("abcdef");
    const struct
    {
        int first, count;
        const char* expected;
    } rows[] = {{0, 6, "abcdef"}, {1, 3, "bcd"},  {-2, 3, "abc"},        {2, -1, ""},
                {7, 3, ""},       {6, 1, ""},     {5, 100, "f"},         {2, 2147483647, "cdef"},
                {0, 0, ""},       {100, 100, ""}, {-2147483647, 2, "ab"}};
    for (const auto& row : rows)
        EXPECT_EQ(shown(s.Mid(row.first, row.count)), row.expected)
            << row.first << ' ' << row.count;
    EXPECT_EQ(shown(s.Mid(2)), "cdef");
    EXPECT_EQ(shown(s.Mid(6)), "");
    EXPECT_EQ(shown(s.Mid(9)), "");
    EXPECT_EQ(shown(s.Mid(-4)), "abcdef");
    EXPECT_EQ(shown(s.Mid(-2147483647)), "abcdef");
}

TYPED_TEST(FindIn, SpansTakeTheLeadingRun)
{
    const auto s = this->make("123abc1");
    EXPECT_EQ(shown(s.SpanIncluding(this->text("321").c_str())), "123");
    EXPECT_EQ(shown(s.SpanIncluding(this->text("x").c_str())), "");
    EXPECT_EQ(shown(s.SpanIncluding(this->text("").c_str())), "");
    EXPECT_EQ(shown(s.SpanExcluding(this->text("abc").c_str())), "123");
    EXPECT_EQ(shown(s.SpanExcluding(this->text("xyz").c_str())), "123abc1");
    EXPECT_EQ(shown(s.SpanExcluding(this->text("1").c_str())), "");
}

// --- Search.

TYPED_TEST(FindIn, FindACharacter)
{
    const auto s = this->make("abcabc");
    EXPECT_EQ(s.Find(static_cast<TypeParam>('b')), 1);
    EXPECT_EQ(s.Find(static_cast<TypeParam>('b'), 2), 4);
    EXPECT_EQ(s.Find(static_cast<TypeParam>('b'), 5), -1);
    EXPECT_EQ(s.Find(static_cast<TypeParam>('x')), -1);
    EXPECT_EQ(s.Find(static_cast<TypeParam>('c'), 6), -1);
    EXPECT_EQ(s.Find(static_cast<TypeParam>('c'), 7), -1);
    EXPECT_EQ(this->make("").Find(static_cast<TypeParam>('c')), -1);
}

TYPED_TEST(FindIn, FindAText)
{
    const auto s = this->make("abcabc");
    EXPECT_EQ(s.Find(this->text("ca").c_str()), 2);
    EXPECT_EQ(s.Find(this->text("bc").c_str(), 2), 4);
    EXPECT_EQ(s.Find(this->text("abcd").c_str()), -1);
    EXPECT_EQ(s.Find(this->text("a").c_str(), 7), -1);
    EXPECT_EQ(this->make("").Find(this->text("").c_str()), 0);
}

TYPED_TEST(FindIn, AStartAtTheLengthFindsTheEmptyTextButNoCharacter)
{
    const auto s = this->make("abc");
    EXPECT_EQ(s.Find(this->text("").c_str(), 3), 3);
    EXPECT_EQ(s.Find(static_cast<TypeParam>('a'), 3), -1);
    EXPECT_EQ(s.Find(static_cast<TypeParam>(0), 3), -1);
}

TYPED_TEST(FindIn, SearchStopsAtTheFirstZeroCharacter)
{
    const auto text = lit<TypeParam>("ab\0cb");
    const CZorStringT<TypeParam> s(text.data(), 5);
    EXPECT_EQ(s.Find(static_cast<TypeParam>('c')), -1);
    EXPECT_EQ(s.Find(this->text("c").c_str()), -1);
    EXPECT_EQ(s.Find(static_cast<TypeParam>('c'), 3), 3);
    EXPECT_EQ(s.ReverseFind(static_cast<TypeParam>('b')), 1);
    EXPECT_EQ(s.FindOneOf(this->text("c").c_str()), -1);
    EXPECT_EQ(s.Find(static_cast<TypeParam>(0)), 2);
}

TYPED_TEST(FindIn, FindOneOfAndReverseFind)
{
    const auto s = this->make("abcabc");
    EXPECT_EQ(s.FindOneOf(this->text("xcb").c_str()), 1);
    EXPECT_EQ(s.FindOneOf(this->text("xyz").c_str()), -1);
    EXPECT_EQ(s.FindOneOf(this->text("").c_str()), -1);
    EXPECT_EQ(s.ReverseFind(static_cast<TypeParam>('b')), 4);
    EXPECT_EQ(s.ReverseFind(static_cast<TypeParam>('x')), -1);
}

TEST(FindNarrow, HighBytesAreFoundAsBytes)
{
    const Narrow s("a\xE9z");
    EXPECT_EQ(s.Find('\xE9'), 1);
    EXPECT_EQ(s.Find('\xE9', 1), 1);
    EXPECT_EQ(s.ReverseFind('\xE9'), 1);
}

// --- Comparison.

TYPED_TEST(FindIn, CompareGivesExactlyMinusOneZeroOrOne)
{
    const auto s = this->make("bcd");
    EXPECT_EQ(s.Compare(this->text("bcd").c_str()), 0);
    EXPECT_EQ(s.Compare(this->text("z").c_str()), -1);
    EXPECT_EQ(s.Compare(this->text("a").c_str()), 1);
    EXPECT_EQ(s.Compare(this->text("bc").c_str()), 1);
    EXPECT_EQ(s.Compare(this->text("bcda").c_str()), -1);
}

TEST(Compare, IsUnsignedByUnit)
{
    EXPECT_EQ(Narrow("\x80").Compare("a"), 1);
    const WCHAR high[] = {0xFFFF, 0}, low[] = {0x0041, 0};
    EXPECT_EQ(Wide(high).Compare(low), 1);
    EXPECT_EQ(Wide(low).Compare(high), -1);
}

TYPED_TEST(FindIn, CompareNoCaseAndCollationOrderTexts)
{
    const auto s = this->make("Abc");
    EXPECT_EQ(s.CompareNoCase(this->text("aBC").c_str()), 0);
    EXPECT_LT(s.CompareNoCase(this->text("abd").c_str()), 0);
    EXPECT_GT(s.CompareNoCase(this->text("ABB").c_str()), 0);
    EXPECT_EQ(s.Collate(this->text("Abc").c_str()), 0);
    EXPECT_LT(s.Collate(this->text("abc").c_str()), 0);
    EXPECT_EQ(s.CollateNoCase(this->text("aBC").c_str()), 0);
    EXPECT_GT(s.CollateNoCase(this->text("aBB").c_str()), 0);
}

// --- Tokens.

TYPED_TEST(FindIn, TokenizeTakesARunOfDelimitersAsOne)
{
    const auto s = this->make(",a,,b,");
    const auto comma = this->text(",");
    int position = 0;
    EXPECT_EQ(shown(s.Tokenize(comma.c_str(), position)), "a");
    EXPECT_EQ(position, 3);
    EXPECT_EQ(shown(s.Tokenize(comma.c_str(), position)), "b");
    EXPECT_EQ(position, 6);
    EXPECT_EQ(shown(s.Tokenize(comma.c_str(), position)), "");
    EXPECT_EQ(position, -1);
    EXPECT_EQ(shown(s.Tokenize(comma.c_str(), position)), "");
    EXPECT_EQ(position, -1);
}

TYPED_TEST(FindIn, PositionMayExceedTheLengthBehindTheLastToken)
{
    const auto s = this->make("ab;cd");
    const auto set = this->text(";,");
    int position = 3;
    EXPECT_EQ(shown(s.Tokenize(set.c_str(), position)), "cd");
    EXPECT_EQ(position, 6);
    EXPECT_EQ(shown(s.Tokenize(set.c_str(), position)), "");
    EXPECT_EQ(position, -1);
}

TYPED_TEST(FindIn, TokenizeWithoutDelimitersGivesTheRestAndStays)
{
    const auto s = this->make("abcdef");
    int position = 2;
    EXPECT_EQ(shown(s.Tokenize(this->text("").c_str(), position)), "cdef");
    EXPECT_EQ(position, 2);
    EXPECT_EQ(shown(s.Tokenize(nullptr, position)), "cdef");
    EXPECT_EQ(position, 2);
    position = 6;
    EXPECT_EQ(shown(s.Tokenize(nullptr, position)), "");
    EXPECT_EQ(position, -1);
}

TYPED_TEST(FindIn, OnlyDelimitersGiveNoToken)
{
    const auto s = this->make(",,,");
    int position = 0;
    EXPECT_EQ(shown(s.Tokenize(this->text(",").c_str(), position)), "");
    EXPECT_EQ(position, -1);
}
