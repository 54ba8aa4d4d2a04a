// Files and folders at the limits: other processes, long and odd names, large and deep folders.
#include <gtest/gtest.h>

#include <set>

#include "tests/fs/other_process.h"
#include "zorutils/fs/FileFunctions.h"
#include "zorutils/fs/file_enumerator.h"
#include "zorutils/fs/platform_file.h"

using base::TFileEnumerator;
using namespace zor_test;

namespace {

class FileLimits : public testing::Test
{
protected:
    static bool can_open(const Wide& path, int flags = base::PLATFORM_FILE_READ)
    {
        base::PlatformFileError error;
        const base::PlatformFile file =
            base::CreatePlatformFile(path, base::PLATFORM_FILE_OPEN | flags, nullptr, &error);
        if (file != INVALID_HANDLE_VALUE)
            base::ClosePlatformFile(file);
        else
            EXPECT_EQ(error, base::PLATFORM_FILE_ERROR_IN_USE);
        return file != INVALID_HANDLE_VALUE;
    }

    TempFolder folder;
};

} // namespace

TEST_F(FileLimits, AFileThatAnotherProcessHasForItselfIsLeftAlone)
{
    const Wide path = folder.write("file", "old"), other = folder.write("other", "new");
    {
        const OtherProcess process(folder, "file");
        ASSERT_TRUE(process.locked());
        EXPECT_FALSE(can_open(path));
        EXPECT_FALSE(can_open(path, base::PLATFORM_FILE_WRITE));
        EXPECT_FALSE(FileFuncs::CopyFromTo(path.c_str(), folder.wide("copy").c_str(), false));
        EXPECT_FALSE(folder.has("copy"));
        EXPECT_FALSE(FileFuncs::CopyFromTo(other.c_str(), path.c_str(), true));
        EXPECT_FALSE(FileFuncs::DelFile(path.c_str(), true));
        EXPECT_FALSE(FileFuncs::RemoveDirectoryTree(path.c_str()));
    }
    EXPECT_EQ(folder.read("file"), "old");
    EXPECT_TRUE(can_open(path));
    EXPECT_TRUE(FileFuncs::DelFile(path.c_str(), false));
}

TEST_F(FileLimits, AnotherProcessIsRefusedWhatThisOneHas)
{
    const Wide path = folder.write("file", "old");
    const base::PlatformFile file = base::CreatePlatformFile(
        path,
        base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ | base::PLATFORM_FILE_EXCLUSIVE_READ |
            base::PLATFORM_FILE_EXCLUSIVE_WRITE,
        nullptr, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    {
        const OtherProcess process(folder, "file");
        EXPECT_FALSE(process.locked());
    }
    base::ClosePlatformFile(file);
    const OtherProcess process(folder, "file");
    EXPECT_TRUE(process.locked());
}

TEST_F(FileLimits, NamesOfAnyLettersAreWalkedAndCopied)
{
    const WCHAR* const names[] = {ZOR_W("\u017Dlu\u0165ou\u010Dk\u00FD k\u016F\u0148.txt"),
                                  ZOR_W("\u4E2D\u6587"), ZOR_W("\U0001F600 face"),
                                  ZOR_W("e\u0301 and \u00E9")};
    Wide sub = folder.wide();
    sub += ZOR_W("\\\U0001D538 \u010D");
    ASSERT_TRUE(FileFuncs::CreateDirRecursive(sub));
    std::set<std::string> wanted, found;
    for (const WCHAR* name : names) {
        Wide path = sub;
        path += ZOR_W("\\");
        path += name;
        ASSERT_TRUE(FileFuncs::WriteFile(path.c_str(), "x", 1)) << shown(name);
        EXPECT_TRUE(FileFuncs::IsFileExist(path)) << shown(name);
        wanted.insert(shown(name));
    }
    Wide copy = folder.wide();
    copy += ZOR_W("\\copy \u010D");
    EXPECT_TRUE(FileFuncs::CopyDirectory(sub.c_str(), copy.c_str(), false, false));
    TFileEnumerator entries(copy, false, TFileEnumerator::FILE_TYPE_FILES);
    for (Wide name = entries.Next(); !name.empty(); name = entries.Next())
        found.insert(shown(name));
    EXPECT_EQ(found, wanted);
    EXPECT_TRUE(FileFuncs::RemoveDirectoryTree(sub.c_str()));
    EXPECT_FALSE(FileFuncs::IsDirExist(sub));
}

TEST_F(FileLimits, LongPathsWorkOrAreRefusedWhole)
{
    // What fits the system's paths is written and read back; what does not is told, and nothing is
    // left behind. 259 units is the longest path of Windows without its terminator.
    for (const int length : {240, 258, 259, 260, 261, 1000, 4000}) {
        Wide path = folder.wide(), top = folder.wide("t");
        path += ZOR_W("\\t");
        while (path.GetLength() < length - 101) {
            path += ZOR_W("\\");
            for (int i = 0; i < 99; ++i)
                path += ZOR_W("d");
        }
        const bool made = FileFuncs::CreateDirRecursive(path);
        path += ZOR_W("\\");
        while (path.GetLength() < length)
            path += ZOR_W("f");
        const bool written = FileFuncs::WriteFile(path.c_str(), "text", 4);
        EXPECT_TRUE(made || !written) << length;
        // The longest that this target's system takes for certain.
        if (length <= ZOR_TEST_LONGEST_PATH) {
            EXPECT_TRUE(written) << length;
        }
        UINT64 size = 0;
        EXPECT_EQ(FileFuncs::GetFileLength(path.c_str(), size), written) << length;
        EXPECT_EQ(size, written ? 4u : 0u) << length;
        EXPECT_EQ(FileFuncs::IsFileExist(path), written) << length;
        const std::string copy = "copy" + std::to_string(length);
        EXPECT_EQ(FileFuncs::CopyFromTo(path.c_str(), folder.wide(copy).c_str(), false), written)
            << length;
        EXPECT_EQ(folder.has(copy), written) << length;
        EXPECT_EQ(folder.read(copy), written ? "text" : "") << length;
        base::PlatformFileError error = base::PLATFORM_FILE_OK;
        const base::PlatformFile file = base::CreatePlatformFile(
            path, base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ, nullptr, &error);
        EXPECT_EQ(error, written ? base::PLATFORM_FILE_OK : base::PLATFORM_FILE_ERROR_NOT_FOUND)
            << length;
        base::ClosePlatformFile(file);
        EXPECT_EQ(FileFuncs::DelFile(path.c_str(), false), written) << length;
        EXPECT_FALSE(FileFuncs::IsFileExist(path)) << length;
        std::error_code failed;
        std::filesystem::remove_all(folder / "t", failed);
    }
}

TEST_F(FileLimits, ADeepTreeIsWalkedAndRemoved)
{
    // Two hundred folders, one in the other, with names as short as can be.
    Wide path = folder.wide("d");
    constexpr int depth = 200;
    bool made = FileFuncs::CreateDirRecursive(path);
    int deep = 1;
    for (; deep < depth && made; ++deep) {
        Wide file = path;
        file += ZOR_W("\\f");
        EXPECT_TRUE(FileFuncs::WriteFile(file.c_str(), "x", 1)) << deep;
        path += ZOR_W("\\d");
        made = FileFuncs::CreateDirRecursive(path);
    }
    // Where the system's paths end earlier, so does the tree; it has every file that was written.
    const auto files = static_cast<unsigned int>(made ? deep - 1 : deep - 2);
    if (made) {
        EXPECT_EQ(deep, depth);
    }
    EXPECT_GE(files, 90u);
    EXPECT_GE(FileFuncs::CountFiles(folder.wide("d"), true), files);
    EXPECT_TRUE(FileFuncs::RemoveDirectoryTree(folder.wide("d").c_str()));
    EXPECT_FALSE(folder.has("d"));
}

TEST_F(FileLimits, ALargeFolderIsWalkedWhole)
{
    constexpr int count = ZOR_TEST_LARGE_FOLDER;
    std::filesystem::create_directory(folder / "many");
    const std::string start = (folder / "many").string() + "/f";
    for (int i = 0; i < count; ++i) {
        FILE* const file = fopen((start + std::to_string(i)).c_str(), "wb");
        ASSERT_NE(file, nullptr);
        fclose(file);
    }
    TFileEnumerator entries(folder.wide("many"), false, TFileEnumerator::FILE_TYPE_FILES);
    std::set<std::string> names;
    for (Wide name = entries.Next(); !name.empty(); name = entries.Next())
        names.insert(shown(name));
    EXPECT_EQ(names.size(), static_cast<size_t>(count));
    EXPECT_EQ(FileFuncs::CountFiles(folder.wide("many"), false), static_cast<unsigned>(count));
}
