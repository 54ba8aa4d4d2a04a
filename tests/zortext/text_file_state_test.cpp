// The text file's states: growing files, lost handles, second openings, and the protected layers.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "zorutils/zortext/text_file.h"

using namespace zor_test;

namespace {

struct Layers : CTextFile
{
    using CTextFile::CheckUnicode;
    using CTextFile::CTextFile;
    using CTextFile::getSymbol;
    using CTextFile::getSymbolW;
    using CTextFile::m_bufferFilePos;
    using CTextFile::m_bufferSize;
    using CTextFile::m_chunkCount;
    using CTextFile::m_file;
    using CTextFile::m_fileSize;
    using CTextFile::m_isUTF16;
    using CTextFile::m_isUTF8;
    using CTextFile::m_line;
    using CTextFile::m_lineChunk;
    using CTextFile::m_lineChunkW;
    using CTextFile::m_lineStartPos;
    using CTextFile::m_lineWritten;
    using CTextFile::m_readPos;
    using CTextFile::m_readPosW;
    using CTextFile::m_validBytes;
    using CTextFile::putSymbol;
    using CTextFile::putSymbolW;
    using CTextFile::ReadUTF16Line;
    using CTextFile::ungetSymbol;
    using CTextFile::WasLineWriting;
};

const std::string mark16 = "\xFF\xFE";

void append(const std::filesystem::path& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary | std::ios::app) << bytes;
}

std::string next_line(CTextFile& file, bool skip = false)
{
    Wide line;
    return file.GetNextLine(line, skip) ? shown(line) : "(end)";
}

} // namespace

TEST(TextFileState, AnObjectBeginsWithNoFile)
{
    const Layers file;
    EXPECT_EQ(file.m_file, INVALID_HANDLE_VALUE);
    EXPECT_EQ(file.m_bufferSize, 512u);
    EXPECT_EQ(file.m_validBytes, 512u);
    EXPECT_EQ(file.m_fileSize, 0);
    EXPECT_EQ(file.m_bufferFilePos, 0);
    EXPECT_EQ(file.m_lineStartPos, 0);
    EXPECT_EQ(file.m_readPos, nullptr);
    EXPECT_EQ(file.m_readPosW, nullptr);
    EXPECT_FALSE(file.IsEndOfFile());
    EXPECT_FALSE(file.IsUTF8());
    EXPECT_FALSE(file.IsUTF16());
    EXPECT_FALSE(file.WasLineWriting());
}

TEST(TextFileState, AFileThatWasNeverOpenedIsAtItsEnd)
{
    CTextFile file;
    EXPECT_EQ(next_line(file), "(end)");
    EXPECT_TRUE(file.IsEndOfFile());
    file.Reset();
    EXPECT_FALSE(file.IsEndOfFile());
    EXPECT_EQ(next_line(file), "(end)");
}

// --- The end of the file.

TEST(TextFileState, AGrowingFileIsReadOnInBlocksOfTheLastValidCount)
{
    const TempFolder folder;
    Layers file(16);
    ASSERT_EQ(file.Open(folder.write("text", std::string(16, 'x') + "abcd")), 1);
    EXPECT_EQ(next_line(file), std::string(16, 'x') + "abcd");
    EXPECT_EQ(file.m_validBytes, 4u);
    EXPECT_EQ(next_line(file), "(end)");
    append(folder / "text", "0123456789\n");
    // Not the capacity of 16, on purpose.
    EXPECT_EQ(file.getSymbol(), '0');
    EXPECT_EQ(file.m_validBytes, 4u);
    EXPECT_EQ(file.m_bufferFilePos, 20);
    EXPECT_EQ(next_line(file), "123456789");
    EXPECT_EQ(file.m_lineStartPos, 21);
    EXPECT_TRUE(file.IsEndOfFile()) << "set once, and until Reset";
}

TEST(TextFileState, HalfAUnitShortensTheReadsBehindIt)
{
    const TempFolder folder;
    Layers file(7);
    // Blocks of 7, then of 6: the lost byte shifts the units behind it.
    ASSERT_EQ(file.Open(folder.write("text", mark16 + utf16({'a', 'b', 'c', 0x6400}) + "e")), 1);
    EXPECT_EQ(file.getSymbolW(), 'a');
    EXPECT_EQ(file.m_validBytes, 6u);
    EXPECT_EQ(file.getSymbolW(), 'b');
    EXPECT_EQ(file.getSymbolW(), 'c');
    EXPECT_EQ(file.getSymbolW(), 'd' | 'e' << 8);
    EXPECT_EQ(file.m_bufferFilePos, 9);
}

// A lone CR at the end is met again and again, on purpose: with skipEmpty the call comes back only
// when the file grows.
class TextFileLoneReturn : public testing::TestWithParam<bool>
{
};

TEST_P(TextFileLoneReturn, SkippingEmptyLinesDoesNotReturnUntilTheFileGrows)
{
    const TempFolder folder;
    const bool wide = GetParam();
    const auto coded = [&](const Text<WCHAR>& text) {
        return wide ? utf16(text) : std::string(text.begin(), text.end());
    };
    CTextFile file;
    ASSERT_EQ(file.Open(folder.write("text", (wide ? mark16 : "") + coded({'a', '\r'}))), 1);
    ASSERT_EQ(next_line(file, true), "a");
    ASSERT_TRUE(file.IsEndOfFile());
    std::promise<std::string> result;
    auto line = result.get_future();
    std::thread reader([&] { result.set_value(next_line(file, true)); });
    EXPECT_EQ(line.wait_for(std::chrono::milliseconds(200)), std::future_status::timeout);
    append(folder / "text", coded({'\n', 'l', 'a', 's', 't'}));
    reader.join();
    EXPECT_EQ(line.get(), "last");
    EXPECT_EQ(next_line(file, true), "(end)");
}

INSTANTIATE_TEST_SUITE_P(BytesAndUnits, TextFileLoneReturn, testing::Bool());

// --- Errors.

TEST(TextFileState, AReadErrorEndsTheFileBehindTheBlock)
{
    for (const bool wide : {false, true}) {
        const TempFolder folder;
        Layers file(8);
        const std::string bytes =
            wide ? mark16 + utf16({'a', '\n', 'b', 'c', 'd', 'e', '\n'}) : "a\nbcdefghijk\n";
        ASSERT_EQ(file.Open(folder.write("text", bytes)), 1);
        EXPECT_EQ(next_line(file), "a");
        base::ClosePlatformFile(file.m_file);
        // What the block holds is delivered as a line.
        EXPECT_EQ(next_line(file), wide ? "bc" : "bcdefg");
        EXPECT_TRUE(file.IsEndOfFile());
        EXPECT_EQ(next_line(file), "(end)");
        file.m_file = INVALID_HANDLE_VALUE;
    }
}

TEST(TextFileState, AFailedOpenLeavesTheInvalidHandle)
{
    const TempFolder folder;
    Layers file;
    EXPECT_EQ(file.Open(folder.wide("missing")), 0);
    EXPECT_EQ(file.m_file, INVALID_HANDLE_VALUE);
    file.Close();
    EXPECT_EQ(file.m_file, INVALID_HANDLE_VALUE);
}

// --- Opening again.

TEST(TextFileState, ASecondOpenKeepsTheOldBlockUntilReset)
{
    const TempFolder folder;
    Layers file;
    ASSERT_EQ(file.Open(folder.write("first", "one\ntwo\n")), 1);
    EXPECT_EQ(next_line(file), "one");
    file.Close();
    ASSERT_EQ(file.Open(folder.write("second", "three and more\n")), 1);
    EXPECT_EQ(file.m_fileSize, 15);
    EXPECT_EQ(file.m_validBytes, 512u);
    // The block is still the first file's, on purpose.
    EXPECT_EQ(file.getSymbol(), 't');
    EXPECT_EQ(file.getSymbol(), 'w');
    file.Reset();
    EXPECT_EQ(next_line(file), "three and more");
}

TEST(TextFileState, TheEndStaysNotedByCloseAndOpen)
{
    const TempFolder folder;
    Layers file;
    ASSERT_EQ(file.Open(folder.write("first", mark16 + utf16({'a'}))), 1);
    EXPECT_EQ(next_line(file), "a");
    EXPECT_EQ(next_line(file), "(end)");
    file.Close();
    EXPECT_TRUE(file.IsEndOfFile());
    EXPECT_TRUE(file.IsUTF16());
    EXPECT_EQ(file.m_bufferFilePos, 0);
    ASSERT_EQ(file.Open(folder.write("second", "b\n")), 1);
    EXPECT_TRUE(file.IsEndOfFile());
    EXPECT_FALSE(file.IsUTF16());
    file.Reset();
    EXPECT_FALSE(file.IsEndOfFile());
    EXPECT_EQ(next_line(file), "b");
}

TEST(TextFileState, CheckingForUnicodePlacesTheFile)
{
    const struct
    {
        std::string bytes;
        bool utf8, utf16;
        INT64 position;
    } rows[] = {
        {"", false, false, 0},
        {"plain bytes of text", false, false, 0},
        {"\xEF\xBB\xBFtext", true, false, 0}, // in front of the mark
        {mark16 + utf16({'a'}), false, true, 2},
        {mark16 + std::string(2, '\0'), false, true, 2}, // not told from UTF-32
        {utf16({'a', 'b', 'c', 'd', 'e'}), false, true, 10},
        {utf16({'a', 'b', 'c', 'd'}) + "e", false, false, 0},
        {"\xFE\xFF" + std::string("\0a\0b\0c\0d", 8), false, false, 0},
        {std::string(20, '\0'), false, false, 0},
    };
    for (const auto& row : rows) {
        const TempFolder folder;
        Layers file;
        ASSERT_EQ(file.Open(folder.write("text", row.bytes)), 1);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(file.m_isUTF8, row.utf8) << testing::PrintToString(row.bytes);
            EXPECT_EQ(file.m_isUTF16, row.utf16) << testing::PrintToString(row.bytes);
            EXPECT_EQ(base::SeekPlatformFile(file.m_file, base::PLATFORM_FILE_FROM_CURRENT, 0),
                      row.position)
                << testing::PrintToString(row.bytes);
            file.CheckUnicode();
        }
    }
}

// --- The chunk layer, in a host's hands.

TEST(TextFileState, ChunksAreFlushedWhenFullAndByAZero)
{
    const TempFolder folder;
    Layers file(4);
    ASSERT_EQ(file.Open(folder.write("text", "ab\n")), 1);
    EXPECT_EQ(next_line(file), "ab");
    EXPECT_GE(file.m_lineChunk.size(), 5u);
    file.m_line.Empty();
    file.m_chunkCount = 0;
    file.m_lineWritten = false;
    EXPECT_FALSE(file.WasLineWriting());
    for (const char c : {'1', '2', '3', '4'})
        file.putSymbol(c);
    EXPECT_EQ(file.m_chunkCount, 4u);
    EXPECT_TRUE(file.m_line.empty());
    EXPECT_TRUE(file.WasLineWriting());
    file.putSymbol('5');
    EXPECT_EQ(file.m_chunkCount, 1u);
    EXPECT_TRUE(file.m_lineWritten);
    EXPECT_EQ(shown(file.m_line), "1234");
    file.putSymbol(0);
    EXPECT_EQ(file.m_chunkCount, 0u);
    EXPECT_EQ(shown(file.m_line), "12345");
    EXPECT_TRUE(file.WasLineWriting());
}

TEST(TextFileState, WideChunksHoldHalfTheBlockAndGoToTheLine)
{
    const TempFolder folder;
    Layers file(4);
    ASSERT_EQ(file.Open(folder.write("text", mark16 + utf16({'a', '\n'}))), 1);
    EXPECT_EQ(next_line(file), "a");
    EXPECT_GE(file.m_lineChunkW.size(), 3u);
    EXPECT_EQ(file.m_lineStartPos, 0);
    Wide line(ZOR_W("kept "));
    file.m_chunkCount = 0;
    file.m_lineWritten = false;
    for (const WCHAR c : {WCHAR{'1'}, WCHAR{'2'}, WCHAR{'3'}})
        file.putSymbolW(line, c);
    EXPECT_EQ(file.m_chunkCount, 1u);
    EXPECT_EQ(shown(line), "kept 12");
    EXPECT_TRUE(file.m_lineWritten);
    file.putSymbolW(line, 0);
    EXPECT_EQ(shown(line), "kept 123");
    EXPECT_TRUE(file.m_line.empty());
}

TEST(TextFileState, UnitsCanBeReadAsLinesDirectly)
{
    const TempFolder folder;
    Layers file;
    ASSERT_EQ(file.Open(folder.write("text", mark16 + utf16({'a', '\r', '\n', '\n', 'b'}))), 1);
    Wide line;
    EXPECT_EQ(file.ReadUTF16Line(line, true), 1u);
    EXPECT_EQ(shown(line), "a");
    EXPECT_EQ(file.ReadUTF16Line(line, true), 1u);
    EXPECT_EQ(shown(line), "b");
    EXPECT_EQ(file.ReadUTF16Line(line, true), 0u);
    EXPECT_TRUE(line.empty());
}

// --- Allocation.

TEST(TextFileState, ArraysAndDerivedObjectsAreTheLibrarysOwn)
{
    const std::unique_ptr<CTextFile[]> files(new CTextFile[3]);
    EXPECT_FALSE(files[2].IsEndOfFile());
    // The virtual destructor releases a host's derived object through the base.
    const std::unique_ptr<CTextFile> derived(new Layers(64));
    EXPECT_FALSE(derived->IsUTF8());
    alignas(Layers) unsigned char memory[sizeof(Layers)];
    auto* const placed = new (memory) Layers(32);
    EXPECT_EQ(placed->m_bufferSize, 32u);
    placed->~Layers();
}

TEST(TextFileState, ALongLineIsReadInTimeOfItsLength)
{
    // A line that were copied once per chunk would take minutes.
    const std::string line(8 << 20, 'x');
    const TempFolder folder;
    CTextFile bytes;
    ASSERT_EQ(bytes.Open(folder.write("bytes", line + "\nend")), 1);
    Wide read;
    EXPECT_EQ(bytes.GetNextLine(read, false), 1u);
    EXPECT_EQ(read.GetLength(), 8 << 20);
    EXPECT_EQ(next_line(bytes), "end");
    CTextFile units;
    const Text<WCHAR> wide(8 << 20, static_cast<WCHAR>('x'));
    ASSERT_EQ(units.Open(folder.write("units", mark16 + utf16(wide))), 1);
    EXPECT_EQ(units.GetNextLine(read, false), 1u);
    EXPECT_EQ(read.GetLength(), 8 << 20);
}
