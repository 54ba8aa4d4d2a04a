// Editing and trimming of the string.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/text.h"
#include "zorutils/zortext/zor_string.h"

using namespace zor_test;
using zor_text::CZorStringT;

template <class T>
class EditOf : public testing::Test
{
public:
    using S = CZorStringT<T>;
    static S make(const char* ascii) { return S(text(ascii).c_str()); }
    static Text<T> text(const char* ascii) { return Text<T>(ascii, ascii + strlen(ascii)); }
};

using EditWidths = testing::Types<char, WCHAR>;
TYPED_TEST_SUITE(EditOf, EditWidths);

// --- Insert and delete.

TYPED_TEST(EditOf, InsertHoldsTheIndexToTheText)
{
    const struct
    {
        int index;
        const char* expected;
    } rows[] = {{-1, "xyabc"}, {0, "xyabc"}, {1, "axybc"}, {3, "abcxy"}, {100, "abcxy"}};
    for (const auto& row : rows) {
        auto s = this->make("abc");
        EXPECT_EQ(s.Insert(row.index, this->text("xy").c_str()), 5);
        EXPECT_EQ(shown(s), row.expected);
        EXPECT_EQ(s.GetAllocLength(), 5);
        auto c = this->make("abc");
        EXPECT_EQ(c.Insert(row.index, static_cast<TypeParam>('x')), 4);
        EXPECT_EQ(c.GetLength(), 4);
        EXPECT_EQ(c.GetAllocLength(), 4);
    }
}

TYPED_TEST(EditOf, InsertOfNothingDoesNotEvenUnshare)
{
    auto s = this->make("abc");
    const auto other = s;
    EXPECT_EQ(s.Insert(0, this->text("").c_str()), 3);
    EXPECT_EQ(s.Insert(0, static_cast<const TypeParam*>(nullptr)), 3);
    EXPECT_EQ(s.c_str(), other.c_str());
    EXPECT_EQ(s.Insert(1, this->text("-").c_str()), 4);
    EXPECT_EQ(shown(other), "abc");
}

TYPED_TEST(EditOf, InsertUsesSpareCapacityAndTakesItsOwnText)
{
    auto s = this->make("abc");
    s.GetBuffer(20);
    const TypeParam* const buffer = s.c_str();
    s.Insert(1, s.c_str());
    EXPECT_EQ(shown(s), "aabcbc");
    EXPECT_EQ(s.c_str(), buffer);
    auto tight = this->make("abc");
    tight.Insert(3, tight.c_str() + 1);
    EXPECT_EQ(shown(tight), "abcbc");
}

TYPED_TEST(EditOf, DeleteReturnsTheLengthFromBefore)
{
    const struct
    {
        int index, count;
        const char* expected;
    } rows[] = {{1, 2, "ade"},   {0, 100, ""},     {-3, 2, "cde"}, {5, 1, "abcde"}, {9, 1, "abcde"},
                {0, 0, "abcde"}, {0, -1, "abcde"}, {4, 1, "abcd"}, {0, 5, ""}};
    for (const auto& row : rows) {
        auto s = this->make("abcde");
        EXPECT_EQ(s.Delete(row.index, row.count), 5) << row.index << ' ' << row.count;
        EXPECT_EQ(shown(s), row.expected) << row.index << ' ' << row.count;
    }
}

TYPED_TEST(EditOf, DeleteOfNothingDoesNotUnshare)
{
    auto s = this->make("abc");
    const auto other = s;
    s.Delete(3, 1);
    s.Delete(0, 0);
    EXPECT_EQ(s.c_str(), other.c_str());
    s.Delete(0);
    EXPECT_EQ(shown(s), "bc");
    EXPECT_EQ(shown(other), "abc");
}

TYPED_TEST(EditOf, PushBackAppendsOne)
{
    auto s = this->make("ab");
    s.push_back(static_cast<TypeParam>('c'));
    EXPECT_EQ(shown(s), "abc");
}

// --- Remove and replace.

TYPED_TEST(EditOf, RemoveGoesOverTheWholeLengthAndCounts)
{
    const auto text = lit<TypeParam>("xax\0xb");
    CZorStringT<TypeParam> s(text.data(), 6);
    EXPECT_EQ(s.Remove(static_cast<TypeParam>('x')), 3);
    EXPECT_EQ(s.GetLength(), 3);
    EXPECT_EQ(s[2], static_cast<TypeParam>('b'));
    EXPECT_EQ(s.Remove(static_cast<TypeParam>('q')), 0);
    CZorStringT<TypeParam> empty;
    EXPECT_EQ(empty.Remove(static_cast<TypeParam>('x')), 0);
}

TYPED_TEST(EditOf, ReplaceOfCharactersUnsharesEvenWithoutAHit)
{
    auto s = this->make("abcabc");
    const auto other = s;
    EXPECT_EQ(s.Replace(static_cast<TypeParam>('x'), static_cast<TypeParam>('x')), 0);
    EXPECT_EQ(s.c_str(), other.c_str());
    EXPECT_EQ(s.Replace(static_cast<TypeParam>('x'), static_cast<TypeParam>('y')), 0);
    EXPECT_NE(s.c_str(), other.c_str());
    EXPECT_EQ(s.Replace(static_cast<TypeParam>('b'), static_cast<TypeParam>('-')), 2);
    EXPECT_EQ(shown(s), "a-ca-c");
}

TYPED_TEST(EditOf, ReplaceOfTexts)
{
    const struct
    {
        const char* text;
        const char* old;
        const char* replacement;
        const char* expected;
        int hits;
    } rows[] = {{"aXa", "a", "bb", "bbXbb", 2},
                {"aaaa", "aa", "a", "aa", 2},
                {"abc", "", "x", "abc", 0},
                {"abc", "x", "y", "abc", 0},
                {"abab", "ab", "ab", "abab", 2},
                {"aaa", "a", "", "", 3},
                {"a-b-c", "-", " to ", "a to b to c", 2},
                {"", "a", "b", "", 0},
                {"aaa", "aa", "bbb", "bbba", 1}};
    for (const auto& row : rows) {
        auto s = this->make(row.text);
        EXPECT_EQ(s.Replace(this->text(row.old).c_str(), this->text(row.replacement).c_str()),
                  row.hits)
            << row.text << ' ' << row.old;
        EXPECT_EQ(shown(s), row.expected) << row.text << ' ' << row.old;
    }
}

TYPED_TEST(EditOf, ReplaceByNullDeletes)
{
    auto s = this->make("abcab");
    EXPECT_EQ(s.Replace(this->text("a").c_str(), nullptr), 2);
    EXPECT_EQ(shown(s), "bcb");
    EXPECT_EQ(s.Replace(nullptr, this->text("x").c_str()), 0);
}

TYPED_TEST(EditOf, ReplacePassesZeroCharactersInsideTheText)
{
    const auto text = lit<TypeParam>("ab\0ab\0");
    for (const char* replacement : {"", "z", "ab", "long"}) {
        CZorStringT<TypeParam> s(text.data(), 6);
        EXPECT_EQ(s.Replace(this->text("ab").c_str(), this->text(replacement).c_str()), 2);
        const int n = static_cast<int>(strlen(replacement));
        EXPECT_EQ(s.GetLength(), 2 * n + 2);
        EXPECT_EQ(s[n], 0);
        EXPECT_EQ(s[2 * n + 1], 0);
    }
}

TYPED_TEST(EditOf, ReplaceWithoutAHitSharesAndWithOneAllocatesExactly)
{
    auto s = this->make("abc");
    const auto other = s;
    s.Replace(this->text("x").c_str(), this->text("y").c_str());
    EXPECT_EQ(s.c_str(), other.c_str());
    s.Replace(this->text("b").c_str(), this->text("xyz").c_str());
    EXPECT_EQ(s.GetAllocLength(), 5);
    EXPECT_EQ(shown(other), "abc");
}

TYPED_TEST(EditOf, ReplaceGrowsInsideSpareCapacity)
{
    auto s = this->make("a.b.c");
    s.GetBuffer(40);
    const TypeParam* const buffer = s.c_str();
    EXPECT_EQ(s.Replace(this->text(".").c_str(), this->text("---").c_str()), 2);
    EXPECT_EQ(shown(s), "a---b---c");
    EXPECT_EQ(s.c_str(), buffer);
    EXPECT_EQ(s.Replace(s.c_str() + 1, s.c_str()), 1);
    EXPECT_EQ(shown(s), "aa---b---c");
}

// --- Case and order.

TYPED_TEST(EditOf, CaseAndReverseReturnTheStringAndUnshare)
{
    auto s = this->make("aBc1");
    const auto other = s;
    EXPECT_EQ(&s.MakeUpper(), &s);
    EXPECT_EQ(shown(s), "ABC1");
    EXPECT_EQ(shown(s.MakeLower()), "abc1");
    EXPECT_EQ(shown(s.MakeReverse()), "1cba");
    EXPECT_EQ(shown(other), "aBc1");
    typename TestFixture::S empty;
    EXPECT_TRUE(empty.MakeUpper().MakeLower().MakeReverse().empty());
}

// --- Trim.

TYPED_TEST(EditOf, TrimOfWhiteSpace)
{
    const struct
    {
        const char* text;
        const char* left;
        const char* right;
        const char* both;
    } rows[] = {{"  a b ", "a b ", "  a b", "a b"},
                {"x \t\r\n\v\f", "x \t\r\n\v\f", "x", "x"},
                {"\t\r\n\v\f x", "x", "\t\r\n\v\f x", "x"},
                {"   ", "", "", ""},
                {"", "", "", ""},
                {"ab", "ab", "ab", "ab"}};
    for (const auto& row : rows) {
        auto left = this->make(row.text), right = left, both = left;
        EXPECT_EQ(left.TrimLeft().Compare(this->text(row.left).c_str()), 0);
        EXPECT_EQ(right.TrimRight().Compare(this->text(row.right).c_str()), 0);
        EXPECT_EQ(both.Trim().Compare(this->text(row.both).c_str()), 0);
    }
}

TYPED_TEST(EditOf, TrimOfACharacterAndOfASet)
{
    auto s = this->make("xxaxx");
    EXPECT_EQ(shown(this->make("xxaxx").TrimLeft(static_cast<TypeParam>('x'))), "axx");
    EXPECT_EQ(shown(this->make("xxaxx").TrimRight(static_cast<TypeParam>('x'))), "xxa");
    EXPECT_EQ(shown(s.Trim(static_cast<TypeParam>('x'))), "a");
    const auto set = this->text("yx");
    EXPECT_EQ(shown(this->make("xyaxy").TrimLeft(set.c_str())), "axy");
    EXPECT_EQ(shown(this->make("xyaxy").TrimRight(set.c_str())), "xya");
    EXPECT_EQ(shown(this->make("xyaxy").Trim(set.c_str())), "a");
    EXPECT_EQ(shown(this->make("xyx").Trim(set.c_str())), "");
}

TYPED_TEST(EditOf, EveryTrimUnsharesButTheLeftOneOfAnEmptySet)
{
    const auto source = this->make("abc");
    const auto none = this->text("");
    const auto unshares = [&](auto trim) {
        auto s = source;
        trim(s);
        return s.c_str() != source.c_str();
    };
    EXPECT_TRUE(unshares([](auto& s) { s.TrimLeft(); }));
    EXPECT_TRUE(unshares([](auto& s) { s.TrimRight(); }));
    EXPECT_TRUE(unshares([](auto& s) { s.TrimLeft(static_cast<TypeParam>('x')); }));
    EXPECT_TRUE(unshares([](auto& s) { s.TrimRight(static_cast<TypeParam>('x')); }));
    EXPECT_TRUE(unshares([&](auto& s) { s.TrimRight(none.c_str()); }));
    EXPECT_FALSE(unshares([&](auto& s) { s.TrimLeft(none.c_str()); }));
    EXPECT_FALSE(unshares([&](auto& s) { s.TrimLeft(static_cast<const TypeParam*>(nullptr)); }));
}

TYPED_TEST(EditOf, TrimRightEndsAtTheFirstZeroCharacterOfTheText)
{
    const auto text = lit<TypeParam>("a  \0b");
    CZorStringT<TypeParam> s(text.data(), 5);
    EXPECT_EQ(shown(s.TrimRight()), "a");
    CZorStringT<TypeParam> kept(lit<TypeParam>("a\0b ").data(), 4);
    EXPECT_EQ(kept.TrimRight().GetLength(), 4);
    CZorStringT<TypeParam> left(lit<TypeParam>(" a\0b").data(), 4);
    EXPECT_EQ(left.TrimLeft().GetLength(), 3);
}

TEST(TrimNarrow, TestsHighBytesAsSignExtendedUnits)
{
    // Byte A0 is a blank of the code page, but unit FFA0 is not: it stays in the narrow string.
    EXPECT_EQ(shown(Narrow("\xA0x\xA0").Trim()), "\\xA0x\\xA0");
    const WCHAR wide[] = {0x00A0, 'x', 0x00A0, 0};
    EXPECT_EQ(shown(Wide(wide).Trim()), "x");
}
