// Lines of bytes from a platform file.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "zorutils/formats/raw_text.h"
#include "zorutils/fs/platform_file.h"

using zor_formats::ReadLine;
using zor_test::shown;
using zor_test::Wide;

namespace {

typedef std::vector<std::string> Lines;

constexpr int read_flags = base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ;

class LineFile
{
public:
    explicit LineFile(const Wide& path, int flags = read_flags)
        : handle(base::CreatePlatformFile(path, flags, nullptr, nullptr))
    {
        EXPECT_NE(handle, INVALID_HANDLE_VALUE);
    }
    ~LineFile() { base::ClosePlatformFile(handle); }
    LineFile(const LineFile&) = delete;
    LineFile& operator=(const LineFile&) = delete;

    INT64 position() const
    {
        return base::SeekPlatformFile(handle, base::PLATFORM_FILE_FROM_CURRENT, 0);
    }

    const base::PlatformFile handle;
};

// The next `count` lines.
Lines lines_of(const std::string& bytes, int count)
{
    const zor_test::TempFolder folder;
    const LineFile file(folder.write("lines.txt", bytes));
    Lines lines;
    for (int i = 0; i < count; ++i) {
        Wide line(ZOR_W("old"));
        ReadLine(file.handle, line);
        lines.push_back(shown(line));
    }
    return lines;
}

} // namespace

TEST(ReadLine, EveryMixOfLineEnds)
{
    const struct
    {
        const char* bytes;
        Lines lines;
    } cases[] = {
        {"", {"", ""}},
        {"a", {"a", ""}},
        {"a\n", {"a", ""}},
        {"a\r", {"a", ""}},
        {"a\r\n", {"a", ""}},
        {"a\n\r", {"a", ""}},
        {"a\nb", {"a", "b", ""}},
        {"a\rb", {"a", "b", ""}},
        {"a\r\nb\r\n", {"a", "b", ""}},
        {"a\r\n\r\nb", {"a", "b", ""}},
        {"a\n\n\n\n\rb\r\r", {"a", "b", ""}},
        // A run at the front of the file is the end of an empty line.
        {"\n", {"", ""}},
        {"\r\n\r\na\n", {"", "a", ""}},
        // Blanks: kept beside other text, an empty line without it.
        {"  a \t\n b", {"  a \\u0009", " b", ""}},
        {" \t \na\n  ", {"", "a", "", ""}},
        {"\x0b\f\nb", {"", "b", ""}},
        // Bytes are units, undecoded.
        {"\xc3\xa9\x80\xff\n", {"\\u00C3\\u00A9\\u0080\\u00FF", ""}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(lines_of(c.bytes, static_cast<int>(c.lines.size())), c.lines) << c.bytes;
}

TEST(ReadLine, LinesAroundAndBeyondTheSizeOfAChunk)
{
    for (size_t length : {1u, 126u, 127u, 128u, 129u, 255u, 256u, 257u, 10000u}) {
        std::string text;
        for (size_t i = 0; i < length; ++i)
            text += static_cast<char>('a' + i % 26);
        for (const char* end : {"", "\n", "\r\n", "\r", "\n\n\r\n"}) {
            const Lines expected = {text, *end == 0 ? "" : "next", ""};
            EXPECT_EQ(lines_of(text + end + (*end == 0 ? "" : "next"), 3), expected)
                << length << " and " << shown(end);
        }
    }
}

TEST(ReadLine, ALongLineOfBlanksIsEmpty)
{
    EXPECT_EQ(lines_of(std::string(300, ' ') + "\nb", 2), (Lines{"", "b"}));
}

TEST(ReadLine, AZeroByteEndsWhatIsKept)
{
    const std::string zero(1, '\0');
    EXPECT_EQ(lines_of("ab" + zero + "cd\nnext", 2), (Lines{"ab", "next"}));
    EXPECT_EQ(lines_of(zero + "\nnext", 2), (Lines{"", "next"}));
    // In a line longer than a chunk, the rest of the line comes as the next one.
    EXPECT_EQ(lines_of("ab" + zero + std::string(125, 'x') + "rest\nnext", 3),
              (Lines{"ab", "rest", "next"}));
}

TEST(ReadLine, StandsBehindTheLineEndsAfterwards)
{
    const zor_test::TempFolder folder;
    const LineFile file(folder.write("lines.txt", "ab\r\n\r\ncd"));
    Wide line;
    ReadLine(file.handle, line);
    EXPECT_EQ(file.position(), 6);
    ReadLine(file.handle, line);
    EXPECT_EQ(file.position(), 8);
    ReadLine(file.handle, line);
    EXPECT_EQ(file.position(), 8);
}

TEST(ReadLine, AHandleThatCannotBeReadGivesAnEmptyLine)
{
    Wide line(ZOR_W("old"));
    ReadLine(INVALID_HANDLE_VALUE, line);
    EXPECT_EQ(shown(line), "");

    const zor_test::TempFolder folder;
    const LineFile write_only(folder.write("lines.txt", "a\nb"),
                              base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_WRITE);
    line = ZOR_W("old");
    ReadLine(write_only.handle, line);
    EXPECT_EQ(shown(line), "");
}

TEST(ReadLine, ASharedStringIsNotTouched)
{
    const zor_test::TempFolder folder;
    const LineFile file(folder.write("lines.txt", "new"));
    Wide line(ZOR_W("old"));
    const Wide other = line;
    ReadLine(file.handle, line);
    EXPECT_EQ(shown(line), "new");
    EXPECT_EQ(shown(other), "old");
}
