// The contract of the user's signs.
#include <gtest/gtest.h>

#include <string>

#include "zorutils/platform/crt.h"
#include "zorutils/platform/winapi.h"

TEST(Locale, TheDecimalSignIsOneToThreeUnitsWithItsTerminator)
{
    WCHAR buffer[5] = {9, 9, 9, 9, 9};
    const int count = GetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SDECIMAL, buffer, 5);
    ASSERT_GE(count, 2);
    ASSERT_LE(count, 4);
    EXPECT_EQ(wcslen(buffer), static_cast<size_t>(count) - 1);
    EXPECT_EQ(GetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SDECIMAL, nullptr, 0), count);
}

TEST(Locale, TheUserDefaultIsNamedByItsNumberToo)
{
    WCHAR by_user[5] = {}, by_number[5] = {};
    EXPECT_NE(GetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SDECIMAL, by_user, 5), 0);
    EXPECT_NE(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, by_number, 5), 0);
    EXPECT_EQ(std::basic_string<WCHAR>(by_user), by_number);
}

TEST(Locale, FailuresSayWhy)
{
    WCHAR buffer[5] = {};
    const auto last = [](int result) { return result == 0 ? GetLastError() : 0; };
    EXPECT_EQ(last(GetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SDECIMAL, buffer, 1)),
              static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(last(GetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SDECIMAL, buffer, -1)),
              static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(last(GetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SDECIMAL, nullptr, 5)),
              static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(last(GetLocaleInfoW(GetUserDefaultLCID(), 0x0FFF, buffer, 5)),
              static_cast<DWORD>(ERROR_INVALID_FLAGS));
}
