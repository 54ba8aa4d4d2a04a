// Platform files: flags, errors, results and positions.
#include "zorutils/fs/platform_file.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/debug_capture.h"
#include "tests/support/temp_folder.h"
#include "tests/support/text.h"

using namespace base;
using namespace zor_test;

namespace {

constexpr unsigned int failed = ~0u;
constexpr int read_old = PLATFORM_FILE_OPEN | PLATFORM_FILE_READ;
constexpr int write_new = PLATFORM_FILE_CREATE_ALWAYS | PLATFORM_FILE_WRITE;

// The records of failed checks in this source; other programs may write to the stream too.
int checks(const DebugCapture& log)
{
    int count = 0;
    for (const std::u16string& text : log.texts())
        count += text.find(u"DBGCHK  fs\\platform_file @ ") != std::u16string::npos ? 1 : 0;
    return count;
}

struct Opened
{
    PlatformFile file;
    PlatformFileError error = static_cast<PlatformFileError>(77);
    bool created = true;

    Opened(const Wide& path, int flags)
    {
        file = CreatePlatformFile(path, flags, &created, &error);
    }
    ~Opened()
    {
        if (valid())
            ClosePlatformFile(file);
    }
    bool valid() const { return file != INVALID_HANDLE_VALUE && file != nullptr; }
};

} // namespace

TEST(PlatformFile, NumbersAreThoseOfTheInterface)
{
    EXPECT_EQ(PLATFORM_FILE_OPEN, 0x1);
    EXPECT_EQ(PLATFORM_FILE_CREATE, 0x2);
    EXPECT_EQ(PLATFORM_FILE_OPEN_ALWAYS, 0x4);
    EXPECT_EQ(PLATFORM_FILE_CREATE_ALWAYS, 0x8);
    EXPECT_EQ(PLATFORM_FILE_TRUNCATE, 0x10);
    EXPECT_EQ(PLATFORM_FILE_READ, 0x20);
    EXPECT_EQ(PLATFORM_FILE_WRITE, 0x40);
    EXPECT_EQ(PLATFORM_FILE_EXCLUSIVE_READ, 0x80);
    EXPECT_EQ(PLATFORM_FILE_EXCLUSIVE_WRITE, 0x100);
    EXPECT_EQ(PLATFORM_FILE_ASYNC, 0x200);
    EXPECT_EQ(PLATFORM_FILE_TEMPORARY, 0x400);
    EXPECT_EQ(PLATFORM_FILE_HIDDEN, 0x800);
    EXPECT_EQ(PLATFORM_FILE_DELETE_ON_CLOSE, 0x1000);
    EXPECT_EQ(PLATFORM_FILE_WRITE_ATTRIBUTES, 0x2000);
    EXPECT_EQ(PLATFORM_FILE_SHARE_DELETE, 0x8000);
    EXPECT_EQ(PLATFORM_FILE_BACKUP_SEMANTICS, 0x20000);
    EXPECT_EQ(PLATFORM_FILE_OK, 0);
    EXPECT_EQ(PLATFORM_FILE_ERROR_FAILED, -1);
    EXPECT_EQ(PLATFORM_FILE_ERROR_IN_USE, -2);
    EXPECT_EQ(PLATFORM_FILE_ERROR_EXISTS, -3);
    EXPECT_EQ(PLATFORM_FILE_ERROR_NOT_FOUND, -4);
    EXPECT_EQ(PLATFORM_FILE_ERROR_ACCESS_DENIED, -5);
    EXPECT_EQ(PLATFORM_FILE_FROM_BEGIN, 0);
    EXPECT_EQ(PLATFORM_FILE_FROM_CURRENT, 1);
    EXPECT_EQ(PLATFORM_FILE_FROM_END, 2);
}

TEST(PlatformFile, EachDispositionOnAnOldAndAMissingFile)
{
    const struct
    {
        int flags;
        PlatformFileError old_error, missing_error;
        bool old_created, missing_created;
        const char* old_content;
    } rows[] = {
        {PLATFORM_FILE_OPEN, PLATFORM_FILE_OK, PLATFORM_FILE_ERROR_NOT_FOUND, false, false, "old"},
        {PLATFORM_FILE_CREATE, PLATFORM_FILE_ERROR_EXISTS, PLATFORM_FILE_OK, false, true, "old"},
        {PLATFORM_FILE_OPEN_ALWAYS, PLATFORM_FILE_OK, PLATFORM_FILE_OK, false, true, "old"},
        {PLATFORM_FILE_CREATE_ALWAYS, PLATFORM_FILE_OK, PLATFORM_FILE_OK, true, true, ""},
        {PLATFORM_FILE_TRUNCATE, PLATFORM_FILE_OK, PLATFORM_FILE_ERROR_NOT_FOUND, false, false, ""},
    };
    for (const auto& row : rows) {
        const TempFolder folder;
        {
            const Opened old(folder.write("old", "old"), row.flags | PLATFORM_FILE_WRITE);
            EXPECT_EQ(old.error, row.old_error) << row.flags;
            EXPECT_EQ(old.created, row.old_created) << row.flags;
            EXPECT_EQ(old.valid(), row.old_error == PLATFORM_FILE_OK) << row.flags;
            const Opened missing(folder.wide("missing"), row.flags | PLATFORM_FILE_WRITE);
            EXPECT_EQ(missing.error, row.missing_error) << row.flags;
            EXPECT_EQ(missing.created, row.missing_created) << row.flags;
        }
        EXPECT_EQ(folder.read("old"), row.old_content) << row.flags;
        EXPECT_EQ(folder.has("missing"), row.missing_error == PLATFORM_FILE_OK) << row.flags;
    }
}

TEST(PlatformFile, TwoDotsAnywhereAreRefusedUntouched)
{
    const TempFolder folder;
    folder.write("a..b.txt", "text");
    for (const Wide& path :
         {folder.wide("a..b.txt"), Wide(ZOR_W("C:\\data\\a..b.txt")), Wide(ZOR_W("..\\x"))}) {
        const Opened file(path, PLATFORM_FILE_OPEN_ALWAYS | PLATFORM_FILE_READ);
        EXPECT_EQ(file.file, INVALID_HANDLE_VALUE);
        EXPECT_EQ(file.error, PLATFORM_FILE_ERROR_ACCESS_DENIED);
        EXPECT_TRUE(file.created) << "the flag is left alone here";
    }
    EXPECT_EQ(CreatePlatformFile(ZOR_W(".."), read_old, nullptr, nullptr), INVALID_HANDLE_VALUE);
    PlatformFileError error;
    const PlatformFile file =
        CreatePlatformFileUnsafe(folder.wide("a..b.txt"), read_old, nullptr, &error);
    EXPECT_EQ(error, PLATFORM_FILE_OK);
    EXPECT_TRUE(ClosePlatformFile(file));
}

TEST(PlatformFile, WithoutADispositionTheHandleIsNullAndTheErrorUnwritten)
{
    const TempFolder folder;
    const Opened file(folder.write("a", ""), PLATFORM_FILE_READ);
    EXPECT_EQ(file.file, nullptr);
    EXPECT_FALSE(file.created);
    EXPECT_EQ(static_cast<int>(file.error), 77);
}

TEST(PlatformFile, ContradictingFlagsAreLoggedAndTheLastCounts)
{
    const TempFolder folder;
    {
        DebugCapture log;
        const Opened file(folder.write("a", "old"),
                          PLATFORM_FILE_OPEN | PLATFORM_FILE_CREATE | PLATFORM_FILE_READ);
        EXPECT_EQ(file.error, PLATFORM_FILE_ERROR_EXISTS);
        EXPECT_EQ(checks(log), 1);
    }
    {
        DebugCapture log;
        const Opened file(folder.wide("a"), PLATFORM_FILE_OPEN | PLATFORM_FILE_CREATE |
                                                PLATFORM_FILE_OPEN_ALWAYS | PLATFORM_FILE_READ);
        EXPECT_EQ(file.error, PLATFORM_FILE_OK);
        EXPECT_FALSE(file.created);
        EXPECT_EQ(checks(log), 2);
    }
    EXPECT_EQ(folder.read("a"), "old");
    {
        // Logged, and it goes on: what becomes of it is the system's answer.
        DebugCapture log;
        const Opened file(folder.wide("a"), PLATFORM_FILE_TRUNCATE | PLATFORM_FILE_READ);
        EXPECT_EQ(checks(log), 1);
        EXPECT_NE(static_cast<int>(file.error), 77);
    }
}

TEST(PlatformFile, BitsWithoutMeaningAreIgnored)
{
    const TempFolder folder;
    const Opened file(folder.write("a", "x"), read_old | 0x4000 | 0x10000);
    EXPECT_EQ(file.error, PLATFORM_FILE_OK);
}

TEST(PlatformFile, ErrorsHaveTheirOwnValuesOrTheGeneralOne)
{
    const TempFolder folder;
    EXPECT_EQ(Opened(folder.wide("no/file"), read_old).error, PLATFORM_FILE_ERROR_FAILED);
    EXPECT_EQ(Opened(folder.wide(), read_old).error, PLATFORM_FILE_ERROR_ACCESS_DENIED);
    EXPECT_EQ(Opened(folder.wide("missing"), read_old).error, PLATFORM_FILE_ERROR_NOT_FOUND);
    EXPECT_EQ(CreatePlatformFile(folder.wide("missing"), read_old, nullptr, nullptr),
              INVALID_HANDLE_VALUE);
}

TEST(PlatformFile, SharingIsOptOutForReadingAndWriting)
{
    const TempFolder folder;
    const Wide path = folder.write("a", "x");
    constexpr int read_write = PLATFORM_FILE_OPEN | PLATFORM_FILE_READ | PLATFORM_FILE_WRITE;
    const struct
    {
        int first, second;
        PlatformFileError error;
    } rows[] = {
        {read_old, read_write, PLATFORM_FILE_OK},
        {read_write, read_write, PLATFORM_FILE_OK},
        {read_old | PLATFORM_FILE_EXCLUSIVE_READ, read_old, PLATFORM_FILE_ERROR_IN_USE},
        {read_old | PLATFORM_FILE_EXCLUSIVE_WRITE, read_old, PLATFORM_FILE_OK},
        {read_old | PLATFORM_FILE_EXCLUSIVE_WRITE, read_write, PLATFORM_FILE_ERROR_IN_USE},
        {read_write, read_old | PLATFORM_FILE_EXCLUSIVE_WRITE, PLATFORM_FILE_ERROR_IN_USE},
        {read_write, read_old | PLATFORM_FILE_EXCLUSIVE_READ, PLATFORM_FILE_ERROR_IN_USE},
    };
    for (const auto& row : rows) {
        const Opened first(path, row.first);
        ASSERT_EQ(first.error, PLATFORM_FILE_OK);
        EXPECT_EQ(Opened(path, row.second).error, row.error) << row.first << ' ' << row.second;
    }
    EXPECT_EQ(Opened(path, read_write).error, PLATFORM_FILE_OK);
}

TEST(PlatformFile, DeleteOnCloseAndBackupSemantics)
{
    const TempFolder folder;
    {
        const Opened file(folder.wide("gone"), PLATFORM_FILE_CREATE | PLATFORM_FILE_WRITE |
                                                   PLATFORM_FILE_TEMPORARY | PLATFORM_FILE_HIDDEN |
                                                   PLATFORM_FILE_DELETE_ON_CLOSE);
        EXPECT_EQ(file.error, PLATFORM_FILE_OK);
        EXPECT_TRUE(folder.has("gone"));
    }
    EXPECT_FALSE(folder.has("gone"));
    const Opened opened(folder.wide(), read_old | PLATFORM_FILE_BACKUP_SEMANTICS);
    EXPECT_EQ(opened.error, PLATFORM_FILE_OK);
    PlatformFileInfo info;
    EXPECT_TRUE(GetPlatformFileInfo(opened.file, &info));
    EXPECT_TRUE(info.is_directory);
}

// --- Content and position.

TEST(PlatformFile, ReadAndWriteGiveTheirCounts)
{
    const TempFolder folder;
    {
        const Opened file(folder.wide("a"), write_new);
        EXPECT_EQ(WritePlatformFile(file.file, "hello", 5), 5u);
        EXPECT_EQ(WritePlatformFile(file.file, "", 0), 0u);
        char buffer[4];
        EXPECT_EQ(ReadPlatformFile(file.file, buffer, 4), failed) << "no access for reading";
    }
    EXPECT_EQ(folder.read("a"), "hello");
    const Opened file(folder.wide("a"), read_old);
    char buffer[8] = {};
    EXPECT_EQ(ReadPlatformFile(file.file, buffer, 8), 5u);
    EXPECT_STREQ(buffer, "hello");
    EXPECT_EQ(ReadPlatformFile(file.file, buffer, 8), 0u) << "the end of the file";
    EXPECT_EQ(WritePlatformFile(file.file, "x", 1), failed);
    EXPECT_EQ(ReadPlatformFile(INVALID_HANDLE_VALUE, buffer, 8), failed);
    EXPECT_EQ(WritePlatformFile(INVALID_HANDLE_VALUE, buffer, 8), failed);
}

TEST(PlatformFile, SeekTellsAnInvalidHandleFromAFailure)
{
    const TempFolder folder;
    const Opened file(folder.write("a", "0123456789"), read_old);
    EXPECT_EQ(SeekPlatformFile(file.file, PLATFORM_FILE_FROM_BEGIN, 4), 4);
    EXPECT_EQ(SeekPlatformFile(file.file, PLATFORM_FILE_FROM_CURRENT, 2), 6);
    EXPECT_EQ(SeekPlatformFile(file.file, PLATFORM_FILE_FROM_END, -1), 9);
    EXPECT_EQ(SeekPlatformFile(file.file, PLATFORM_FILE_FROM_BEGIN, 0x123456789), 0x123456789);
    EXPECT_EQ(SeekPlatformFile(file.file, PLATFORM_FILE_FROM_BEGIN, -1), 0)
        << "as position 0, on purpose";
    EXPECT_EQ(SeekPlatformFile(INVALID_HANDLE_VALUE, PLATFORM_FILE_FROM_BEGIN, 0), -1);
}

TEST(PlatformFile, TruncateKeepsThePositionAlsoBehindTheEnd)
{
    const TempFolder folder;
    {
        const Opened file(folder.write("a", "0123456789"),
                          PLATFORM_FILE_OPEN | PLATFORM_FILE_WRITE);
        SeekPlatformFile(file.file, PLATFORM_FILE_FROM_BEGIN, 8);
        EXPECT_TRUE(TruncatePlatformFile(file.file, 4));
        EXPECT_EQ(SeekPlatformFile(file.file, PLATFORM_FILE_FROM_CURRENT, 0), 8);
        EXPECT_EQ(SeekPlatformFile(file.file, PLATFORM_FILE_FROM_END, 0), 4);
        EXPECT_TRUE(TruncatePlatformFile(file.file, 6));
        EXPECT_FALSE(TruncatePlatformFile(file.file, -1));
    }
    EXPECT_EQ(folder.read("a"), std::string("0123\0\0", 6));
    const Opened reader(folder.wide("a"), read_old);
    SeekPlatformFile(reader.file, PLATFORM_FILE_FROM_BEGIN, 1);
    EXPECT_FALSE(TruncatePlatformFile(reader.file, 3)) << "no access for writing";
    EXPECT_EQ(SeekPlatformFile(reader.file, PLATFORM_FILE_FROM_CURRENT, 0), 3);
    EXPECT_FALSE(TruncatePlatformFile(INVALID_HANDLE_VALUE, 0));
}

TEST(PlatformFile, TouchSetsBothTimesAndInfoTellsThem)
{
    const TempFolder folder;
    const Wide path = folder.write("a", "0123456789");
    INT64 creation = 0;
    {
        const Opened file(path, PLATFORM_FILE_OPEN | PLATFORM_FILE_WRITE);
        PlatformFileInfo before;
        EXPECT_TRUE(GetPlatformFileInfo(file.file, &before));
        creation = before.creation_time;
        EXPECT_TRUE(TouchPlatformFile(file.file, 1000000000, 1234567890));
    }
    const Opened file(path, read_old);
    PlatformFileInfo info;
    EXPECT_TRUE(GetPlatformFileInfo(file.file, &info));
    EXPECT_EQ(info.size, 10);
    EXPECT_FALSE(info.is_directory);
    EXPECT_FALSE(info.is_symbolic_link);
    EXPECT_EQ(info.last_accessed, 1000000000);
    EXPECT_EQ(info.last_modified, 1234567890);
    // Where the file system keeps no creation time it is told from the other two.
    EXPECT_TRUE(info.creation_time == creation || info.creation_time == info.last_modified);
    EXPECT_FALSE(TouchPlatformFile(INVALID_HANDLE_VALUE, 0, 0));
    EXPECT_FALSE(GetPlatformFileInfo(file.file, nullptr));
    EXPECT_FALSE(GetPlatformFileInfo(INVALID_HANDLE_VALUE, &info));
}

TEST(PlatformFile, InfoStartsAtZero)
{
    const PlatformFileInfo info;
    EXPECT_EQ(info.size, 0);
    EXPECT_FALSE(info.is_directory);
    EXPECT_FALSE(info.is_symbolic_link);
    EXPECT_EQ(info.last_modified, 0);
    EXPECT_EQ(info.last_accessed, 0);
    EXPECT_EQ(info.creation_time, 0);
}

TEST(PlatformFile, FlushAndClose)
{
    const TempFolder folder;
    Opened file(folder.wide("a"), write_new);
    EXPECT_TRUE(FlushPlatformFile(file.file));
    EXPECT_FALSE(FlushPlatformFile(INVALID_HANDLE_VALUE));
    EXPECT_TRUE(ClosePlatformFile(file.file));
    file.file = INVALID_HANDLE_VALUE;
}

TEST(PlatformFile, AStreamOwnsTheHandle)
{
    const TempFolder folder;
    const Wide path = folder.wide("a");
    PlatformFileError error;
    PlatformFile file = CreatePlatformFile(
        path, PLATFORM_FILE_CREATE | PLATFORM_FILE_WRITE | PLATFORM_FILE_EXCLUSIVE_READ, nullptr,
        &error);
    FILE* const out = FdopenPlatformFile(file, "wb");
    ASSERT_NE(out, nullptr);
    fputs("through a stream\n", out);
    EXPECT_EQ(Opened(path, read_old).error, PLATFORM_FILE_ERROR_IN_USE);
    EXPECT_EQ(fclose(out), 0);
    EXPECT_EQ(folder.read("a"), "through a stream\n");
    file = CreatePlatformFile(path, read_old, nullptr, &error);
    FILE* const in = FdopenPlatformFile(file, "rb");
    ASSERT_NE(in, nullptr);
    char line[40] = {};
    EXPECT_NE(fgets(line, sizeof line, in), nullptr);
    EXPECT_STREQ(line, "through a stream\n");
    EXPECT_EQ(fseek(in, 8, SEEK_SET), 0);
    EXPECT_EQ(fgetc(in), 'a');
    fclose(in);
    EXPECT_EQ(FdopenPlatformFile(INVALID_HANDLE_VALUE, "r"), nullptr);
}

TEST(PlatformFile, NamesMayHoldAnyLetters)
{
    const TempFolder folder;
    const WCHAR name[] = {'/', 'm', 0x011B, 0x0159, 0x6E2C, 0xD83D, 0xDE00, '.', 't', 0};
    Wide path = folder.wide();
    path += name;
    {
        const Opened file(path, write_new);
        ASSERT_EQ(file.error, PLATFORM_FILE_OK);
        EXPECT_EQ(WritePlatformFile(file.file, "x", 1), 1u);
    }
    EXPECT_EQ(Opened(path, read_old).error, PLATFORM_FILE_OK);
}
