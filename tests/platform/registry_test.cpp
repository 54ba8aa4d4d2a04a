// What the registry's calls return.
#include <gtest/gtest.h>

#include "tests/support/registry.h"
#include "zorutils/platform/winapi.h"

using namespace zor_test;

namespace {

const char content[] = R"([HKEY_CURRENT_USER\Software\zorutils-tests]
"Text"="four"
"Number"=dword:00000007

[HKEY_CURRENT_USER\Software\zorutils-tests\below]
)";

class Registry : public testing::Test
{
protected:
    Registry() : registry(content)
    {
        EXPECT_EQ(
            RegOpenKeyExW(HKEY_CURRENT_USER, ZOR_W("Software\\zorutils-tests"), 0, KEY_READ, &key),
            0);
    }
    ~Registry() override { EXPECT_EQ(RegCloseKey(key), 0); }

    TestRegistry registry;
    HKEY key = nullptr;
};

} // namespace

TEST_F(Registry, KeysAreOpenedBelowKeys)
{
    HKEY below = nullptr;
    EXPECT_EQ(RegOpenKeyExW(key, ZOR_W("below"), 0, KEY_READ, &below), 0);
    EXPECT_EQ(RegCloseKey(below), 0);
    EXPECT_EQ(RegOpenKeyExW(key, ZOR_W("missing"), 0, KEY_READ, &below), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegOpenKeyExW(key, ZOR_W("missing\\below"), 0, KEY_READ, &below),
              ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegOpenKeyExW(key, nullptr, 0, KEY_READ, &below), 0);
    EXPECT_EQ(RegCloseKey(below), 0);
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), 0);
}

TEST_F(Registry, ValuesTellTheirSize)
{
    DWORD type = 0, size = 0;
    EXPECT_EQ(RegQueryValueExW(key, ZOR_W("Text"), nullptr, &type, nullptr, &size), 0);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(size, 10u);
    BYTE bytes[10] = {};
    size = 9;
    EXPECT_EQ(RegQueryValueExW(key, ZOR_W("Text"), nullptr, &type, bytes, &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 10u);
    EXPECT_EQ(RegQueryValueExW(key, ZOR_W("Text"), nullptr, nullptr, bytes, &size), 0);
    EXPECT_EQ(bytes[2], 'o');
    size = 10;
    EXPECT_EQ(RegQueryValueExW(key, ZOR_W("Number"), nullptr, &type, bytes, &size), 0);
    EXPECT_EQ(type, DWORD{REG_DWORD});
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(bytes[0], 7);
    EXPECT_EQ(RegQueryValueExW(key, ZOR_W("Missing"), nullptr, &type, bytes, &size),
              ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegQueryValueExW(key, ZOR_W("Text"), nullptr, nullptr, nullptr, nullptr), 0);
}

TEST_F(Registry, NamesNeedRoomForTheirEnd)
{
    WCHAR name[20] = {};
    DWORD size = 5;
    EXPECT_EQ(RegEnumKeyExW(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr),
              ERROR_MORE_DATA);
    size = 6;
    EXPECT_EQ(RegEnumKeyExW(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(shown(name), "below");
    size = 20;
    EXPECT_EQ(RegEnumKeyExW(key, 1, name, &size, nullptr, nullptr, nullptr, nullptr),
              ERROR_NO_MORE_ITEMS);
    int values = 0;
    for (; RegEnumValueW(key, static_cast<DWORD>(values), name, &size, nullptr, nullptr, nullptr,
                         nullptr) == 0;
         ++values)
        size = 20;
    EXPECT_EQ(values, 2);
    size = 20;
    EXPECT_EQ(RegEnumValueW(key, 2, name, &size, nullptr, nullptr, nullptr, nullptr),
              ERROR_NO_MORE_ITEMS);
    size = 3;
    EXPECT_EQ(RegEnumValueW(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr),
              ERROR_MORE_DATA);
}
