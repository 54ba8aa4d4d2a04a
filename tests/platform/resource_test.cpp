#include "zorutils/platform/winapi.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Text = std::basic_string<WCHAR>;

HMODULE load(const WCHAR* path)
{
    HMODULE module = LoadLibraryExW(path, nullptr, LOAD_LIBRARY_AS_DATAFILE);
    EXPECT_NE(module, nullptr) << GetLastError();
    return module;
}

LPCWSTR block_of(unsigned int id)
{
    return MAKEINTRESOURCEW(id / 16 + 1);
}

// The entry of a string block, walked by its lengths.
Text string_in(HMODULE module, HRSRC found, unsigned int id)
{
    if (!found)
        return ZOR_W("<none>");
    const DWORD bytes = SizeofResource(module, found);
    const auto* units = static_cast<const WCHAR*>(LockResource(LoadResource(module, found)));
    EXPECT_NE(units, nullptr);
    const WCHAR* at = units;
    for (unsigned int i = 0; i < id % 16; ++i)
        at += 1 + *at;
    EXPECT_LE((at - units) + 1 + *at, static_cast<ptrdiff_t>(bytes / 2));
    return Text(at + 1, *at);
}

Text string_of(HMODULE module, unsigned int id)
{
    return string_in(module, FindResourceW(module, block_of(id), RT_STRING), id);
}

Text string_in_language(HMODULE module, unsigned int id, WORD language)
{
    return string_in(module, FindResourceExW(module, RT_STRING, block_of(id), language), id);
}

class Resource : public testing::TestWithParam<const WCHAR*>
{
protected:
    HMODULE module = load(GetParam());
};

INSTANTIATE_TEST_SUITE_P(Forms, Resource,
                         testing::Values(ZOR_W(ZOR_TEST_STRINGS_A), ZOR_W(ZOR_TEST_STRINGS_A_DLL)));

TEST_P(Resource, GivesTheEntriesOfABlock)
{
    EXPECT_EQ(string_of(module, 1), ZOR_W("first of a"));
    EXPECT_EQ(string_of(module, 0), ZOR_W(""));
    EXPECT_EQ(string_of(module, 16), ZOR_W("sixteen"));
    EXPECT_EQ(string_of(module, 17), ZOR_W("seventeen"));
    EXPECT_EQ(string_of(module, 18), ZOR_W(""));
    EXPECT_EQ(string_of(module, 31), ZOR_W("thirty-one"));
    EXPECT_EQ(string_of(module, 32), ZOR_W("thirty-two"));
    EXPECT_EQ(string_of(module, 65535), ZOR_W("the last of 16 bits"));
}

TEST_P(Resource, KeepsUnitsOfEveryKind)
{
    EXPECT_EQ(string_of(module, 100), ZOR_W("\u017Dlu\u0165ou\u010Dk\u00FD k\u016F\u0148 \u20AC"));
    EXPECT_EQ(string_of(module, 102), Text(ZOR_W("left\0right"), 10));
    EXPECT_EQ(string_of(module, 103), ZOR_W("point \U0001D538"));
    EXPECT_EQ(string_of(module, 500).size(), 300u);
    EXPECT_EQ(string_of(module, 504), Text(512, 'd'));
}

TEST_P(Resource, CountsTheBytesOfABlock)
{
    HRSRC found = FindResourceW(module, block_of(1), RT_STRING);
    EXPECT_EQ(SizeofResource(module, found), 2u * (16 + 10));
}

TEST_P(Resource, ChoosesTheLanguage)
{
    constexpr WORD czech = 0x0405;
    constexpr WORD american = 0x0409;
    constexpr WORD british = 0x0809;
    constexpr WORD german = 0x0407;
    EXPECT_EQ(string_in_language(module, 600, 0), ZOR_W("neutral"));
    EXPECT_EQ(string_in_language(module, 600, czech), ZOR_W("\u010Desky"));
    EXPECT_EQ(string_in_language(module, 600, american), ZOR_W("in English"));
    EXPECT_EQ(string_in_language(module, 600, british), ZOR_W("neutral"));
    EXPECT_EQ(string_in_language(module, 600, german), ZOR_W("neutral"));
    EXPECT_EQ(string_in_language(module, 640, 0), ZOR_W("in English"));
}

TEST_P(Resource, ReportsALanguageThatIsntThere)
{
    SetLastError(NO_ERROR);
    EXPECT_EQ(FindResourceExW(module, RT_STRING, block_of(620), 0x0407), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_RESOURCE_LANG_NOT_FOUND));
}

TEST_P(Resource, ReportsABlockThatIsntThere)
{
    SetLastError(NO_ERROR);
    EXPECT_EQ(FindResourceW(module, block_of(10000), RT_STRING), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_RESOURCE_NAME_NOT_FOUND));
}

TEST_P(Resource, ReportsATypeThatIsntThere)
{
    SetLastError(NO_ERROR);
    EXPECT_EQ(FindResourceW(module, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(5)), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_RESOURCE_TYPE_NOT_FOUND));
}

TEST_P(Resource, OfANullEntryIsNothing)
{
    EXPECT_EQ(LoadResource(module, nullptr), nullptr);
    EXPECT_EQ(SizeofResource(module, nullptr), 0u);
    EXPECT_EQ(LockResource(nullptr), nullptr);
}

TEST(ResourceModule, ReportsAFileThatIsntThere)
{
    SetLastError(NO_ERROR);
    EXPECT_EQ(LoadLibraryExW(ZOR_W("no such file.dll"), nullptr, LOAD_LIBRARY_AS_DATAFILE),
              nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_FILE_NOT_FOUND));
}

TEST(ResourceModule, ReportsAFileOfAnotherKind)
{
    SetLastError(NO_ERROR);
    EXPECT_EQ(
        LoadLibraryExW(ZOR_W(ZOR_TEST_DATA "/strings_a.rc"), nullptr, LOAD_LIBRARY_AS_DATAFILE),
        nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_BAD_EXE_FORMAT));
}

} // namespace
