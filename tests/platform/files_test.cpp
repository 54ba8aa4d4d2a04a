// Reading, writing, positions, sizes, attributes and names of files.
#include <gtest/gtest.h>

#include "tests/platform/file_handle.h"
#include "tests/support/temp_folder.h"

using namespace zor_test;

namespace {

class Files : public testing::Test
{
protected:
    FileHandle file_with(const std::string& bytes)
    {
        return open_file(folder.write("file", bytes));
    }
    static std::string read(const FileHandle& file, DWORD count)
    {
        std::string bytes(count, '?');
        DWORD done = 0;
        EXPECT_TRUE(ReadFile(file.get(), bytes.data(), count, &done, nullptr)) << GetLastError();
        bytes.resize(done);
        return bytes;
    }
    static DWORD write(const FileHandle& file, const std::string& bytes)
    {
        DWORD done = 0;
        EXPECT_TRUE(
            WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr))
            << GetLastError();
        return done;
    }

    TempFolder folder;
};

} // namespace

TEST_F(Files, ReadingStopsAtTheEnd)
{
    const FileHandle file = file_with("abcdef");
    EXPECT_EQ(read(file, 4), "abcd");
    EXPECT_EQ(read(file, 4), "ef");
    EXPECT_EQ(read(file, 4), "");
    EXPECT_EQ(position_of(file.get()), 6);
}

TEST_F(Files, WritingBehindTheEndFillsWithZeroes)
{
    const FileHandle file = file_with("ab");
    EXPECT_EQ(SetFilePointer(file.get(), 5, nullptr, FILE_BEGIN), 5u);
    EXPECT_EQ(write(file, "z"), 1u);
    SetFilePointer(file.get(), 0, nullptr, FILE_BEGIN);
    EXPECT_EQ(read(file, 10), std::string("ab\0\0\0z", 6));
}

TEST_F(Files, PositionsFromEachPlace)
{
    const FileHandle file = file_with("0123456789");
    EXPECT_EQ(SetFilePointer(file.get(), 3, nullptr, FILE_BEGIN), 3u);
    EXPECT_EQ(SetFilePointer(file.get(), 2, nullptr, FILE_CURRENT), 5u);
    EXPECT_EQ(SetFilePointer(file.get(), -1, nullptr, FILE_END), 9u);
    EXPECT_EQ(SetFilePointer(file.get(), -9, nullptr, FILE_CURRENT), 0u);
    EXPECT_EQ(
        error_of(SetFilePointer(file.get(), -1, nullptr, FILE_BEGIN) != INVALID_SET_FILE_POINTER),
        DWORD{ERROR_NEGATIVE_SEEK});
    EXPECT_EQ(position_of(file.get()), 0);
    EXPECT_EQ(error_of(SetFilePointer(file.get(), 0, nullptr, 3) != INVALID_SET_FILE_POINTER),
              DWORD{ERROR_INVALID_PARAMETER});
}

TEST_F(Files, PositionsBeyondFourGigabytes)
{
    const FileHandle file = file_with("");
    LONG high = 2;
    EXPECT_EQ(SetFilePointer(file.get(), 7, &high, FILE_BEGIN), 7u);
    EXPECT_EQ(high, 2);
    EXPECT_EQ(position_of(file.get()), 2 * (1LL << 32) + 7);
    high = -1; // minus one, in two halves
    EXPECT_EQ(SetFilePointer(file.get(), -1, &high, FILE_CURRENT), 6u);
    EXPECT_EQ(high, 2);
    // Without the high half the distance is signed, and a far position cannot be told.
    SetLastError(0);
    EXPECT_EQ(SetFilePointer(file.get(), 0, nullptr, FILE_BEGIN), 0u);
    LARGE_INTEGER distance, position;
    distance.QuadPart = -1;
    EXPECT_EQ(error_of(SetFilePointerEx(file.get(), distance, &position, FILE_BEGIN)),
              DWORD{ERROR_NEGATIVE_SEEK});
    distance.QuadPart = 1LL << 40;
    EXPECT_TRUE(SetFilePointerEx(file.get(), distance, nullptr, FILE_BEGIN));
    EXPECT_EQ(position_of(file.get()), 1LL << 40);
}

TEST_F(Files, APositionOfAllOnesIsToldFromAFailureByTheLastError)
{
    const FileHandle file = file_with("");
    LONG high = 1;
    SetLastError(4711);
    EXPECT_EQ(SetFilePointer(file.get(), -1, &high, FILE_BEGIN) == INVALID_SET_FILE_POINTER, true);
}

TEST_F(Files, SizesAndTheirEnd)
{
    const FileHandle file = file_with("0123456789");
    DWORD high = 9;
    EXPECT_EQ(GetFileSize(file.get(), &high), 10u);
    EXPECT_EQ(high, 0u);
    EXPECT_EQ(GetFileSize(file.get(), nullptr), 10u);
    LARGE_INTEGER size;
    EXPECT_TRUE(GetFileSizeEx(file.get(), &size));
    EXPECT_EQ(size.QuadPart, 10);
    SetFilePointer(file.get(), 4, nullptr, FILE_BEGIN);
    EXPECT_TRUE(SetEndOfFile(file.get()));
    EXPECT_EQ(GetFileSize(file.get(), nullptr), 4u);
    EXPECT_EQ(position_of(file.get()), 4);
    SetFilePointer(file.get(), 6, nullptr, FILE_BEGIN);
    EXPECT_TRUE(SetEndOfFile(file.get()));
    SetFilePointer(file.get(), 0, nullptr, FILE_BEGIN);
    EXPECT_EQ(read(file, 10), std::string("0123\0\0", 6));
}

TEST_F(Files, CallsOnAHandleThatIsNoneFail)
{
    char one = 0;
    DWORD count = 0, high = 0;
    LARGE_INTEGER size;
    BY_HANDLE_FILE_INFORMATION information;
    const HANDLE none = INVALID_HANDLE_VALUE;
    EXPECT_EQ(error_of(ReadFile(none, &one, 1, &count, nullptr)), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(error_of(WriteFile(none, &one, 1, &count, nullptr)), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(error_of(SetFilePointer(none, 0, nullptr, FILE_BEGIN) != INVALID_SET_FILE_POINTER),
              DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(error_of(SetEndOfFile(none)), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(error_of(GetFileSize(none, &high) != INVALID_FILE_SIZE), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(error_of(GetFileSizeEx(none, &size)), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(error_of(FlushFileBuffers(none)), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(error_of(GetFileInformationByHandle(none, &information)),
              DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(error_of(GetFileTime(none, nullptr, nullptr, nullptr)), DWORD{ERROR_INVALID_HANDLE});
}

TEST_F(Files, FlushingNeedsWriting)
{
    const FileHandle file = file_with("x");
    EXPECT_TRUE(FlushFileBuffers(file.get()));
    const FileHandle reader = open_file(folder.wide("file"), GENERIC_READ);
    EXPECT_EQ(error_of(FlushFileBuffers(reader.get())), DWORD{ERROR_ACCESS_DENIED});
}

TEST_F(Files, InformationOfAHandle)
{
    const FileHandle file = file_with("12345");
    BY_HANDLE_FILE_INFORMATION information = {}, again = {};
    ASSERT_TRUE(GetFileInformationByHandle(file.get(), &information));
    EXPECT_EQ(information.nFileSizeLow, 5u);
    EXPECT_EQ(information.nFileSizeHigh, 0u);
    EXPECT_EQ(information.nNumberOfLinks, 1u);
    EXPECT_FALSE(information.dwFileAttributes &
                 (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY));
    const FileHandle same = open_file(folder.wide("file"));
    ASSERT_TRUE(GetFileInformationByHandle(same.get(), &again));
    EXPECT_EQ(again.nFileIndexLow, information.nFileIndexLow);
    EXPECT_EQ(again.nFileIndexHigh, information.nFileIndexHigh);
}

TEST_F(Files, TimesComeBackAsSet)
{
    const FileHandle file = file_with("x");
    const FILETIME access = {0x12345680, 0x01CB0000}, write = {0x89ABCDE0, 0x01CB1234};
    ASSERT_TRUE(SetFileTime(file.get(), nullptr, &access, &write));
    FILETIME a = {}, w = {};
    ASSERT_TRUE(GetFileTime(file.get(), nullptr, &a, &w));
    EXPECT_EQ(a.dwLowDateTime, access.dwLowDateTime);
    EXPECT_EQ(a.dwHighDateTime, access.dwHighDateTime);
    EXPECT_EQ(w.dwLowDateTime, write.dwLowDateTime);
    EXPECT_EQ(w.dwHighDateTime, write.dwHighDateTime);
    // One of the two alone.
    ASSERT_TRUE(SetFileTime(file.get(), nullptr, nullptr, &access));
    ASSERT_TRUE(GetFileTime(file.get(), nullptr, &a, &w));
    EXPECT_EQ(w.dwHighDateTime, access.dwHighDateTime);
    EXPECT_EQ(a.dwHighDateTime, access.dwHighDateTime);
}

TEST_F(Files, AttributesOfFilesFoldersAndNothing)
{
    const Wide path = folder.write("file", "x");
    std::filesystem::create_directory(folder / "sub");
    const DWORD attributes = GetFileAttributesW(path.c_str());
    ASSERT_NE(attributes, INVALID_FILE_ATTRIBUTES);
    EXPECT_FALSE(attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(GetFileAttributesW(folder.wide("sub").c_str()) & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(error_of(GetFileAttributesW(folder.wide("none").c_str()) != INVALID_FILE_ATTRIBUTES),
              DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(
        error_of(GetFileAttributesW(folder.wide("none/none").c_str()) != INVALID_FILE_ATTRIBUTES),
        DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(
        error_of(GetFileAttributesW(folder.wide("file/none").c_str()) != INVALID_FILE_ATTRIBUTES),
        DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(error_of(SetFileAttributesW(folder.wide("none").c_str(), FILE_ATTRIBUTE_NORMAL)),
              DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_FALSE(GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY);
}

// --- Names.

TEST_F(Files, DeletingHasItsErrors)
{
    const Wide path = folder.write("file", "x");
    std::filesystem::create_directory(folder / "sub");
    EXPECT_EQ(error_of(DeleteFileW(folder.wide("none").c_str())), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(error_of(DeleteFileW(folder.wide("no/ne").c_str())), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(error_of(DeleteFileW(folder.wide("sub").c_str())), DWORD{ERROR_ACCESS_DENIED});
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(error_of(DeleteFileW(path.c_str())), DWORD{ERROR_ACCESS_DENIED});
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(error_of(DeleteFileW(path.c_str())), 0u);
    EXPECT_FALSE(folder.has("file"));
}

TEST_F(Files, MovingHasItsErrors)
{
    const Wide file = folder.write("file", "f"), other = folder.write("other", "o");
    std::filesystem::create_directory(folder / "sub");
    const auto moved = [&](const Wide& from, const Wide& to, DWORD flags) {
        return error_of(MoveFileExW(from.c_str(), to.c_str(), flags));
    };
    EXPECT_EQ(moved(folder.wide("none"), folder.wide("x"), 0), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(moved(file, folder.wide("no/ne"), 0), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(moved(file, other, 0), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(error_of(MoveFileW(file.c_str(), other.c_str())), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(moved(file, folder.wide("sub"), MOVEFILE_REPLACE_EXISTING),
              DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(folder.read("file"), "f");
    EXPECT_EQ(moved(file, other, MOVEFILE_REPLACE_EXISTING), 0u);
    EXPECT_EQ(folder.read("other"), "f");
    EXPECT_FALSE(folder.has("file"));
    EXPECT_EQ(moved(folder.wide("sub"), folder.wide("sub2"), 0), 0u);
    EXPECT_TRUE(folder.has("sub2"));
}

TEST_F(Files, CopyingHasItsErrors)
{
    const Wide file = folder.write("file", "f"), other = folder.write("other", "o");
    std::filesystem::create_directory(folder / "sub");
    const auto copied = [&](const Wide& from, const Wide& to, BOOL fail_if_exists) {
        return error_of(CopyFileW(from.c_str(), to.c_str(), fail_if_exists));
    };
    EXPECT_EQ(copied(folder.wide("none"), folder.wide("x"), FALSE), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(copied(folder.wide("no/ne"), folder.wide("x"), FALSE), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(copied(file, folder.wide("no/ne"), FALSE), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(copied(file, other, TRUE), DWORD{ERROR_FILE_EXISTS});
    EXPECT_EQ(folder.read("other"), "o");
    EXPECT_EQ(copied(folder.wide("sub"), folder.wide("x"), FALSE), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(copied(file, folder.wide("sub"), FALSE), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(copied(file, other, FALSE), 0u);
    EXPECT_EQ(folder.read("other"), "f");
    EXPECT_EQ(copied(file, folder.wide("new"), TRUE), 0u);
    EXPECT_EQ(folder.read("new"), "f");
    const FileHandle held = open_file(file, GENERIC_READ, 0);
    EXPECT_EQ(copied(file, folder.wide("x"), FALSE), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_FALSE(folder.has("x"));
}

TEST_F(Files, FoldersAreMadeAndRemoved)
{
    const Wide sub = folder.wide("sub");
    EXPECT_EQ(error_of(CreateDirectoryW(sub.c_str(), nullptr)), 0u);
    EXPECT_EQ(error_of(CreateDirectoryW(sub.c_str(), nullptr)), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(error_of(CreateDirectoryW(folder.wide("no/ne").c_str(), nullptr)),
              DWORD{ERROR_PATH_NOT_FOUND});
    folder.write("sub/file", "x");
    EXPECT_EQ(error_of(RemoveDirectoryW(sub.c_str())), DWORD{ERROR_DIR_NOT_EMPTY});
    EXPECT_EQ(error_of(RemoveDirectoryW(folder.wide("sub/file").c_str())), DWORD{ERROR_DIRECTORY});
    EXPECT_EQ(error_of(RemoveDirectoryW(folder.wide("none").c_str())), DWORD{ERROR_FILE_NOT_FOUND});
    std::filesystem::remove(folder / "sub/file");
    EXPECT_EQ(error_of(RemoveDirectoryW(sub.c_str())), 0u);
}

TEST_F(Files, TemporaryNamesAreNewFilesOfTheirForm)
{
    WCHAR first[MAX_PATH], second[MAX_PATH];
    const Wide where = folder.wide();
    const UINT number = GetTempFileNameW(where.c_str(), ZOR_W("abcdef"), 0, first);
    ASSERT_NE(number, 0u);
    ASSERT_NE(GetTempFileNameW(where.c_str(), ZOR_W("abcdef"), 0, second), 0u);
    EXPECT_NE(shown(first), shown(second));
    // Three letters of the prefix, the number in hexadecimal, and the file is there, empty.
    const Wide name = Wide(first).Mid(where.GetLength() + 1);
    char expected[32];
    snprintf(expected, sizeof expected, "abc%x.tmp", number & 0xFFFF);
    EXPECT_EQ(shown(Wide(name).MakeLower()), expected);
    EXPECT_NE(GetFileAttributesW(first), INVALID_FILE_ATTRIBUTES);
    // A number given makes a name and no file.
    WCHAR given[MAX_PATH];
    EXPECT_EQ(GetTempFileNameW(where.c_str(), ZOR_W("x"), 0x12ab, given), 0x12abu);
    EXPECT_EQ(shown(Wide(given).Mid(where.GetLength() + 1).MakeLower()), "x12ab.tmp");
    EXPECT_EQ(GetFileAttributesW(given), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(error_of(GetTempFileNameW(folder.wide("none").c_str(), ZOR_W("x"), 0, given) != 0),
              DWORD{ERROR_DIRECTORY});
}

TEST_F(Files, TheTemporaryFolderEndsInABackslash)
{
    WCHAR path[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, path);
    ASSERT_GT(length, 1u);
    EXPECT_EQ(path[length - 1], '\\');
    EXPECT_EQ(path[length], 0);
    // Too small a buffer: the size that is needed, the terminator included.
    EXPECT_EQ(GetTempPathW(1, path), length + 1);
}

TEST_F(Files, TheCurrentFolderIsSetAndTold)
{
    WCHAR before[MAX_PATH], now[MAX_PATH];
    const DWORD length = GetCurrentDirectoryW(MAX_PATH, before);
    ASSERT_GT(length, 0u);
    EXPECT_EQ(GetCurrentDirectoryW(1, now), length + 1);
    folder.write("here", "x");
    ASSERT_TRUE(SetCurrentDirectoryW(folder.wide().c_str()));
    EXPECT_NE(GetFileAttributesW(ZOR_W("here")), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(error_of(SetCurrentDirectoryW(folder.wide("none").c_str())),
              DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(error_of(SetCurrentDirectoryW(folder.wide("here").c_str())), DWORD{ERROR_DIRECTORY});
    ASSERT_TRUE(SetCurrentDirectoryW(before));
}
