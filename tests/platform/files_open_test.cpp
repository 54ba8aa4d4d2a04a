// Opening files: dispositions, names, access and what is left as last error.
#include <gtest/gtest.h>

#include "tests/platform/file_handle.h"
#include "tests/support/temp_folder.h"

using namespace zor_test;

namespace {

class FilesOpen : public testing::Test
{
protected:
    TempFolder folder;
};

constexpr DWORD untouched = 4711;

// Wine leaves these two to the file system below it: its administrator writes to every file, and a
// file that is to go can be opened until its last handle closes. Windows refuses both.
#ifdef _WIN32
constexpr bool read_only_binds = false, going_files_refuse = false;
#else
constexpr bool read_only_binds = true, going_files_refuse = true;
#endif

} // namespace

TEST_F(FilesOpen, EachDispositionOverEachState)
{
    struct Case
    {
        DWORD disposition;
        bool exists;
        DWORD error;         // 0: opened
        DWORD last_error;    // after success
        const char* content; // afterwards; null: no file
    };
    const Case cases[] = {
        {CREATE_NEW, false, 0, 0, ""},
        {CREATE_NEW, true, ERROR_FILE_EXISTS, 0, "old"},
        {CREATE_ALWAYS, false, 0, 0, ""},
        {CREATE_ALWAYS, true, 0, ERROR_ALREADY_EXISTS, ""},
        {OPEN_EXISTING, false, ERROR_FILE_NOT_FOUND, 0, nullptr},
        {OPEN_EXISTING, true, 0, 0, "old"},
        {OPEN_ALWAYS, false, 0, 0, ""},
        {OPEN_ALWAYS, true, 0, ERROR_ALREADY_EXISTS, "old"},
        {TRUNCATE_EXISTING, false, ERROR_FILE_NOT_FOUND, 0, nullptr},
        {TRUNCATE_EXISTING, true, 0, 0, ""},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(testing::Message() << row.disposition << (row.exists ? " old" : " none"));
        const std::string name =
            "f" + std::to_string(row.disposition) + (row.exists ? "old" : "none");
        if (row.exists)
            folder.write(name, "old");
        SetLastError(untouched);
        const FileHandle file =
            open_file(folder.wide(name), GENERIC_READ | GENERIC_WRITE, 0, row.disposition);
        const DWORD error = GetLastError();
        EXPECT_EQ(file.ok(), row.error == 0);
        EXPECT_EQ(error, row.error != 0 ? row.error : row.last_error);
        EXPECT_EQ(folder.has(name), row.content != nullptr);
        if (file.ok() && row.content != nullptr) {
            char bytes[8] = {};
            DWORD count = 0;
            EXPECT_TRUE(ReadFile(file.get(), bytes, sizeof bytes, &count, nullptr));
            EXPECT_EQ(std::string(bytes, count), row.content);
        } else if (row.content != nullptr) {
            EXPECT_EQ(folder.read(name), row.content);
        }
    }
}

TEST_F(FilesOpen, BadNamesHaveTheirErrors)
{
    folder.write("file", "x");
    std::filesystem::create_directory(folder / "sub");
    struct Case
    {
        std::string name;
        DWORD disposition;
        DWORD error;
    };
    const Case cases[] = {
        {"none", OPEN_EXISTING, ERROR_FILE_NOT_FOUND},
        {"none/none", OPEN_EXISTING, ERROR_PATH_NOT_FOUND},
        {"none/none", CREATE_ALWAYS, ERROR_PATH_NOT_FOUND},
        {"file/none", OPEN_EXISTING, ERROR_PATH_NOT_FOUND},
        {"file/none", CREATE_ALWAYS, ERROR_PATH_NOT_FOUND},
        {"sub", OPEN_EXISTING, ERROR_ACCESS_DENIED},
        {"sub", CREATE_ALWAYS, ERROR_ACCESS_DENIED},
        {"sub", CREATE_NEW, ERROR_FILE_EXISTS},
        {"a*b", OPEN_EXISTING, ERROR_INVALID_NAME},
        {"a?b", CREATE_ALWAYS, ERROR_INVALID_NAME},
        {"a<b", CREATE_ALWAYS, ERROR_INVALID_NAME},
        {"a|b", CREATE_ALWAYS, ERROR_INVALID_NAME},
        {"a\"b", CREATE_ALWAYS, ERROR_INVALID_NAME},
    };
    for (const Case& row : cases) {
        SetLastError(untouched);
        const FileHandle file =
            open_file(folder.wide(row.name), GENERIC_WRITE, share_all, row.disposition);
        EXPECT_EQ(error_of(file.ok()), row.error) << row.name << " " << row.disposition;
    }
    SetLastError(untouched);
    EXPECT_EQ(error_of(open_file(Wide()).ok()), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST_F(FilesOpen, AFolderOpensWithBackupSemanticsAlone)
{
    std::filesystem::create_directory(folder / "sub");
    EXPECT_EQ(error_of(open_file(folder.wide("sub"), GENERIC_READ).ok()),
              DWORD{ERROR_ACCESS_DENIED});
    const FileHandle sub = open_file(folder.wide("sub"), GENERIC_READ, share_all, OPEN_EXISTING,
                                     FILE_FLAG_BACKUP_SEMANTICS);
    ASSERT_TRUE(sub.ok()) << GetLastError();
    BY_HANDLE_FILE_INFORMATION information;
    ASSERT_TRUE(GetFileInformationByHandle(sub.get(), &information));
    EXPECT_TRUE(information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
}

TEST_F(FilesOpen, AReadOnlyFileOpensForReadingAlone)
{
    const Wide path = folder.write("file", "x");
    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(open_file(path, GENERIC_READ).ok());
    if (read_only_binds) {
        EXPECT_EQ(error_of(open_file(path, GENERIC_WRITE).ok()), DWORD{ERROR_ACCESS_DENIED});
        EXPECT_EQ(error_of(open_file(path, GENERIC_WRITE, share_all, CREATE_ALWAYS).ok()),
                  DWORD{ERROR_ACCESS_DENIED});
        EXPECT_EQ(folder.read("file"), "x");
    }
    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_TRUE(open_file(path, GENERIC_WRITE).ok());
}

TEST_F(FilesOpen, AccessIsKept)
{
    const Wide path = folder.write("file", "text");
    char one = 'x';
    DWORD count = 9;
    const FileHandle reader = open_file(path, GENERIC_READ);
    EXPECT_EQ(error_of(WriteFile(reader.get(), &one, 1, &count, nullptr)),
              DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(count, 0u);
    const FileHandle writer = open_file(path, GENERIC_WRITE);
    count = 9;
    EXPECT_EQ(error_of(ReadFile(writer.get(), &one, 1, &count, nullptr)),
              DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(count, 0u);
    const FileHandle neither = open_file(path, 0);
    ASSERT_TRUE(neither.ok());
    EXPECT_EQ(error_of(ReadFile(neither.get(), &one, 1, &count, nullptr)),
              DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(folder.read("file"), "text");
}

TEST_F(FilesOpen, BothSlashesDivideNames)
{
    std::filesystem::create_directory(folder / "sub");
    folder.write("sub/file", "x");
    Wide path = folder.wide();
    path += ZOR_W("\\sub/file");
    EXPECT_TRUE(open_file(path).ok());
    path = folder.wide();
    path += ZOR_W("\\sub\\.\\file");
    EXPECT_TRUE(open_file(path).ok());
    path = folder.wide();
    path += ZOR_W("\\sub\\..\\sub\\file");
    EXPECT_TRUE(open_file(path).ok());
}

TEST_F(FilesOpen, NamesOfAnyLettersComeBack)
{
    for (const WCHAR* name : {ZOR_W("\u017Dlu\u0165ou\u010Dk\u00FD"), ZOR_W("\u4E2D\u6587"),
                              ZOR_W("\U0001F600"), ZOR_W("with blank"), ZOR_W("a.b.c")}) {
        Wide path = folder.wide();
        path += ZOR_W("\\");
        path += name;
        ASSERT_TRUE(open_file(path, GENERIC_WRITE, 0, CREATE_NEW).ok()) << shown(name);
        EXPECT_TRUE(open_file(path, GENERIC_READ).ok()) << shown(name);
        EXPECT_NE(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
    }
}

TEST_F(FilesOpen, AFileGoesWithItsLastHandleWhenToldTo)
{
    folder.write("file", "x");
    FileHandle first = open_file(folder.wide("file"), GENERIC_READ | DELETE, share_all,
                                 OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE);
    ASSERT_TRUE(first.ok()) << GetLastError();
    FileHandle second = open_file(folder.wide("file"), GENERIC_READ);
    ASSERT_TRUE(second.ok()) << GetLastError();
    first.close();
    // Gone for everybody else, though one reads on.
    EXPECT_NE(open_file(folder.wide("file"), GENERIC_READ).ok(), going_files_refuse);
    char one = 0;
    DWORD count = 0;
    EXPECT_TRUE(ReadFile(second.get(), &one, 1, &count, nullptr));
    EXPECT_EQ(one, 'x');
    second.close();
    EXPECT_FALSE(folder.has("file"));
}
