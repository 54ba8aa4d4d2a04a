// The buffer, the lock and the protected core of the string.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "tests/support/text.h"
#include "zorutils/zortext/zor_string.h"

using namespace zor_test;
using zor_text::CZorStringT;
namespace nil = zor_string_internal_data;

template <class T>
class BufferOf : public testing::Test
{
public:
    using S = Core<T>;
    static S make(const char* ascii) { return S(Text<T>(ascii, ascii + strlen(ascii)).c_str()); }
};

using BufferWidths = testing::Types<char, WCHAR>;
TYPED_TEST_SUITE(BufferOf, BufferWidths);

TYPED_TEST(BufferOf, GetBufferOfZeroOnTheEmptyStringIsTheNilTerminator)
{
    typename TestFixture::S s;
    EXPECT_EQ(static_cast<void*>(s.GetBuffer(0)), nil::g_afxNilStr);
    s.ReleaseBuffer(-1);
    s.ReleaseBuffer(0);
    EXPECT_TRUE(s.is_nil());
}

TYPED_TEST(BufferOf, GetBufferKeepsTheTextAndGrowsToExactlyWhatIsAsked)
{
    auto s = this->make("abc");
    TypeParam* const buffer = s.GetBuffer(10);
    EXPECT_EQ(s.GetAllocLength(), 10);
    EXPECT_EQ(s.GetLength(), 3);
    EXPECT_EQ(shown(s), "abc");
    EXPECT_EQ(s.GetBuffer(5), buffer);
    std::fill_n(buffer, 10, static_cast<TypeParam>('x'));
    s.ReleaseBuffer(10);
    EXPECT_EQ(shown(s), "xxxxxxxxxx");
}

TYPED_TEST(BufferOf, GetBufferUnsharesAndNeverShortens)
{
    auto s = this->make("abcdef");
    const auto other = s;
    s.GetBuffer(2)[0] = 'X';
    EXPECT_EQ(s.GetAllocLength(), 6);
    EXPECT_EQ(shown(s), "Xbcdef");
    EXPECT_EQ(shown(other), "abcdef");
}

TYPED_TEST(BufferOf, ReleaseBufferMeasuresOnMinusOne)
{
    typename TestFixture::S s;
    TypeParam* const buffer = s.GetBuffer(8);
    buffer[0] = 'a';
    buffer[1] = 'b';
    buffer[2] = 0;
    s.ReleaseBuffer();
    EXPECT_EQ(shown(s), "ab");
    EXPECT_EQ(s.GetAllocLength(), 8);
}

TYPED_TEST(BufferOf, GetBufferSetLengthSetsLengthAndTerminator)
{
    auto s = this->make("abc");
    EXPECT_EQ(s.GetBufferSetLength(2), s.c_str());
    EXPECT_EQ(shown(s), "ab");
    TypeParam* const buffer = s.GetBufferSetLength(5);
    EXPECT_EQ(s.GetLength(), 5);
    EXPECT_EQ(buffer[5], 0);
}

TYPED_TEST(BufferOf, TruncateIsNotClamped)
{
    auto s = this->make("abcdef");
    s.Truncate(2);
    EXPECT_EQ(shown(s), "ab");
    // The buffer still holds what it held: the text grows again by it.
    s.Truncate(6);
    EXPECT_EQ(s.GetLength(), 6);
    EXPECT_EQ(s[0], static_cast<TypeParam>('a'));
    EXPECT_EQ(s[3], static_cast<TypeParam>('d'));
    s.Truncate(9);
    EXPECT_EQ(s.GetLength(), 9);
    EXPECT_EQ(s.c_str()[9], 0);
}

TYPED_TEST(BufferOf, SetAtUnsharesAndKeepsTheLength)
{
    auto s = this->make("abc");
    const auto other = s;
    s.SetAt(0, 'Z');
    EXPECT_EQ(shown(s), "Zbc");
    EXPECT_EQ(shown(other), "abc");
}

TYPED_TEST(BufferOf, FreeExtraGivesSpareCapacityBack)
{
    auto s = this->make("abc");
    s.GetBuffer(100);
    s.ReleaseBuffer(-1);
    EXPECT_EQ(s.GetAllocLength(), 100);
    s.FreeExtra();
    EXPECT_EQ(s.GetAllocLength(), s.GetLength());
    EXPECT_EQ(shown(s), "abc");
    const TypeParam* const buffer = s.c_str();
    s.FreeExtra();
    EXPECT_EQ(s.c_str(), buffer);
}

TYPED_TEST(BufferOf, FreeExtraOnAnEmptiedBufferGivesTheNilBlock)
{
    auto s = this->make("abc");
    s.GetBufferSetLength(0);
    EXPECT_FALSE(s.is_nil());
    s.FreeExtra();
    EXPECT_TRUE(s.is_nil());
}

TYPED_TEST(BufferOf, FreeExtraOnASharedBlockLeavesTheOtherHolder)
{
    auto s = this->make("abc");
    s.GetBuffer(50);
    const auto other = s;
    s.FreeExtra();
    EXPECT_EQ(s.GetAllocLength(), 3);
    EXPECT_EQ(other.GetAllocLength(), 50);
    EXPECT_EQ(other.count(), 1);
}

TYPED_TEST(BufferOf, EmptyLetsGoOfAnUnlockedBlock)
{
    auto s = this->make("abc");
    s.Empty();
    EXPECT_TRUE(s.is_nil());
    s.Empty();
    EXPECT_TRUE(s.is_nil());
    auto shared = this->make("abc");
    const auto other = shared;
    shared.Empty();
    EXPECT_EQ(shown(other), "abc");
    EXPECT_EQ(other.count(), 1);
}

// --- The lock.

TYPED_TEST(BufferOf, LockedBufferIsNeverShared)
{
    auto s = this->make("abc");
    TypeParam* const buffer = s.LockBuffer();
    EXPECT_EQ(buffer, s.c_str());
    EXPECT_EQ(s.count(), -1);
    const CZorStringT<TypeParam> copy(static_cast<const CZorStringT<TypeParam>&>(s));
    CZorStringT<TypeParam> assigned;
    assigned = s;
    EXPECT_NE(copy.c_str(), buffer);
    EXPECT_NE(assigned.c_str(), buffer);
    EXPECT_EQ(shown(copy), "abc");
    EXPECT_EQ(s.count(), -1);
    s.UnlockBuffer();
    EXPECT_EQ(s.count(), 1);
}

TYPED_TEST(BufferOf, CopyOfALockedTextEndsAtAZeroCharacterOnlyInConstruction)
{
    const auto text = lit<TypeParam>("ab\0cd");
    Core<TypeParam> s(text.data(), 5);
    s.LockBuffer();
    const CZorStringT<TypeParam> constructed(static_cast<const CZorStringT<TypeParam>&>(s));
    CZorStringT<TypeParam> assigned;
    assigned = s;
    EXPECT_EQ(constructed.GetLength(), 2);
    EXPECT_EQ(assigned.GetLength(), 5);
    EXPECT_EQ(assigned[4], static_cast<TypeParam>('d'));
}

TYPED_TEST(BufferOf, LockUnsharesFirst)
{
    auto s = this->make("abc");
    const auto other = s;
    s.LockBuffer();
    EXPECT_NE(s.c_str(), other.c_str());
    EXPECT_EQ(other.count(), 1);
}

TYPED_TEST(BufferOf, EmptyKeepsALockedBufferAndItsLock)
{
    auto s = this->make("abc");
    const TypeParam* const buffer = s.LockBuffer();
    s.Empty();
    EXPECT_EQ(s.c_str(), buffer);
    EXPECT_EQ(s.GetLength(), 0);
    EXPECT_EQ(s.GetAllocLength(), 3);
    EXPECT_EQ(s.count(), -1);
}

TYPED_TEST(BufferOf, AssignmentToALockedStringCopiesIntoItsBuffer)
{
    auto s = this->make("abcdef");
    const auto source = this->make("xyz");
    const TypeParam* const buffer = s.LockBuffer();
    s = source;
    EXPECT_EQ(s.c_str(), buffer);
    EXPECT_EQ(s.count(), -1);
    EXPECT_EQ(shown(s), "xyz");
    EXPECT_EQ(source.count(), 1);
}

TYPED_TEST(BufferOf, LockOnTheEmptyStringStaysOnTheNilBlockAndDoesNotNest)
{
    typename TestFixture::S s;
    s.LockBuffer();
    EXPECT_TRUE(s.is_nil());
    s.UnlockBuffer();
    EXPECT_EQ(nil::g_afxInitData[0], -1);
    auto twice = this->make("a");
    twice.LockBuffer();
    twice.LockBuffer();
    twice.UnlockBuffer();
    EXPECT_EQ(twice.count(), 1);
}

// --- The protected core.

TYPED_TEST(BufferOf, ReleaseLeavesTheNilBlockAlsoFromALock)
{
    auto s = this->make("abc");
    s.LockBuffer();
    s.Release();
    EXPECT_TRUE(s.is_nil());
    s.Release();
    EXPECT_EQ(nil::g_afxInitData[0], -1);
}

TYPED_TEST(BufferOf, AllocBeforeWriteKeepsABlockThatFitsAndDropsAnyOther)
{
    auto s = this->make("abc");
    const TypeParam* const buffer = s.c_str();
    s.AllocBeforeWrite(2);
    EXPECT_EQ(s.c_str(), buffer);
    const auto other = s;
    s.AllocBeforeWrite(2);
    EXPECT_NE(s.c_str(), buffer);
    EXPECT_EQ(s.GetAllocLength(), 2);
    EXPECT_EQ(other.count(), 1);
    s.AllocBeforeWrite(9);
    EXPECT_EQ(s.GetAllocLength(), 9);
}

TYPED_TEST(BufferOf, CopyBeforeWriteLeavesUnsharedLockedAndNilBlocks)
{
    auto s = this->make("abc");
    const TypeParam* const buffer = s.c_str();
    s.CopyBeforeWrite();
    EXPECT_EQ(s.c_str(), buffer);
    s.LockBuffer();
    s.CopyBeforeWrite();
    EXPECT_EQ(s.c_str(), buffer);
    typename TestFixture::S empty;
    empty.CopyBeforeWrite();
    EXPECT_TRUE(empty.is_nil());
}

TYPED_TEST(BufferOf, CopyBeforeWriteTakesABlockOfTheTextsLength)
{
    const auto text = lit<TypeParam>("a\0c");
    Core<TypeParam> s(text.data(), 3);
    s.GetBuffer(40);
    const auto other = s;
    s.CopyBeforeWrite();
    EXPECT_EQ(s.GetAllocLength(), 3);
    EXPECT_EQ(s[2], static_cast<TypeParam>('c'));
    EXPECT_EQ(other.GetAllocLength(), 40);
}

TYPED_TEST(BufferOf, AllocCopyTakesAPartWithRoomBehindIt)
{
    const auto s = this->make("abcdef");
    Core<TypeParam> part;
    s.AllocCopy(part, 3, 2, 4);
    EXPECT_EQ(part.GetAllocLength(), 7);
    EXPECT_EQ(shown(part.c_str(), 3), "cde");
    Core<TypeParam> none;
    s.AllocCopy(none, 0, 2, 0);
    EXPECT_TRUE(none.is_nil());
}

TYPED_TEST(BufferOf, ConcatCopyOfNothingDoesNothing)
{
    Core<TypeParam> s;
    s.ConcatCopy(0, s.c_str(), 0, s.c_str());
    EXPECT_TRUE(s.is_nil());
    const auto a = lit<TypeParam>("ab"), b = lit<TypeParam>("cde");
    s.ConcatCopy(2, a.c_str(), 3, b.c_str());
    EXPECT_EQ(shown(s), "abcde");
    EXPECT_EQ(s.GetAllocLength(), 5);
}

TYPED_TEST(BufferOf, StaticReleaseCountsDownAndSparesTheNilBlock)
{
    auto s = this->make("abc");
    s.GetData()->nRefCount = 2; // a count that stands for a holder outside
    Core<TypeParam>::Release(s.GetData());
    EXPECT_EQ(s.count(), 1);
    Core<TypeParam>::Release(Core<TypeParam>::get_afxDataNil());
    EXPECT_EQ(nil::g_afxInitData[0], -1);
}

TYPED_TEST(BufferOf, SafeStrlenTakesNull)
{
    EXPECT_EQ(Core<TypeParam>::SafeStrlen(nullptr), 0);
    EXPECT_EQ(Core<TypeParam>::SafeStrlen(lit<TypeParam>("abc").c_str()), 3);
    EXPECT_EQ(Core<TypeParam>::get_afxChNil(), 0);
}

TYPED_TEST(BufferOf, FrameworkProxyHoldsNullAndTheString)
{
    auto s = this->make("abc");
    const zor_text::CMfcStringProxy<TypeParam> proxy = s.mfcString();
    EXPECT_EQ(sizeof proxy, 2 * sizeof(void*));
    EXPECT_EQ(proxy.m_pBound, nullptr);
    EXPECT_EQ(proxy.m_pString, &s);
}
