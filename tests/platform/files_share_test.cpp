// Share modes: which second open a first one allows.
#include <gtest/gtest.h>

#include "tests/platform/file_handle.h"
#include "tests/support/temp_folder.h"

using namespace zor_test;

namespace {

struct Access
{
    DWORD access;
    DWORD needs; // of the other's share mode
};

const Access accesses[] = {
    {0, 0},
    {FILE_READ_ATTRIBUTES, 0},
    {GENERIC_READ, FILE_SHARE_READ},
    {GENERIC_WRITE, FILE_SHARE_WRITE},
    {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE},
    {DELETE, FILE_SHARE_DELETE},
    {GENERIC_READ | DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE},
};

class FilesShare : public testing::Test
{
protected:
    TempFolder folder;
};

} // namespace

TEST_F(FilesShare, EveryPairOfAccessesUnderEveryPairOfModes)
{
    const Wide path = folder.write("file", "x");
    for (const Access& first : accesses) {
        for (DWORD first_share = 0; first_share <= share_all; ++first_share) {
            const FileHandle held = open_file(path, first.access, first_share);
            ASSERT_TRUE(held.ok()) << GetLastError();
            for (const Access& second : accesses) {
                for (DWORD second_share = 0; second_share <= share_all; ++second_share) {
                    // Each side's access must be in the other's mode; a handle that neither reads,
                    // writes nor deletes bothers nobody, whatever its mode.
                    const bool bothers = first.needs != 0 && second.needs != 0;
                    const bool fits = !bothers || ((second.needs & ~first_share) == 0 &&
                                                   (first.needs & ~second_share) == 0);
                    const FileHandle other = open_file(path, second.access, second_share);
                    EXPECT_EQ(error_of(other.ok()), fits ? 0u : DWORD{ERROR_SHARING_VIOLATION})
                        << std::hex << first.access << "/" << first_share << " then "
                        << second.access << "/" << second_share;
                }
            }
        }
    }
}

TEST_F(FilesShare, AClosedHandleBindsNobody)
{
    const Wide path = folder.write("file", "x");
    FileHandle held = open_file(path, GENERIC_READ, 0);
    EXPECT_EQ(error_of(open_file(path).ok()), DWORD{ERROR_SHARING_VIOLATION});
    held.close();
    EXPECT_TRUE(open_file(path).ok());
}

TEST_F(FilesShare, AThirdHandleIsHeldAgainstAll)
{
    const Wide path = folder.write("file", "x");
    FileHandle reader = open_file(path, GENERIC_READ, share_all);
    FileHandle careful = open_file(path, GENERIC_READ, FILE_SHARE_READ);
    ASSERT_TRUE(careful.ok());
    EXPECT_EQ(error_of(open_file(path, GENERIC_WRITE).ok()), DWORD{ERROR_SHARING_VIOLATION});
    reader.close();
    EXPECT_EQ(error_of(open_file(path, GENERIC_WRITE).ok()), DWORD{ERROR_SHARING_VIOLATION});
    careful.close();
    EXPECT_TRUE(open_file(path, GENERIC_WRITE).ok());
}

TEST_F(FilesShare, DeletingAndRenamingNeedTheShareOfDeletion)
{
    const Wide path = folder.write("file", "x"), other = folder.wide("other");
    FileHandle held = open_file(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_EQ(error_of(DeleteFileW(path.c_str())), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(error_of(MoveFileW(path.c_str(), other.c_str())), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_TRUE(folder.has("file"));
    held.close();
    held = open_file(path, GENERIC_READ, share_all);
    EXPECT_EQ(error_of(MoveFileW(path.c_str(), other.c_str())), 0u);
    EXPECT_TRUE(folder.has("other"));
    EXPECT_EQ(error_of(DeleteFileW(other.c_str())), 0u);
    held.close();
    EXPECT_FALSE(folder.has("other"));
}

TEST_F(FilesShare, ReplacingAFileNeedsItsShare)
{
    const Wide from = folder.write("from", "new"), to = folder.write("to", "old");
    FileHandle held = open_file(to, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_FALSE(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING));
    EXPECT_EQ(folder.read("to"), "old");
    held.close();
    EXPECT_TRUE(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING));
    EXPECT_EQ(folder.read("to"), "new");
}

TEST_F(FilesShare, TwoNamesOfOneFileShareItsRules)
{
    const Wide path = folder.write("file", "x");
    std::error_code failed;
    std::filesystem::create_hard_link(folder / "file", folder / "link", failed);
    if (failed)
        GTEST_SKIP() << "no hard links here";
    const FileHandle held = open_file(path, GENERIC_READ, 0);
    EXPECT_EQ(error_of(open_file(folder.wide("link")).ok()), DWORD{ERROR_SHARING_VIOLATION});
}
