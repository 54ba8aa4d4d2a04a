#include "zorutils/platform/winapi.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Text = std::basic_string<WCHAR>;

Text text_of(BSTR string)
{
    return Text(string, SysStringLen(string));
}

TEST(SysString, CopiesATextUpToItsZeroUnit)
{
    BSTR string = SysAllocString(ZOR_W("abc"));
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(text_of(string), ZOR_W("abc"));
    EXPECT_EQ(SysStringByteLen(string), 6u);
    EXPECT_EQ(string[3], 0);
    SysFreeString(string);
}

TEST(SysString, OfNullIsNull)
{
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    EXPECT_EQ(SysStringByteLen(nullptr), 0u);
    SysFreeString(nullptr);
}

TEST(SysString, CountsZeroUnitsInside)
{
    BSTR string = SysAllocStringLen(ZOR_W("a\0b"), 3);
    EXPECT_EQ(text_of(string), Text(ZOR_W("a\0b"), 3));
    EXPECT_EQ(string[3], 0);
    SysFreeString(string);
}

TEST(SysString, TakesOnlyTheLengthAsked)
{
    BSTR string = SysAllocStringLen(ZOR_W("abcdef"), 2);
    EXPECT_EQ(text_of(string), ZOR_W("ab"));
    EXPECT_EQ(string[2], 0);
    SysFreeString(string);
}

TEST(SysString, WithoutASourceIsTerminatedAtItsLength)
{
    BSTR string = SysAllocStringLen(nullptr, 5);
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(SysStringLen(string), 5u);
    EXPECT_EQ(string[5], 0);
    SysFreeString(string);
}

TEST(SysString, OfNoUnitsIsNotNull)
{
    BSTR string = SysAllocStringLen(ZOR_W("abc"), 0);
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(SysStringLen(string), 0u);
    EXPECT_EQ(string[0], 0);
    SysFreeString(string);
}

TEST(SysString, RefusesALengthWhoseBytesDontFit32Bits)
{
    EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFF), nullptr);
    EXPECT_EQ(SysAllocStringLen(nullptr, 0x80000000), nullptr);
    EXPECT_EQ(SysAllocStringLen(nullptr, 0x7FFFFFFC), nullptr);
}

TEST(SysString, KeepsTheCountInFrontOfTheUnits)
{
    BSTR string = SysAllocStringLen(ZOR_W("abcd"), 4);
    EXPECT_EQ(reinterpret_cast<const UINT*>(string)[-1], 8u);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(string) % sizeof(void*), 0u);
    SysFreeString(string);
}

TEST(SysReAllocStringLen, ReplacesTheText)
{
    BSTR string = SysAllocString(ZOR_W("old text"));
    EXPECT_TRUE(SysReAllocStringLen(&string, ZOR_W("newer text"), 5));
    EXPECT_EQ(text_of(string), ZOR_W("newer"));
    EXPECT_EQ(string[5], 0);
    SysFreeString(string);
}

TEST(SysReAllocStringLen, MakesAStringWhereThereWasNone)
{
    BSTR string = nullptr;
    EXPECT_TRUE(SysReAllocStringLen(&string, ZOR_W("abc"), 3));
    EXPECT_EQ(text_of(string), ZOR_W("abc"));
    SysFreeString(string);
}

TEST(SysReAllocStringLen, KeepsTheOldUnitsWithoutASource)
{
    BSTR string = SysAllocString(ZOR_W("abcdef"));
    EXPECT_TRUE(SysReAllocStringLen(&string, nullptr, 3));
    EXPECT_EQ(text_of(string), ZOR_W("abc"));
    EXPECT_EQ(string[3], 0);
    EXPECT_TRUE(SysReAllocStringLen(&string, nullptr, 4));
    EXPECT_EQ(SysStringLen(string), 4u);
    EXPECT_EQ(text_of(string).substr(0, 3), ZOR_W("abc"));
    SysFreeString(string);
}

TEST(SysReAllocStringLen, ShrinksToNoUnits)
{
    BSTR string = SysAllocString(ZOR_W("abc"));
    EXPECT_TRUE(SysReAllocStringLen(&string, ZOR_W(""), 0));
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(SysStringLen(string), 0u);
    SysFreeString(string);
}

TEST(SysReAllocStringLen, LeavesTheStringWhenTheLengthIsRefused)
{
    BSTR string = SysAllocString(ZOR_W("abc"));
    EXPECT_FALSE(SysReAllocStringLen(&string, ZOR_W("x"), 0xFFFFFFFF));
    EXPECT_EQ(text_of(string), ZOR_W("abc"));
    SysFreeString(string);
}

} // namespace
