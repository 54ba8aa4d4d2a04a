// C streams over file handles.
#include <gtest/gtest.h>

#include <stdint.h>
#include <stdio.h>

#include "tests/platform/file_handle.h"
#include "tests/support/temp_folder.h"
#include "zorutils/platform/crt.h"

using namespace zor_test;

namespace {

class StreamsOverHandles : public testing::Test
{
protected:
    static FILE* stream_over(HANDLE handle, const char* mode)
    {
        const int number = _open_osfhandle(reinterpret_cast<intptr_t>(handle), 0);
        return number == -1 ? nullptr : _fdopen(number, mode);
    }

    TempFolder folder;
};

} // namespace

TEST_F(StreamsOverHandles, Write)
{
    const HANDLE handle =
        CreateFileW(folder.wide("file").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    FILE* const stream = stream_over(handle, "wb");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(fwrite("a\nb", 1, 3, stream), 3u);
    EXPECT_EQ(fclose(stream), 0);
    EXPECT_EQ(folder.read("file"), "a\nb");
    // The stream owned the handle: nothing holds the file any more.
    EXPECT_TRUE(open_file(folder.wide("file"), GENERIC_READ | GENERIC_WRITE, 0).ok());
}

TEST_F(StreamsOverHandles, Read)
{
    const Wide path = folder.write("file", "line one\nline two");
    FILE* const stream = stream_over(
        CreateFileW(path.c_str(), GENERIC_READ, share_all, nullptr, OPEN_EXISTING, 0, nullptr),
        "rb");
    ASSERT_NE(stream, nullptr);
    char line[32];
    ASSERT_NE(fgets(line, sizeof line, stream), nullptr);
    EXPECT_STREQ(line, "line one\n");
    EXPECT_EQ(fseek(stream, -3, SEEK_END), 0);
    ASSERT_NE(fgets(line, sizeof line, stream), nullptr);
    EXPECT_STREQ(line, "two");
    EXPECT_EQ(fgets(line, sizeof line, stream), nullptr);
    EXPECT_NE(feof(stream), 0);
    fclose(stream);
}

TEST_F(StreamsOverHandles, BeginWhereTheHandleStands)
{
    const Wide path = folder.write("file", "0123456789");
    const HANDLE handle =
        CreateFileW(path.c_str(), GENERIC_READ, share_all, nullptr, OPEN_EXISTING, 0, nullptr);
    SetFilePointer(handle, 4, nullptr, FILE_BEGIN);
    FILE* const stream = stream_over(handle, "rb");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(fgetc(stream), '4');
    fclose(stream);
}

TEST_F(StreamsOverHandles, NeedAHandle)
{
    EXPECT_EQ(_open_osfhandle(reinterpret_cast<intptr_t>(INVALID_HANDLE_VALUE), 0), -1);
}

TEST_F(StreamsOverHandles, OpenByPath)
{
    const Wide path = folder.wide("file");
    EXPECT_EQ(_wfopen(path.c_str(), ZOR_W("rb")), nullptr);
    FILE* stream = _wfopen(path.c_str(), ZOR_W("wb"));
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(fwrite("one\n", 1, 4, stream), 4u);
    fclose(stream);
    EXPECT_EQ(folder.read("file"), "one\n");
    stream = _wfopen(path.c_str(), ZOR_W("ab"));
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(fwrite("two", 1, 3, stream), 3u);
    fclose(stream);
    EXPECT_EQ(folder.read("file"), "one\ntwo");
    stream = _wfopen(path.c_str(), ZOR_W("r+b"));
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(fgetc(stream), 'o');
    fseek(stream, 0, SEEK_SET);
    EXPECT_EQ(fputc('O', stream), 'O');
    fclose(stream);
    EXPECT_EQ(folder.read("file"), "One\ntwo");
    stream = _wfopen(path.c_str(), ZOR_W("wb"));
    ASSERT_NE(stream, nullptr);
    fclose(stream);
    EXPECT_EQ(folder.read("file"), "");
    EXPECT_EQ(_wfopen(folder.wide("no/ne").c_str(), ZOR_W("wb")), nullptr);
}
