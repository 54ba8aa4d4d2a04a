// The names of modules.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/text.h"
#include "zorutils/platform/winapi.h"

using namespace zor_test;

namespace {

Wide own_name()
{
    WCHAR name[1024] = {};
    const DWORD length = GetModuleFileNameW(nullptr, name, 1024);
    EXPECT_GT(length, 0u);
    EXPECT_LT(length, 1024u);
    return Wide(name, static_cast<int>(length));
}

} // namespace

TEST(Module, TheProgramHasItsFullNameWithBackslashes)
{
    const Wide name = own_name();
    EXPECT_GE(name.Find(ZOR_W("\\zor_internal_tests")), 0) << shown(name);
    EXPECT_LT(name.Find('/'), 0) << shown(name);
    EXPECT_NE(GetFileAttributesW(name.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(Module, ASmallBufferGetsACutName)
{
    const Wide name = own_name();
    WCHAR small[8];
    for (WCHAR& unit : small)
        unit = '#';
    SetLastError(0);
    EXPECT_EQ(GetModuleFileNameW(nullptr, small, 6), 6u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(shown(Wide(small, 5)), shown(name.Left(5)));
    // The sixth is the terminator, or one more unit of the name: systems differ.
    EXPECT_EQ(small[6], '#');
}

TEST(Module, ANameThatJustFitsIsWhole)
{
    const Wide name = own_name();
    std::basic_string<WCHAR> buffer(static_cast<size_t>(name.GetLength()) + 1, '#');
    EXPECT_EQ(GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size())),
              static_cast<DWORD>(name.GetLength()));
    EXPECT_EQ(shown(Wide(buffer.c_str())), shown(name));
}
