#include "zorutils/fs/FileFunctions.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/support/debug_capture.h"
#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "zorutils/fs/file_time.h"
#include "zorutils/fs/platform_file.h"
#include "zorutils/zorsys/zor_time.h"

using namespace zor_test;

namespace {

class FileFunctions : public testing::Test
{
protected:
    void set_read_only(const std::string& name, bool on = true)
    {
        std::filesystem::permissions(folder / name, std::filesystem::perms::owner_write,
                                     on ? std::filesystem::perm_options::remove
                                        : std::filesystem::perm_options::add);
        ASSERT_EQ(is_read_only(name), on);
    }
    bool is_read_only(const std::string& name)
    {
        zor_vector<WIN32_FIND_DATAW> entries;
        FileFuncs::GetFileEntriesInFolder(entries, FIND_FOLDER_FILES, folder.wide(),
                                          Wide(name.c_str()).c_str());
        constexpr DWORD read_only = 1;
        return entries.size() == 1 && (entries[0].dwFileAttributes & read_only) != 0;
    }
    void set_written(const std::string& name, INT64 seconds)
    {
        const base::PlatformFile file = base::CreatePlatformFile(
            folder.wide(name), base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_WRITE, nullptr,
            nullptr);
        ASSERT_TRUE(base::TouchPlatformFile(file, seconds, seconds));
        base::ClosePlatformFile(file);
    }
    INT64 written(const std::string& name)
    {
        FILETIME time = {};
        EXPECT_TRUE(
            zor::file_time::zorGetFileTimes(folder.wide(name).c_str(), nullptr, nullptr, &time));
        return base::to_time_t(time);
    }
    bool copy(const std::string& from, const std::string& to, bool overwrite)
    {
        return FileFuncs::CopyFromTo(folder.wide(from).c_str(), folder.wide(to).c_str(), overwrite);
    }
    bool copy_newer(const std::string& from, const std::string& to)
    {
        return FileFuncs::CopyFromToCheckDate(folder.wide(from).c_str(), folder.wide(to).c_str());
    }
    bool remove(const std::string& name, bool force = false)
    {
        return FileFuncs::DelFile(folder.wide(name).c_str(), force);
    }
    void make_folder(const std::string& name)
    {
        std::filesystem::create_directories(folder / name);
    }

    TempFolder folder;
};

// A handle that shares nothing.
class Locked
{
public:
    explicit Locked(const Wide& path)
        : m_file(base::CreatePlatformFile(path,
                                          base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ |
                                              base::PLATFORM_FILE_EXCLUSIVE_READ |
                                              base::PLATFORM_FILE_EXCLUSIVE_WRITE,
                                          nullptr, nullptr))
    {
    }
    ~Locked() { base::ClosePlatformFile(m_file); }

private:
    base::PlatformFile m_file;
};

} // namespace

// --- Asking.

TEST_F(FileFunctions, FilesAndFoldersAreToldApart)
{
    folder.write("file", "12345");
    make_folder("sub");
    struct Row
    {
        const char* name;
        bool file, is_folder;
    };
    for (const Row& row : {Row{"file", true, false},
                           {"sub", false, true},
                           {"none", false, false},
                           {"none/none", false, false},
                           {"file/none", false, false}}) {
        const Wide path = folder.wide(row.name);
        EXPECT_EQ(FileFuncs::IsFileExist(path), row.file) << row.name;
        EXPECT_EQ(FileFuncs::FileExists(path.c_str()), row.file) << row.name;
        EXPECT_EQ(FileFuncs::IsDirExist(path), row.is_folder) << row.name;
        EXPECT_EQ(FileFuncs::IsFolder(path.c_str()), row.is_folder) << row.name;
        UINT64 length = 77;
        EXPECT_EQ(FileFuncs::GetFileLength(path.c_str(), length), row.file) << row.name;
        EXPECT_EQ(length, row.file ? 5u : 77u) << row.name;
    }
}

TEST_F(FileFunctions, DotsAreTheTwoNames)
{
    EXPECT_FALSE(FileFuncs::IsDots(nullptr));
    EXPECT_TRUE(FileFuncs::IsDots(ZOR_W(".")));
    EXPECT_TRUE(FileFuncs::IsDots(ZOR_W("..")));
    for (const WCHAR* other : {ZOR_W(""), ZOR_W("..."), ZOR_W(".a"), ZOR_W("a")})
        EXPECT_FALSE(FileFuncs::IsDots(other)) << shown(other);
}

TEST_F(FileFunctions, TheTemporaryFolderHasNoClosingBackslash)
{
    const Wide path = FileFuncs::GetTempDirWithoutSlash();
    ASSERT_FALSE(path.empty());
    EXPECT_NE(path[path.GetLength() - 1], '\\');
    EXPECT_TRUE(FileFuncs::IsDirExist(path)) << shown(path);
}

TEST_F(FileFunctions, APathWithoutAVolumeIsOnNoCard)
{
    EXPECT_FALSE(FileFuncs::IsPathOnFlashCard(folder.wide().c_str()));
    EXPECT_FALSE(FileFuncs::IsPathOnFlashCard(folder.wide("none").c_str()));
    EXPECT_FALSE(FileFuncs::IsPathOnFlashCard(folder.write("file", "x").c_str()));
    EXPECT_FALSE(FileFuncs::IsPathOnFlashCard(ZOR_W("\\Storage Card\\a\\b")));
    EXPECT_FALSE(FileFuncs::IsPathOnFlashCard(ZOR_W("")));
    EXPECT_FALSE(FileFuncs::IsPathOnFlashCard(ZOR_W("\\")));
}

// --- Names.

TEST_F(FileFunctions, NineCharactersMakeANameIncorrect)
{
    EXPECT_FALSE(FileFuncs::IsFileNameCorrect(Wide()));
    for (const char c : std::string("<>\"\\/:?*|")) {
        Wide name(ZOR_W("a b"));
        name.SetAt(1, static_cast<WCHAR>(c));
        EXPECT_FALSE(FileFuncs::IsFileNameCorrect(name)) << c;
        EXPECT_EQ(shown(FileFuncs::CreateCorrectFileName(name, '-')), "a-b") << c;
        EXPECT_EQ(shown(FileFuncs::CreateCorrectFileName(name, static_cast<WCHAR>(c))), "a_b") << c;
    }
    for (const WCHAR* name : {ZOR_W("a"), ZOR_W(" "), ZOR_W("a.b"), ZOR_W("."), ZOR_W("\u010D")}) {
        EXPECT_TRUE(FileFuncs::IsFileNameCorrect(name)) << shown(name);
        EXPECT_EQ(shown(FileFuncs::CreateCorrectFileName(name, '*')), shown(name));
    }
    EXPECT_EQ(shown(FileFuncs::CreateCorrectFileName(ZOR_W("*a*b*"), '*')), "_a_b_");
    EXPECT_EQ(shown(FileFuncs::CreateCorrectFileName(ZOR_W(""), '*')), "");
}

// --- Copies.

TEST_F(FileFunctions, AnExistingTargetStandsWithoutOverwriting)
{
    folder.write("from", "new");
    folder.write("to", "old");
    EXPECT_TRUE(copy("from", "to", false)) << "counts as success";
    EXPECT_EQ(folder.read("to"), "old");
    EXPECT_TRUE(copy("none", "to", false)) << "the source is not even looked at";
    make_folder("sub");
    EXPECT_TRUE(copy("from", "sub", false));
    EXPECT_TRUE(copy("from", "to", true));
    EXPECT_EQ(folder.read("to"), "new");
    EXPECT_EQ(folder.read("from"), "new");
}

TEST_F(FileFunctions, AReadOnlyTargetIsReplaced)
{
    folder.write("from", "new");
    folder.write("to", "old");
    set_read_only("to");
    EXPECT_TRUE(copy("from", "to", true));
    EXPECT_EQ(folder.read("to"), "new");
}

TEST_F(FileFunctions, MissingFoldersOfTheTargetAreMade)
{
    folder.write("from", "new");
    EXPECT_TRUE(copy("from", "a/b/c/to", false));
    EXPECT_EQ(folder.read("a/b/c/to"), "new");
    EXPECT_TRUE(copy("from", "d/e/to", true));
    EXPECT_EQ(folder.read("d/e/to"), "new");
}

TEST_F(FileFunctions, WhatCannotBeCopiedIsTold)
{
    folder.write("from", "new");
    make_folder("sub");
    EXPECT_FALSE(copy("none", "to", false));
    EXPECT_FALSE(folder.has("to"));
    EXPECT_FALSE(copy("none", "to", true));
    EXPECT_FALSE(copy("sub", "to", true)) << "a folder in place of the file";
    EXPECT_FALSE(folder.has("to"));
    EXPECT_FALSE(copy("from", "sub", true)) << "a folder in place of the target";
    EXPECT_TRUE(std::filesystem::is_directory(folder / "sub"));
    EXPECT_FALSE(copy("from", "from/to", true)) << "a file in place of a folder";
    EXPECT_EQ(folder.read("from"), "new");
}

TEST_F(FileFunctions, AnEmptyFileIsCopied)
{
    folder.write("from", "");
    EXPECT_TRUE(copy("from", "to", false));
    EXPECT_TRUE(folder.has("to"));
}

TEST_F(FileFunctions, ACopyKeepsTheTimeAndTheReadOnlyAttribute)
{
    folder.write("from", "x");
    set_written("from", 1000000000);
    set_read_only("from");
    ASSERT_TRUE(copy("from", "to", false));
    EXPECT_EQ(written("to"), 1000000000);
    EXPECT_TRUE(is_read_only("to"));
    set_read_only("from", false);
    set_read_only("to", false);
}

TEST_F(FileFunctions, ALockedFileIsNeitherCopiedNorReplacedNorDeleted)
{
    folder.write("from", "new");
    folder.write("to", "old");
    {
        const Locked lock(folder.wide("from"));
        EXPECT_FALSE(copy("from", "other", true));
        EXPECT_FALSE(folder.has("other"));
    }
    {
        const Locked lock(folder.wide("to"));
        EXPECT_FALSE(copy("from", "to", true));
        EXPECT_FALSE(remove("to", true));
        EXPECT_FALSE(FileFuncs::RemoveDirectoryTree(folder.wide("to").c_str()));
    }
    EXPECT_EQ(folder.read("to"), "old");
    EXPECT_TRUE(remove("to"));
}

TEST_F(FileFunctions, LargeFilesAreCopiedWhole)
{
    std::string content;
    for (int i = 0; i < 300000; ++i)
        content += static_cast<char>(i * 7 % 251);
    folder.write("from", content + content + content);
    EXPECT_TRUE(copy("from", "to", false));
    EXPECT_EQ(folder.read("to"), content + content + content);
}

TEST_F(FileFunctions, DatesDecide)
{
    folder.write("from", "new");
    EXPECT_TRUE(copy_newer("from", "first")) << "there is no target";
    EXPECT_EQ(folder.read("first"), "new");

    folder.write("to", "old");
    set_written("from", 1000000000);
    set_written("to", 1000000001);
    EXPECT_TRUE(copy_newer("from", "to")) << "an older source";
    EXPECT_EQ(folder.read("to"), "old");
    set_written("to", 1000000000);
    EXPECT_TRUE(copy_newer("from", "to")) << "as old";
    EXPECT_EQ(folder.read("to"), "old");
    // A newer source does not replace the target, on purpose: the host is told and decides.
    set_written("to", 999999999);
    EXPECT_FALSE(copy_newer("from", "to"));
    EXPECT_EQ(folder.read("to"), "old");
    EXPECT_EQ(written("to"), 999999999);

    EXPECT_FALSE(copy_newer("none", "to")) << "a missing source";
    EXPECT_FALSE(copy_newer("none", "none"));
    const Locked lock(folder.wide("from"));
    EXPECT_TRUE(copy_newer("from", "to")) << "a time that cannot be read";
}

TEST_F(FileFunctions, AFolderIsCopiedWithAllBelow)
{
    make_folder("from/sub/deep");
    make_folder("from/empty");
    folder.write("from/a", "1");
    folder.write("from/sub/b", "2");
    folder.write("from/sub/deep/c", "3");
    make_folder("to");
    folder.write("to/a", "old");
    for (const bool third : {false, true}) {
        for (const bool fourth : {false, true}) {
            EXPECT_TRUE(FileFuncs::CopyDirectory(folder.wide("from").c_str(),
                                                 folder.wide("to").c_str(), third, fourth));
            EXPECT_EQ(folder.read("to/a"), "1");
            EXPECT_EQ(folder.read("to/sub/b"), "2");
            EXPECT_EQ(folder.read("to/sub/deep/c"), "3");
            EXPECT_FALSE(folder.has("to/empty")) << "empty folders are not made";
            folder.write("to/a", "old");
        }
    }
}

TEST_F(FileFunctions, AnEmptyOrMissingFolderIsCopiedWithSuccess)
{
    make_folder("from");
    EXPECT_TRUE(FileFuncs::CopyDirectory(folder.wide("from").c_str(), folder.wide("to").c_str(),
                                         false, false));
    EXPECT_FALSE(folder.has("to"));
    EXPECT_TRUE(FileFuncs::CopyDirectory(folder.wide("none").c_str(), folder.wide("to").c_str(),
                                         false, false));
}

TEST_F(FileFunctions, ALaterEntryHidesAnEarlierFailure)
{
    // Two sources, of which the first or the last cannot be copied, whatever order they come in.
    make_folder("from");
    folder.write("from/a", "1");
    folder.write("from/b", "2");
    int failures = 0;
    for (const char* locked : {"from/a", "from/b"}) {
        const Locked lock(folder.wide(locked));
        failures += !FileFuncs::CopyDirectory(folder.wide("from").c_str(),
                                              folder.wide("to").c_str(), false, false);
    }
    EXPECT_EQ(failures, 1) << "only the last entry counts, on purpose";
}

TEST_F(FileFunctions, AFolderIsCopiedIntoItself)
{
    make_folder("from/inner");
    folder.write("from/a", "1");
    folder.write("from/inner/b", "2");
    EXPECT_TRUE(FileFuncs::CopyDirectory(folder.wide("from").c_str(),
                                         folder.wide("from/inner").c_str(), false, false));
    EXPECT_EQ(folder.read("from/inner/a"), "1");
    EXPECT_EQ(folder.read("from/inner/inner/b"), "2");
}

// --- Deleting.

TEST_F(FileFunctions, ARegularFileIsDeleted)
{
    folder.write("file", "x");
    make_folder("sub");
    EXPECT_FALSE(remove("sub"));
    EXPECT_FALSE(remove("sub", true));
    EXPECT_TRUE(folder.has("sub"));
    EXPECT_FALSE(remove("none", true));
    EXPECT_TRUE(remove("file"));
    EXPECT_FALSE(folder.has("file"));
}

TEST_F(FileFunctions, AReadOnlyFileIsDeletedByForce)
{
    folder.write("file", "x");
    set_read_only("file");
    EXPECT_FALSE(remove("file", false));
    EXPECT_TRUE(folder.has("file"));
    EXPECT_TRUE(remove("file", true));
    EXPECT_FALSE(folder.has("file"));
}

TEST_F(FileFunctions, AFolderIsEmptied)
{
    make_folder("top/sub/deep");
    folder.write("top/a", "1");
    folder.write("top/sub/b", "2");
    folder.write("top/sub/deep/c", "3");
    std::filesystem::permissions(folder / "top/sub/b", std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::remove);
    EXPECT_TRUE(FileFuncs::EmptyFolder(folder.wide("top")));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "top"));
    EXPECT_TRUE(FileFuncs::EmptyFolder(folder.wide("top")));
    EXPECT_FALSE(FileFuncs::EmptyFolder(folder.wide("none")));
    EXPECT_FALSE(FileFuncs::EmptyFolder(folder.write("file", "x")));
    EXPECT_TRUE(folder.has("file"));
}

TEST_F(FileFunctions, EmptyingGoesOnBehindWhatIsLocked)
{
    make_folder("top/sub");
    folder.write("top/a", "1");
    folder.write("top/b", "2");
    folder.write("top/sub/c", "3");
    const Locked lock(folder.wide("top/b"));
    EXPECT_FALSE(FileFuncs::EmptyFolder(folder.wide("top")));
    EXPECT_FALSE(folder.has("top/a"));
    EXPECT_TRUE(folder.has("top/b"));
    EXPECT_FALSE(folder.has("top/sub"));
}

TEST_F(FileFunctions, ATreeIsRemoved)
{
    make_folder("top/sub/deep");
    folder.write("top/a", "1");
    folder.write("top/sub/deep/c", "3");
    EXPECT_TRUE(FileFuncs::RemoveDirectoryTree(folder.wide("top").c_str()));
    EXPECT_FALSE(folder.has("top"));
    EXPECT_TRUE(FileFuncs::RemoveDirectoryTree(folder.wide("top").c_str())) << "nothing is there";
    folder.write("file", "x");
    EXPECT_TRUE(FileFuncs::RemoveDirectoryTree(folder.wide("file").c_str()));
    EXPECT_FALSE(folder.has("file"));
}

TEST_F(FileFunctions, ADeepTreeIsMadeAndRemoved)
{
    // As deep as the system's paths are long.
    Wide path = folder.wide("d");
    int depth = 0;
    while (depth < 200 && path.GetLength() < 240) {
        path += ZOR_W("\\d");
        ++depth;
    }
    EXPECT_TRUE(FileFuncs::CreateDirRecursive(path)) << path.GetLength();
    EXPECT_TRUE(FileFuncs::IsDirExist(path));
    EXPECT_EQ(FileFuncs::CountFiles(folder.wide("d"), true), 0u);
    EXPECT_TRUE(FileFuncs::RemoveDirectoryTree(folder.wide("d").c_str()));
    EXPECT_FALSE(folder.has("d"));
}

// --- Making.

TEST_F(FileFunctions, FoldersAreMadeWithTheirParents)
{
    EXPECT_TRUE(FileFuncs::CreateDirRecursive(folder.wide("a/b/c")));
    EXPECT_TRUE(folder.has("a/b/c"));
    EXPECT_TRUE(FileFuncs::CreateDirRecursive(folder.wide("a/b/c"))) << "it is there";
    EXPECT_TRUE(FileFuncs::CreateDirRecursive(folder.wide("d/e/"))) << "a closing separator";
    EXPECT_TRUE(folder.has("d/e"));
    EXPECT_TRUE(FileFuncs::CreateDirectoryTree(folder.wide("f/g")));
    EXPECT_TRUE(folder.has("f/g"));
    folder.write("file", "x");
    EXPECT_FALSE(FileFuncs::CreateDirRecursive(folder.wide("file/sub")));
    EXPECT_FALSE(FileFuncs::CreateDirRecursive(folder.wide("file")));
    EXPECT_FALSE(FileFuncs::CreateDirRecursive(Wide()));
}

TEST_F(FileFunctions, BytesAreWrittenAsTheWholeContent)
{
    const auto checks = [&](const std::string& name, const char* bytes, unsigned int size,
                            bool expected) {
        const DebugCapture log;
        EXPECT_EQ(FileFuncs::WriteFile(folder.wide(name).c_str(), bytes, size), expected) << name;
        int count = 0;
        for (const std::u16string& text : log.texts())
            count += text.find(u"DBGCHK  fs\\FileFunctions @ ") != std::u16string::npos;
        return count;
    };
    EXPECT_EQ(checks("file", "a\0\r\nb", 5, true), 0);
    EXPECT_EQ(folder.read("file"), std::string("a\0\r\nb", 5));
    EXPECT_EQ(checks("file", "x", 1, true), 0);
    EXPECT_EQ(folder.read("file"), "x");
    EXPECT_EQ(checks("file", "", 0, true), 0);
    EXPECT_EQ(folder.read("file"), "");
    EXPECT_EQ(checks("none/file", "x", 1, false), 1);
}

// --- Walking.

TEST_F(FileFunctions, EntriesAreCollected)
{
    make_folder("sub");
    folder.write("a.txt", "1");
    folder.write("b.dat", "22");
    const auto collected = [&](EFindFolder what, const WCHAR* pattern) {
        zor_vector<WIN32_FIND_DATAW> entries;
        entries.push_back(WIN32_FIND_DATAW());
        FileFuncs::GetFileEntriesInFolder(entries, what, folder.wide(), pattern);
        std::set<std::string> names;
        for (const WIN32_FIND_DATAW& entry : entries)
            EXPECT_TRUE(names.insert(shown(entry.cFileName)).second);
        return names;
    };
    typedef std::set<std::string> Names;
    EXPECT_EQ(collected(FIND_FOLDER_FILES, nullptr), (Names{"a.txt", "b.dat"}));
    EXPECT_EQ(collected(FIND_FOLDER_FOLDERS, nullptr), Names{"sub"});
    EXPECT_EQ(collected(FIND_FOLDER_ALL, nullptr), (Names{"a.txt", "b.dat", "sub"}));
    EXPECT_EQ(collected(FIND_FOLDER_ALL, ZOR_W("*.txt")), Names{"a.txt"});
    EXPECT_EQ(collected(FIND_FOLDER_FILES, ZOR_W("none")), Names{});
}

TEST_F(FileFunctions, TreesAreCountedMeasuredAndSearched)
{
    make_folder("top/sub/deep");
    folder.write("top/a", "1");
    folder.write("top/.hidden", "22");
    folder.write("top/sub/b", "333");
    folder.write("top/sub/deep/c.txt", "4444");
    const Wide top = folder.wide("top");
    EXPECT_EQ(FileFuncs::CountFiles(top, false), 2u);
    EXPECT_EQ(FileFuncs::CountFiles(top, true), 4u);
    EXPECT_EQ(FileFuncs::CountFiles(folder.wide("none"), true), 0u);
    EXPECT_EQ(FileFuncs::GetPathSize(top), 10u);
    EXPECT_EQ(FileFuncs::GetPathSize(folder.wide("top/sub/b")), 3u);
    EXPECT_EQ(FileFuncs::GetPathSize(folder.wide("none")), 0u);
    Wide found(ZOR_W("old"));
    EXPECT_FALSE(FileFuncs::FindFileInDirTree(top, ZOR_W("none"), found));
    EXPECT_FALSE(FileFuncs::FindFileInDirTree(top, ZOR_W("sub"), found)) << "a folder";
    EXPECT_EQ(shown(found), "old");
    EXPECT_TRUE(FileFuncs::FindFileInDirTree(top, ZOR_W("C.TXT"), found));
    EXPECT_TRUE(FileFuncs::IsFileExist(found)) << shown(found);
    EXPECT_GE(found.Find(ZOR_W("deep\\c.txt")), 0) << shown(found);
}

TEST_F(FileFunctions, AFolderThatLinksToItselfIsWalkedOnce)
{
    make_folder("top/sub");
    folder.write("top/sub/a", "1");
    std::error_code failed;
    std::filesystem::create_directory_symlink(folder / "top", folder / "top/sub/up", failed);
    if (failed)
        GTEST_SKIP() << "no links can be made here";
    const Wide top = folder.wide("top");
    EXPECT_EQ(FileFuncs::CountFiles(top, true), 1u);
    EXPECT_EQ(FileFuncs::GetPathSize(top), 1u);
    EXPECT_TRUE(FileFuncs::RemoveDirectoryTree(folder.wide("top/sub").c_str()));
    EXPECT_TRUE(folder.has("top")) << "the link went, and not what it names";
}

TEST_F(FileFunctions, PathsAreNotShortenedWithoutAWindow)
{
    EXPECT_EQ(shown(FileFuncs::CompactPath(nullptr, ZOR_W("C:\\data\\job\\p.txt"))),
              "C:\\data\\job\\p.txt");
}

TEST_F(FileFunctions, ARelativePathBelowAFolderThatIsGoneIsAFailure)
{
    const std::filesystem::path before = std::filesystem::current_path();
    folder.write("from.txt", "text");
    std::filesystem::create_directory(folder / "gone");
    std::filesystem::current_path(folder / "gone");
    std::error_code code;
    const bool gone = std::filesystem::remove(folder / "gone", code) && !folder.has("gone");
    UINT64 length = 7;
    const bool copied = FileFuncs::CopyFromTo(folder.wide("from.txt").c_str(), ZOR_W("to"), true);
    const bool folders = FileFuncs::IsFolder(ZOR_W("sub")) || FileFuncs::IsFolder(ZOR_W("a.txt"));
    const bool measured = FileFuncs::GetFileLength(ZOR_W("a.txt"), length);
    const bool taken =
        FileFuncs::CopyFromTo(ZOR_W("a.txt"), folder.wide("taken.txt").c_str(), true);
    std::filesystem::current_path(before);
    if (!gone)
        GTEST_SKIP() << "the system keeps the current folder";
    EXPECT_FALSE(copied);
    EXPECT_FALSE(folders);
    EXPECT_FALSE(measured);
    EXPECT_EQ(length, 7u);
    EXPECT_FALSE(taken);
    EXPECT_FALSE(folder.has("taken.txt"));
    EXPECT_EQ(folder.read("from.txt"), "text");
}
