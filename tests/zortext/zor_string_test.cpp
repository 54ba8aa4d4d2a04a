// The block, sharing, construction, assignment and conversion of the string, as a host sees them
// across the library's boundary.
#include "zorutils/zortext/zor_string.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "tests/support/text.h"

using namespace zor_test;
using zor_text::CZorStringData;
using zor_text::CZorStringT;
namespace nil = zor_string_internal_data;

template <class T>
class StringOf : public testing::Test
{
public:
    using S = CZorStringT<T>;
    static S make(const char* ascii) { return S(Text<T>(ascii, ascii + strlen(ascii)).c_str()); }
};

using Widths = testing::Types<char, WCHAR>;
TYPED_TEST_SUITE(StringOf, Widths);

// --- The block.

TYPED_TEST(StringOf, ObjectIsOnePointerWideAndHeaderIsThreeWords)
{
    EXPECT_EQ(sizeof(CZorStringT<TypeParam>), sizeof(void*));
    EXPECT_EQ(sizeof(CZorStringData<TypeParam>), 12u);
    EXPECT_FALSE(std::is_polymorphic_v<CZorStringT<TypeParam>>);
}

TEST(NilBlock, IsOneBlockOfFourWordsForBothWidths)
{
    EXPECT_EQ(nil::g_afxInitData[0], -1);
    EXPECT_EQ(nil::g_afxInitData[1], 0);
    EXPECT_EQ(nil::g_afxInitData[2], 0);
    EXPECT_EQ(nil::g_afxInitData[3], 0);
    EXPECT_EQ(nil::g_afxNilStr, static_cast<void*>(&nil::g_afxInitData[3]));
    EXPECT_EQ(nil::get_afxInitData(), &nil::g_afxInitData[0]);
    EXPECT_EQ(nil::get_afxNilStr(), &nil::g_afxNilStr);
    EXPECT_EQ(nil::afxChNil, 0);
    EXPECT_EQ(nil::afxChNilW, 0);
    EXPECT_EQ(static_cast<const void*>(Narrow().c_str()), static_cast<const void*>(Wide().c_str()));
}

TEST(NilBlock, LiesInWritableStorage)
{
    LONG* const words = nil::get_afxInitData();
    *static_cast<volatile LONG*>(&words[1]) = 0;
    *static_cast<volatile LONG*>(&words[3]) = 0;
    EXPECT_EQ(Wide().GetLength(), 0);
}

TYPED_TEST(StringOf, DefaultAndEmptyTextShareTheNilBlock)
{
    using String = typename TestFixture::S;
    const TypeParam empty[] = {0};
    const String a, b(empty), c(static_cast<const TypeParam*>(nullptr)), d(empty, 0);
    for (const String* s : {&a, &b, &c, &d}) {
        EXPECT_EQ(static_cast<const void*>(s->c_str()), nil::g_afxNilStr);
        EXPECT_EQ(s->GetLength(), 0);
        EXPECT_EQ(s->length(), 0u);
        EXPECT_EQ(s->size(), 0u);
        EXPECT_EQ(s->GetAllocLength(), 0);
        EXPECT_EQ(s->IsEmpty(), 1);
        EXPECT_TRUE(s->empty());
        EXPECT_EQ(s->GetAt(0), 0);
        EXPECT_EQ((*s)[0], 0);
    }
}

TYPED_TEST(StringOf, CopiesOfTheEmptyStringAreNotCounted)
{
    using String = typename TestFixture::S;
    {
        const String empty;
        const std::vector<String> copies(100, empty);
        EXPECT_EQ(nil::g_afxInitData[0], -1);
    }
    EXPECT_EQ(nil::g_afxInitData[0], -1);
    EXPECT_EQ(nil::g_afxInitData[1], 0);
}

TYPED_TEST(StringOf, BlockIsAllocatedToTheExactSize)
{
    for (int n : {1, 2, 3, 7, 8, 15, 16, 100, 1000}) {
        Core<TypeParam> s;
        s.AllocBuffer(n);
        EXPECT_EQ(s.count(), 1);
        EXPECT_EQ(s.GetLength(), n);
        EXPECT_EQ(s.GetAllocLength(), n);
        EXPECT_EQ(s.c_str()[n], 0);
        EXPECT_EQ(reinterpret_cast<const char*>(s.c_str()),
                  reinterpret_cast<const char*>(s.GetData()) + 12);
    }
}

TYPED_TEST(StringOf, CopySharesUntilTheFirstWrite)
{
    auto first = this->make("abc");
    auto second = first;
    EXPECT_EQ(first.c_str(), second.c_str());
    EXPECT_EQ(block_of(first).nRefCount, 2);
    const TypeParam* const shared = first.c_str();
    second.SetAt(1, 'X');
    EXPECT_EQ(first.c_str(), shared);
    EXPECT_NE(second.c_str(), shared);
    EXPECT_EQ(shown(first), "abc");
    EXPECT_EQ(shown(second), "aXc");
    EXPECT_EQ(block_of(first).nRefCount, 1);
    EXPECT_EQ(block_of(second).nRefCount, 1);
}

TYPED_TEST(StringOf, ReadersGiveTheTextAndItsTerminator)
{
    const auto s = this->make("abc");
    const TypeParam* text = s;
    EXPECT_EQ(text, s.c_str());
    EXPECT_EQ(s.GetAt(2), static_cast<TypeParam>('c'));
    EXPECT_EQ(s[3], 0);
    EXPECT_EQ(s.IsEmpty(), 0);
    EXPECT_FALSE(s.empty());
    EXPECT_EQ(s.size(), 3u);
}

// --- Construction.

TYPED_TEST(StringOf, CountedConstructorKeepsZeroCharacters)
{
    const auto text = lit<TypeParam>("a\0b\0");
    const typename TestFixture::S s(text.data(), 4);
    EXPECT_EQ(s.GetLength(), 4);
    EXPECT_EQ(s[1], 0);
    EXPECT_EQ(s[2], static_cast<TypeParam>('b'));
    EXPECT_EQ(s[4], 0);
}

TYPED_TEST(StringOf, CharacterAndCountRepeats)
{
    using String = typename TestFixture::S;
    EXPECT_EQ(shown(String(static_cast<TypeParam>('x'), 3)), "xxx");
    EXPECT_TRUE(String(static_cast<TypeParam>('x'), 0).empty());
    EXPECT_TRUE(String(static_cast<TypeParam>('x'), -1).empty());
}

TYPED_TEST(StringOf, UnsignedCharactersAreTextOfTheCodePage)
{
    ZOR_NEEDS_PAGE_1252();
    using String = typename TestFixture::S;
    const unsigned char bytes[] = {'a', 0xB0, 0};
    const String s(bytes);
    EXPECT_EQ(shown(s), sizeof(TypeParam) == 1 ? "a\\xB0" : "a\\u00B0");
    String assigned;
    assigned = bytes;
    EXPECT_EQ(shown(assigned), shown(s));
    EXPECT_TRUE(String(static_cast<const unsigned char*>(nullptr)).empty());
}

TEST(StringConversion, GoesThroughTheActiveCodePage)
{
    ZOR_NEEDS_PAGE_1252();
    // The euro sign and the degree sign of page 1252; a unit the page lacks becomes "?".
    const WCHAR wide[] = {0x20AC, 0x00B0, 0x4E2D, 'z', 0};
    EXPECT_EQ(shown(Narrow(wide)), "\\x80\\xB0?z");
    EXPECT_EQ(shown(Wide("\x80\xB0z")), "\\u20AC\\u00B0z");
    EXPECT_EQ(shown(Narrow(wide, 2)), "\\x80\\xB0");
    EXPECT_EQ(shown(Wide("\x80\xB0z", 1)), "\\u20AC");
    Narrow narrow;
    narrow = wide;
    EXPECT_EQ(shown(narrow), "\\x80\\xB0?z");
    Wide back;
    back = "\x80";
    EXPECT_EQ(shown(back), "\\u20AC");
}

TEST(StringConversion, CountedFormKeepsZeroCharacters)
{
    ZOR_NEEDS_PAGE_1252();
    const WCHAR wide[] = {'a', 0, 0x00B0};
    const Narrow narrow(wide, 3);
    EXPECT_EQ(shown(narrow), "a\\x00\\xB0");
    EXPECT_EQ(narrow.GetLength(), 3);
    EXPECT_EQ(shown(Wide(narrow.c_str(), 3)), "a\\u0000\\u00B0");
    EXPECT_TRUE(Narrow(wide, 0).empty());
    EXPECT_TRUE(Wide("abc", 0).empty());
}

TEST(StringConversion, NullOrEmptyTextOfTheOtherWidthConstructsTheEmptyString)
{
    EXPECT_TRUE(Narrow(static_cast<const WCHAR*>(nullptr)).empty());
    EXPECT_TRUE(Narrow(ZOR_W("")).empty());
    EXPECT_TRUE(Wide(static_cast<const char*>(nullptr)).empty());
    EXPECT_TRUE(Wide("").empty());
}

// --- Assignment.

TYPED_TEST(StringOf, AssignmentSharesAndDropsTheOldBlock)
{
    auto a = this->make("abc");
    auto b = this->make("defg");
    const auto keep = b;
    b = a;
    EXPECT_EQ(b.c_str(), a.c_str());
    EXPECT_EQ(block_of(a).nRefCount, 2);
    EXPECT_EQ(block_of(keep).nRefCount, 1);
    const auto& self = b;
    b = self;
    EXPECT_EQ(block_of(a).nRefCount, 2);
}

TYPED_TEST(StringOf, AssigningTheEmptyStringKeepsAnUnsharedBuffer)
{
    const typename TestFixture::S empty;
    auto s = this->make("abcdef");
    s = empty;
    EXPECT_EQ(s.GetLength(), 0);
    EXPECT_EQ(s.GetAllocLength(), 6);
    auto shared = this->make("abcdef");
    const auto other = shared;
    shared = empty;
    EXPECT_EQ(static_cast<const void*>(shared.c_str()), nil::g_afxNilStr);
    EXPECT_EQ(shown(other), "abcdef");
}

TYPED_TEST(StringOf, TextOfTheSameWidthReusesTheBufferWhenItFits)
{
    auto s = this->make("abcdef");
    const TypeParam* const buffer = s.c_str();
    s = lit<TypeParam>("xy").c_str();
    EXPECT_EQ(s.c_str(), buffer);
    EXPECT_EQ(s.GetAllocLength(), 6);
    EXPECT_EQ(shown(s), "xy");
    s = static_cast<const TypeParam*>(nullptr);
    EXPECT_TRUE(s.empty());
}

TYPED_TEST(StringOf, APartOfTheOwnTextMayBeAssignedAndAppended)
{
    auto s = this->make("abcdef");
    s = s.c_str() + 2;
    EXPECT_EQ(shown(s), "cdef");
    s += s.c_str() + 2;
    EXPECT_EQ(shown(s), "cdefef");
    s += s;
    EXPECT_EQ(shown(s), "cdefefcdefef");
}

TEST(StringCharacters, AreCutOrSignExtendedAndNeverConverted)
{
    Narrow narrow;
    narrow = static_cast<WCHAR>(0x0141);
    EXPECT_EQ(shown(narrow), "A");
    narrow += static_cast<WCHAR>(0x20AC);
    EXPECT_EQ(shown(narrow), "A\\xAC");
    narrow = 'q';
    EXPECT_EQ(shown(narrow), "q");
    Wide wide;
    wide = '\xE9';
    EXPECT_EQ(shown(wide), "\\uFFE9");
    wide += '\x80';
    EXPECT_EQ(shown(wide), "\\uFFE9\\uFF80");
    wide = static_cast<WCHAR>(0x20AC);
    EXPECT_EQ(shown(wide), "\\u20AC");
    wide += 'x';
    EXPECT_EQ(shown(wide), "\\u20ACx");
}

TEST(StringConversion, NullOfTheOtherWidthKeepsAnUnsharedTextAndEmptiesASharedOne)
{
    Narrow narrow("abc");
    narrow = static_cast<const WCHAR*>(nullptr);
    EXPECT_EQ(shown(narrow), "abc");
    Wide wide(ZOR_W("abc"));
    wide = static_cast<const char*>(nullptr);
    EXPECT_EQ(shown(wide), "abc");
    const Wide other = wide;
    wide = static_cast<const char*>(nullptr);
    EXPECT_TRUE(wide.empty());
    EXPECT_EQ(shown(other), "abc");
    Wide same(ZOR_W("abc"));
    same = static_cast<const WCHAR*>(nullptr);
    EXPECT_TRUE(same.empty());
}

TEST(StringConversion, EmptyTextOfTheOtherWidthEmptiesAndKeepsTheBuffer)
{
    Wide wide(ZOR_W("abc"));
    wide = "";
    EXPECT_TRUE(wide.empty());
    EXPECT_EQ(wide.GetAllocLength(), 3);
    Narrow narrow;
    narrow = ZOR_W("");
    EXPECT_EQ(static_cast<const void*>(narrow.c_str()), nil::g_afxNilStr);
}

// --- Append.

TYPED_TEST(StringOf, AppendAllocatesExactlyTheSum)
{
    auto s = this->make("abc");
    s += lit<TypeParam>("de").c_str();
    EXPECT_EQ(shown(s), "abcde");
    EXPECT_EQ(s.GetAllocLength(), 5);
    s += static_cast<TypeParam>('f');
    EXPECT_EQ(s.GetAllocLength(), 6);
    s += static_cast<const TypeParam*>(nullptr);
    EXPECT_EQ(shown(s), "abcdef");
}

TYPED_TEST(StringOf, AppendOfAStringPassesItsZeroCharacters)
{
    const auto text = lit<TypeParam>("x\0y");
    const typename TestFixture::S tail(text.data(), 3);
    auto s = this->make("a");
    s += tail;
    EXPECT_EQ(s.GetLength(), 4);
    EXPECT_EQ(s[3], static_cast<TypeParam>('y'));
}

TYPED_TEST(StringOf, AppendUsesSpareCapacityAndUnsharesASharedBlock)
{
    auto s = this->make("ab");
    s.GetBuffer(10);
    s.ReleaseBuffer(2);
    const TypeParam* const buffer = s.c_str();
    s += lit<TypeParam>("cd").c_str();
    EXPECT_EQ(s.c_str(), buffer);
    const auto other = s;
    s += static_cast<TypeParam>('!');
    EXPECT_EQ(shown(other), "abcd");
    EXPECT_EQ(shown(s), "abcd!");
    EXPECT_EQ(s.GetAllocLength(), 5);
}
