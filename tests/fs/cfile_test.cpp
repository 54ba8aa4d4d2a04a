// CFile: exceptions with their texts, searches, and parts of paths.
#include "zorutils/fs/cfile.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"

using namespace base;
using namespace zor_test;

namespace {

constexpr int read_old = PLATFORM_FILE_OPEN | PLATFORM_FILE_READ;
constexpr int write_new = PLATFORM_FILE_CREATE_ALWAYS | PLATFORM_FILE_READ | PLATFORM_FILE_WRITE;
constexpr UINT64 none = ~static_cast<UINT64>(0);

// The call and the error in the text "[fs\platform_file:LINE] CALL: ERROR".
template <class Operation>
std::string failure(Operation operation)
{
    try {
        operation();
    } catch (const std::runtime_error& error) {
        const std::string text = error.what();
        EXPECT_EQ(text.find("[fs\\platform_file:"), 0u) << text;
        return text.substr(text.find("] ") + 2);
    }
    return "nothing was thrown";
}

} // namespace

TEST(CFile, ANewObjectIsNotOpenAndIsOneHandle)
{
    CFile file;
    EXPECT_FALSE(file.Opened());
    EXPECT_EQ(file.GetHandle(), INVALID_HANDLE_VALUE);
    EXPECT_EQ(sizeof(CFile), sizeof(PlatformFile));
    EXPECT_TRUE(std::is_trivially_destructible_v<CFile>);
    EXPECT_NO_THROW(file.Close());
}

TEST(CFile, WritesReadsAndKnowsItsPosition)
{
    const TempFolder folder;
    CFile file;
    bool created = false;
    PlatformFileError error;
    ASSERT_TRUE(file.Open(folder.wide("a"), write_new, &created, &error));
    EXPECT_TRUE(created);
    unsigned int done = 0;
    EXPECT_TRUE(file.Write("0123456789", 10, done, nullptr));
    EXPECT_EQ(done, 10u);
    EXPECT_EQ(file.GetPosition(), 10u);
    EXPECT_EQ(file.GetLength(), 10u);
    EXPECT_EQ(file.Seek(-4, PLATFORM_FILE_FROM_END), 6u);
    char buffer[8] = {};
    EXPECT_TRUE(file.Read(buffer, 8, done, nullptr));
    EXPECT_EQ(done, 4u);
    EXPECT_STREQ(buffer, "6789");
    EXPECT_TRUE(file.Read(buffer, 8, done, nullptr));
    EXPECT_EQ(done, 0u);
    file.SetLength(5);
    EXPECT_EQ(file.GetPosition(), 5u);
    EXPECT_EQ(file.GetLength(), 5u);
    EXPECT_EQ(file.Seek(0x1FFFFFFFF, PLATFORM_FILE_FROM_BEGIN), 0x1FFFFFFFFu)
        << "a low half of all ones";
    file.Flush();
    file.Close();
    EXPECT_FALSE(file.Opened());
    EXPECT_NO_THROW(file.Close());
    EXPECT_EQ(folder.read("a"), "01234");
}

TEST(CFile, CopiesNameTheSameHandle)
{
    const TempFolder folder;
    CFile file, copy;
    ASSERT_TRUE(file.Open(folder.wide("a"), write_new, nullptr, nullptr));
    copy = file;
    EXPECT_EQ(copy.GetHandle(), file.GetHandle());
    copy.Close();
    EXPECT_TRUE(file.Opened());
    EXPECT_EQ(failure([&] { file.Close(); }), "CloseHandle: 6");
    EXPECT_FALSE(file.Opened()) << "closed when the exception leaves";
}

TEST(CFile, OpenTellsFailureByItsResult)
{
    const TempFolder folder;
    CFile file;
    PlatformFileError error;
    EXPECT_FALSE(file.Open(folder.wide("missing"), read_old, nullptr, &error));
    EXPECT_EQ(error, PLATFORM_FILE_ERROR_NOT_FOUND);
    EXPECT_FALSE(file.Opened());
}

TEST(CFile, EachThrowingMemberNamesItsCall)
{
    const TempFolder folder;
    CFile closed;
    char buffer[4];
    unsigned int done = 77;
    EXPECT_EQ(failure([&] { closed.Read(buffer, 4, done, nullptr); }), "ReadFile: 6");
    EXPECT_EQ(done, 0u);
    EXPECT_EQ(failure([&] { closed.Write(buffer, 4, done, nullptr); }), "WriteFile: 6");
    EXPECT_EQ(failure([&] { closed.Seek(0, PLATFORM_FILE_FROM_BEGIN); }), "SetFilePointer: 6");
    EXPECT_EQ(failure([&] { closed.GetPosition(); }), "SetFilePointer: 6");
    EXPECT_EQ(failure([&] { closed.GetLength(); }), "GetFileSize: 6");
    EXPECT_EQ(failure([&] { closed.SetLength(1); }), "SetFilePointer: 6");
    EXPECT_EQ(failure([&] { closed.Flush(); }), "FlushFileBuffers: 6");
    EXPECT_EQ(failure([&] { CFile::Remove(folder.wide("missing")); }), "DeleteFile: 2");
    EXPECT_EQ(failure([&] { CFile::Rename(folder.wide("missing"), folder.wide("b")); }),
              "MoveFile: 2");
    CFile reader;
    ASSERT_TRUE(reader.Open(folder.write("a", "x"), read_old, nullptr, nullptr));
    // Which error a handle without access for writing gives differs between systems.
    EXPECT_EQ(failure([&] { reader.SetLength(0); }).find("SetEndOfFile: "), 0u);
    EXPECT_EQ(failure([&] { reader.Seek(-5, PLATFORM_FILE_FROM_BEGIN); }), "SetFilePointer: 131");
    reader.Close();
}

TEST(CFile, AnOverlappedTransferUnderWayIsFalseAndNoFailure)
{
    const TempFolder folder;
    CFile file;
    ASSERT_TRUE(file.Open(folder.write("a", "0123456789"), read_old | PLATFORM_FILE_ASYNC, nullptr,
                          nullptr));
    char buffer[4] = {};
    unsigned int done = 0;
    OVERLAPPED overlapped = {};
    overlapped.Offset = 3;
    bool finished = true;
    EXPECT_NO_THROW(finished = file.Read(buffer, 3, done, &overlapped));
    EXPECT_EQ(done, finished ? 3u : done);
    file.Close();
}

TEST(CFile, RemoveAndRename)
{
    const TempFolder folder;
    const Wide a = folder.write("a", "x"), b = folder.wide("b");
    CFile::Rename(a, b);
    EXPECT_FALSE(folder.has("a"));
    EXPECT_EQ(folder.read("b"), "x");
    folder.write("a", "y");
    EXPECT_EQ(failure([&] { CFile::Rename(a, b); }), "MoveFile: 183");
    CFile::Remove(b);
    EXPECT_FALSE(folder.has("b"));
}

// --- Searches.

TEST(CFile, LengthAndExistenceComeFromASearch)
{
    const TempFolder folder;
    folder.write("points.txt", "12345");
    std::filesystem::create_directory(folder / "sub");
    EXPECT_EQ(CFile::GetLength(folder.wide("points.txt")), 5u);
    EXPECT_EQ(CFile::GetLength(folder.wide("missing")), none);
    EXPECT_EQ(CFile::GetLength(ZOR_W("")), none);
    EXPECT_EQ(CFile::GetLength(nullptr), none);
    bool is_directory = true;
    EXPECT_TRUE(CFile::FileExists(folder.wide("points.txt"), is_directory));
    EXPECT_FALSE(is_directory);
    EXPECT_TRUE(CFile::FileExists(folder.wide("sub"), is_directory));
    EXPECT_TRUE(is_directory);
    EXPECT_FALSE(CFile::FileExists(folder.wide("missing"), is_directory));
    EXPECT_FALSE(is_directory);
    is_directory = true;
    EXPECT_FALSE(CFile::FileExists(nullptr, is_directory));
    EXPECT_FALSE(is_directory);
    EXPECT_FALSE(CFile::FileExists(ZOR_W("")));
}

TEST(CFile, AWildcardExistsWhenAnythingMatches)
{
    const TempFolder folder;
    EXPECT_FALSE(CFile::FileExists(folder.wide("*.txt")));
    folder.write("points.txt", "");
    EXPECT_TRUE(CFile::FileExists(folder.wide("*.txt")));
    EXPECT_TRUE(CFile::FileExists(folder.wide("*.TXT")));
    EXPECT_TRUE(CFile::FileExists(folder.wide("point?.*")));
    EXPECT_FALSE(CFile::FileExists(folder.wide("*.dat")));
}

// --- Names from the system.

TEST(CFile, TemporaryFolderAndNames)
{
    Wide folder;
    CFile::GetTempPathW(folder);
    ASSERT_FALSE(folder.empty());
    EXPECT_EQ(folder[folder.GetLength() - 1], static_cast<WCHAR>('\\'));
    EXPECT_EQ(folder.Find(static_cast<WCHAR>('/')), -1);
    const TempFolder own;
    Wide name;
    CFile::GetTempFileNameW(own.wide(), ZOR_W("zor"), 0, name);
    EXPECT_TRUE(CFile::FileExists(name));
    EXPECT_GE(name.Find(ZOR_W("zor")), 0);
    CFile::GetTempFileNameW(own.wide(), ZOR_W("zor"), 0x12, name);
    EXPECT_FALSE(CFile::FileExists(name)) << "a given number makes no file";
    name = ZOR_W("old");
    EXPECT_NE(failure([&] {
                  CFile::GetTempFileNameW(own.wide("missing"), ZOR_W("zor"), 0, name);
              }).find("GetTempFileName: "),
              std::string::npos);
    EXPECT_TRUE(name.empty());
}

TEST(CFile, ModuleNameWholeOrAlone)
{
    Wide full, alone;
    CFile::GetModuleFileNameW(nullptr, full, true);
    CFile::GetModuleFileNameW(nullptr, alone, false);
    EXPECT_EQ(shown(alone), "zor_tests");
    EXPECT_GT(full.Find(ZOR_W("\\zor_tests")), 0);
    EXPECT_EQ(full.Find(static_cast<WCHAR>('/')), -1);
    Wide missing(ZOR_W("old"));
    EXPECT_NE(failure([&] {
                  CFile::GetModuleFileNameW(reinterpret_cast<HINSTANCE>(0x10), missing, true);
              }).find("GetModuleFileName: "),
              std::string::npos);
    EXPECT_TRUE(missing.empty());
}

// --- Parts of paths.

TEST(CFile, MakePathJoinsAndCollapses)
{
    const struct
    {
        const WCHAR *drive, *dir, *name, *ext;
        const char* expected;
    } rows[] = {
        {ZOR_W("C:"), ZOR_W("\\a\\"), ZOR_W("b"), ZOR_W("txt"), "C:\\a\\b.txt"},
        {nullptr, ZOR_W("\\\\srv\\share"), ZOR_W("f"), nullptr, "\\srv\\share\\f"},
        {nullptr, nullptr, ZOR_W("f"), ZOR_W(".txt"), "f.txt"},
        {ZOR_W("C:"), nullptr, ZOR_W("f"), ZOR_W(""), "C:\\f"},
        {nullptr, ZOR_W("a/b//c"), ZOR_W("d"), nullptr, "a\\b\\c\\d"},
        {nullptr, ZOR_W("a"), nullptr, ZOR_W("txt"), "a.txt"},
        {nullptr, nullptr, nullptr, nullptr, ""},
        {nullptr, ZOR_W("\\\\\\\\a"), ZOR_W("b"), nullptr, "\\a\\b"},
        {ZOR_W(""), ZOR_W("a"), ZOR_W("b"), nullptr, "a\\b"},
    };
    for (const auto& row : rows) {
        Wide out(ZOR_W("old"));
        CFile::MakePath(out, row.drive, row.dir, row.name, row.ext);
        EXPECT_EQ(shown(out), row.expected);
    }
    Wide self(ZOR_W("a"));
    CFile::MakePath(self, nullptr, self.c_str(), ZOR_W("b"), nullptr);
    EXPECT_EQ(shown(self), "a\\b");
}

TEST(CFile, SplitPathAlwaysGivesFourParts)
{
    const struct
    {
        const WCHAR* path;
        const char *drive, *dir, *name, *ext;
    } rows[] = {
        {ZOR_W("C:/a.b/c"), "C:", "\\a.b\\", "c", ""},
        {ZOR_W("name.tar.gz"), "", "", "name.tar", ".gz"},
        {ZOR_W("C:\\a\\b.txt"), "C:", "\\a\\", "b", ".txt"},
        {ZOR_W("a\\"), "", "a\\", "", ""},
        {ZOR_W(".hidden"), "", "", "", ".hidden"},
        {ZOR_W("a."), "", "", "a", "."},
        {ZOR_W(""), "", "", "", ""},
        {ZOR_W("C:"), "C:", "", "", ""},
        {ZOR_W("\\\\srv\\x.y\\f.e"), "", "\\\\srv\\x.y\\", "f", ".e"},
        {ZOR_W("a:b:c.d"), "a:", "", "b:c", ".d"},
    };
    for (const auto& row : rows) {
        Wide drive(ZOR_W("o")), dir(ZOR_W("l")), name(ZOR_W("d")), ext(ZOR_W("!"));
        CFile::SplitPath(row.path, drive, dir, name, ext);
        EXPECT_EQ(shown(drive), row.drive) << shown(row.path);
        EXPECT_EQ(shown(dir), row.dir) << shown(row.path);
        EXPECT_EQ(shown(name), row.name) << shown(row.path);
        EXPECT_EQ(shown(ext), row.ext) << shown(row.path);
    }
}

TEST(CFile, UpdateFileNameReplacesTheFilePart)
{
    Wide out;
    CFile::UpdateFileName(ZOR_W("C:\\a\\old.txt"), ZOR_W("new.dat"), out);
    EXPECT_EQ(shown(out), "C:\\a\\new.dat");
    CFile::UpdateFileName(ZOR_W("old.txt"), ZOR_W("new"), out);
    EXPECT_EQ(shown(out), "new");
    CFile::UpdateFileName(ZOR_W(""), ZOR_W("new.dat"), out);
    EXPECT_EQ(shown(out), "new.dat");
    CFile::UpdateFileName(nullptr, ZOR_W("new.dat"), out);
    EXPECT_EQ(shown(out), "new.dat");
}
