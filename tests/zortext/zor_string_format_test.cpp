// Formatting of the string.
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstring>
#include <new>

#include "tests/support/text.h"
#include "zorutils/zortext/zor_string.h"

using namespace zor_test;
using zor_text::CZorStringT;
using zor_text::detail::zor_safefmt_impl;

template <class T>
class FormatOf : public testing::Test
{
public:
    using S = CZorStringT<T>;
    static Text<T> text(const char* ascii) { return Text<T>(ascii, ascii + strlen(ascii)); }
};

using FormatWidths = testing::Types<char, WCHAR>;
TYPED_TEST_SUITE(FormatOf, FormatWidths);

TYPED_TEST(FormatOf, TextsAreOfTheStringsOwnWidth)
{
    typename TestFixture::S s;
    s.Format(this->text("%s-%d-%05.1f|%x|%c").c_str(), this->text("ab").c_str(), -7, 2.25, 255,
             'q');
    EXPECT_EQ(shown(s), "ab--7-002.3|ff|q");
    EXPECT_EQ(s.GetAllocLength(), s.GetLength());
}

TEST(Format, CapitalSIsTextOfTheOtherWidth)
{
    Wide wide;
    wide.Format(ZOR_W("%S|%hs|%ls|%s"), "a", "b", ZOR_W("c"), ZOR_W("d"));
    EXPECT_EQ(shown(wide), "a|b|c|d");
    Narrow narrow;
    narrow.Format("%S|%hs|%ls|%s", ZOR_W("a"), "b", ZOR_W("c"), "d");
    EXPECT_EQ(shown(narrow), "a|b|c|d");
}

TYPED_TEST(FormatOf, EmptyResultAndUnsharing)
{
    typename TestFixture::S s(this->text("abc").c_str());
    const auto other = s;
    s.Format(this->text("%s").c_str(), this->text("").c_str());
    EXPECT_TRUE(s.empty());
    EXPECT_EQ(shown(other), "abc");
}

TYPED_TEST(FormatOf, SizesAroundTheLocalBufferArriveWholeInTheirOwnSize)
{
    for (int n : {1, 2047, 2048}) {
        const Text<TypeParam> text(static_cast<size_t>(n), 'x');
        typename TestFixture::S s;
        s.Format(this->text("%s").c_str(), text.c_str());
        EXPECT_EQ(s.GetLength(), n);
        EXPECT_EQ(s.GetAllocLength(), n);
        EXPECT_EQ(s.c_str()[n], 0);
    }
}

TYPED_TEST(FormatOf, LongerTextsTakeTheGrowingBuffers)
{
    const struct
    {
        int length, capacity;
    } rows[] = {{2049, 8192},   {8192, 8192},    {8193, 32768},
                {32768, 32768}, {32769, 131072}, {131072, 131072}};
    for (const auto& row : rows) {
        const Text<TypeParam> text(static_cast<size_t>(row.length), 'x');
        typename TestFixture::S s;
        s.Format(this->text("%s").c_str(), text.c_str());
        EXPECT_EQ(s.GetLength(), row.length);
        EXPECT_EQ(s.GetAllocLength(), row.capacity);
        EXPECT_EQ(s.c_str()[row.length], 0);
    }
}

TYPED_TEST(FormatOf, TextIsCutAtTheLargestBuffer)
{
    const Text<TypeParam> text(200000, 'x');
    typename TestFixture::S s;
    s.Format(this->text("%s").c_str(), text.c_str());
    EXPECT_EQ(s.GetLength(), 131072);
    typename TestFixture::S spacious;
    spacious.GetBufferSetLength(180000);
    std::fill_n(spacious.GetBuffer(180000), 180000, static_cast<TypeParam>('y'));
    spacious.Format(this->text("%s").c_str(), text.c_str());
    EXPECT_EQ(spacious.GetLength(), 131072);
}

namespace {

template <class T>
void format_through_list(CZorStringT<T>& s, const T* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    s.FormatV(format, arguments);
    va_end(arguments);
}

} // namespace

TYPED_TEST(FormatOf, ListSurvivesBothPasses)
{
    typename TestFixture::S s;
    const Text<TypeParam> longer(3000, 'z');
    format_through_list(s, this->text("%d %s %d").c_str(), 1, longer.c_str(), 2);
    EXPECT_EQ(s.GetLength(), 3004);
    EXPECT_EQ(s[3003], static_cast<TypeParam>('2'));
}

// --- FormatMessageW.

TEST(FormatMessage, WideTakesPositionalInserts)
{
    Wide s;
    s.FormatMessageW(ZOR_W("%2!s! of %1!d!%%"), 7, ZOR_W("point"));
    EXPECT_EQ(shown(s), "point of 7%");
    s.FormatMessageW(ZOR_W("%1 %1"), ZOR_W("twice"));
    EXPECT_EQ(shown(s), "twice twice");
}

TEST(FormatMessage, NarrowHandsItsBytesToTheWideFormatterUnconverted)
{
    // Two bytes make one unit: the narrow format "ab" is the text of unit 6261, which page 1252
    // lacks.
    Narrow s;
    s.FormatMessageW("abab");
    EXPECT_EQ(shown(s), "??");
    // A wide text seen as bytes ends at its first zero byte, so its first unit alone arrives.
    s.FormatMessageW(reinterpret_cast<const char*>(ZOR_W("xyz")));
    EXPECT_EQ(shown(s), "x");
}

TEST(FormatMessage, FailureIsBadAllocationWhateverItsCause)
{
    Wide s(ZOR_W("kept"));
    try {
        s.FormatMessageW(ZOR_W("%1!"), 1);
        FAIL() << "a bad format passed";
    } catch (const std::bad_alloc& error) {
        EXPECT_STREQ(error.what(), "bad allocation");
    }
    EXPECT_EQ(shown(s), "kept");
}

// --- Numbered fields.

TEST(NumberedFields, TakeTheirArguments)
{
    const WCHAR *a = ZOR_W("a"), *b = ZOR_W("b");
    const struct
    {
        const WCHAR* format;
        const char* expected;
    } rows[] = {{ZOR_W("{1} of {2}"), "a of b"},
                {ZOR_W("{2}{1}{2}"), "bab"},
                {ZOR_W("none"), "none"},
                {ZOR_W("{{1}"), "{1}"},
                {ZOR_W("{3}"), ""},
                {ZOR_W("x{0}y"), ""},
                {ZOR_W("{x}"), ""},
                {ZOR_W("{}"), ""},
                {ZOR_W("a}b"), "a}b"},
                {ZOR_W("{1"), ""},
                {ZOR_W("x{1"), "x"},
                {ZOR_W("{{{1}"), "{a"},
                {ZOR_W("{-1}"), ""},
                {ZOR_W("{1{2}"), "{2}"},
                {ZOR_W("{ 2x}"), "b"},
                {ZOR_W(""), ""}};
    for (const auto& row : rows)
        EXPECT_EQ(shown(zor_safefmt_impl(row.format, 2, a, b)), row.expected) << shown(row.format);
}

TEST(NumberedFields, MoreThanAHundredArgumentsGiveNothing)
{
    EXPECT_TRUE(zor_safefmt_impl(ZOR_W("text"), 101).empty());
    EXPECT_EQ(shown(zor_safefmt_impl(ZOR_W("text"), 0)), "text");
}
