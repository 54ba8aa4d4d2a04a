// Searching folders: patterns, what is told of an entry, and errors.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/platform/file_handle.h"
#include "tests/support/temp_folder.h"

using namespace zor_test;

namespace {

class Find : public testing::Test
{
protected:
    // The names that `pattern` finds in the folder, sorted; the end must be told as the end.
    std::set<std::string> found(const std::string& pattern)
    {
        std::set<std::string> names;
        WIN32_FIND_DATAW data;
        const HANDLE search = FindFirstFileW(folder.wide(pattern).c_str(), &data);
        if (search == INVALID_HANDLE_VALUE) {
            EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND}) << pattern;
            return names;
        }
        do
            EXPECT_TRUE(names.insert(shown(data.cFileName)).second) << data.cFileName;
        while (FindNextFileW(search, &data));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_NO_MORE_FILES}) << pattern;
        EXPECT_TRUE(FindClose(search));
        return names;
    }

    DWORD error(const std::string& path)
    {
        WIN32_FIND_DATAW data;
        const HANDLE search = FindFirstFileW(folder.wide(path).c_str(), &data);
        if (search == INVALID_HANDLE_VALUE)
            return GetLastError();
        FindClose(search);
        return 0;
    }

    TempFolder folder;
};

typedef std::set<std::string> Names;

} // namespace

TEST_F(Find, PatternsFindTheirNames)
{
    const Names all = {"a",        "ab",    "abc",     "a.b", "a.txt", "B.TXT",
                       "c.tar.gz", "noext", ".hidden", "x.t", "a b",   "long-name.extension"};
    for (const std::string& name : all)
        folder.write(name, "");
    Names everything = all;
    everything.insert(".");
    everything.insert("..");
    struct Case
    {
        const char* pattern;
        Names names;
    };
    const Case cases[] = {
        {"*", everything},
        {"*.*", everything},
        {"a", {"a"}},
        {"B.TXT", {"B.TXT"}},
        {"b.tx?", {"B.TXT"}},
        {"?", {"a", "."}},
        {"??", {"ab", ".."}},
        {"???", {"abc", "a.b", "x.t", "a b"}},
        {"a*", {"a", "ab", "abc", "a.b", "a.txt", "a b"}},
        {"a?", {"ab"}},
        {"*.txt", {"a.txt", "B.TXT"}},
        {"*.TXT", {"a.txt", "B.TXT"}},
        {"*.t*", {"a.txt", "B.TXT", "c.tar.gz", "x.t"}},
        {"*.t", {"x.t"}},
        {"*.gz", {"c.tar.gz"}},
        {"c.*", {"c.tar.gz"}},
        {"a.*", {"a", "a.b", "a.txt"}},
        {"noext.*", {"noext"}},
        {"*b*", {"ab", "abc", "a.b", "B.TXT", "a b"}},
        {".h*", {".hidden"}},
        {"*.hidden", {".hidden"}},
        {"?.?", {"a.b", "x.t"}},
        {"*-*", {"long-name.extension"}},
        {"*.extension", {"long-name.extension"}},
        {"a b", {"a b"}},
        {"none", {}},
        {"*none*", {}},
    };
    for (const Case& row : cases)
        EXPECT_EQ(found(row.pattern), row.names) << row.pattern;
}

TEST_F(Find, PatternsOfDotsFindEverything)
{
    for (const char* name : {"a", "a.b", "c.d.e"})
        folder.write(name, "");
    const Names everything = {".", "..", "a", "a.b", "c.d.e"};
    for (const char* pattern : {"*.", "*..", "*.*.*", "*.*", "*"})
        EXPECT_EQ(found(pattern), everything) << pattern;
    // Dots behind a name are no part of it.
    EXPECT_EQ(found("a."), Names{"a"});
    EXPECT_EQ(found("a.b."), Names{"a.b"});
}

TEST_F(Find, CaseIsFoldedBeyondAscii)
{
    Wide name = folder.wide();
    name += ZOR_W("\\\u017Dlu\u0165.\u00C9");
    ASSERT_TRUE(open_file(name, GENERIC_WRITE, 0, CREATE_NEW).ok());
    for (const WCHAR* pattern : {ZOR_W("\u017Dlu\u0165.\u00C9"), ZOR_W("\u017ELU\u0164.?"),
                                 ZOR_W("\u017E*"), ZOR_W("*.\u00E9"), ZOR_W("????.?")}) {
        Wide path = folder.wide();
        path += ZOR_W("\\");
        path += pattern;
        WIN32_FIND_DATAW data;
        const HANDLE search = FindFirstFileW(path.c_str(), &data);
        ASSERT_NE(search, INVALID_HANDLE_VALUE) << shown(pattern);
        EXPECT_EQ(shown(data.cFileName), "\\u017Dlu\\u0165.\\u00C9");
        FindClose(search);
    }
}

TEST_F(Find, AnEntryIsTold)
{
    folder.write("file", "12345");
    std::filesystem::create_directory(folder / "sub");
    SetFileAttributesW(folder.wide("file").c_str(), FILE_ATTRIBUTE_READONLY);
    WIN32_FIND_DATAW data;
    HANDLE search = FindFirstFileW(folder.wide("file").c_str(), &data);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_EQ(data.nFileSizeLow, 5u);
    EXPECT_EQ(data.nFileSizeHigh, 0u);
    EXPECT_FALSE(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_TRUE(data.dwFileAttributes & FILE_ATTRIBUTE_READONLY);
    FindClose(search);
    SetFileAttributesW(folder.wide("file").c_str(), FILE_ATTRIBUTE_NORMAL);

    const FileHandle file = open_file(folder.wide("file"));
    FILETIME write = {};
    ASSERT_TRUE(GetFileTime(file.get(), nullptr, nullptr, &write));
    search = FindFirstFileW(folder.wide("file").c_str(), &data);
    EXPECT_EQ(data.ftLastWriteTime.dwLowDateTime, write.dwLowDateTime);
    EXPECT_EQ(data.ftLastWriteTime.dwHighDateTime, write.dwHighDateTime);
    FindClose(search);

    search = FindFirstFileW(folder.wide("sub").c_str(), &data);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    FindClose(search);
}

TEST_F(Find, AnEmptyFolderHoldsTheTwoDots)
{
    std::filesystem::create_directory(folder / "sub");
    EXPECT_EQ(found("sub/*"), (Names{".", ".."}));
    EXPECT_EQ(found("sub/x*"), Names{});
}

TEST_F(Find, BadPathsHaveTheirErrors)
{
    folder.write("file", "x");
    EXPECT_EQ(error("none"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(error("none/*"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(error("none/none"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(error("file/*"), DWORD{ERROR_INVALID_NAME});
    EXPECT_EQ(error("file/"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(error(""), DWORD{ERROR_FILE_NOT_FOUND});
    WIN32_FIND_DATAW data;
    const HANDLE search = FindFirstFileW(ZOR_W(""), &data);
    EXPECT_EQ(search, INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST_F(Find, AHandleThatIsNoSearchIsRefused)
{
    WIN32_FIND_DATAW data;
    EXPECT_EQ(error_of(FindNextFileW(INVALID_HANDLE_VALUE, &data)), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(error_of(FindClose(INVALID_HANDLE_VALUE)), DWORD{ERROR_INVALID_HANDLE});
}

TEST_F(Find, ASearchSeesEveryEntryOfALargeFolder)
{
    constexpr int count = 2000;
    for (int i = 0; i < count; ++i)
        folder.write("f" + std::to_string(i), "");
    EXPECT_EQ(found("f*").size(), static_cast<size_t>(count));
    EXPECT_EQ(found("*").size(), static_cast<size_t>(count) + 2);
}
