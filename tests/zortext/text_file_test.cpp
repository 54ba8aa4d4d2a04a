// The text file: encodings, line ends, blocks, and what is kept on purpose.
#include "zorutils/zortext/text_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"

using namespace zor_test;

namespace {

const std::string mark16 = "\xFF\xFE";
const std::string mark8 = "\xEF\xBB\xBF";

// The protected members in reach.
struct OpenedFile : CTextFile
{
    using CTextFile::CTextFile;
    using CTextFile::getSymbol;
    using CTextFile::getSymbolW;
    using CTextFile::m_bufferFilePos;
    using CTextFile::m_file;
    using CTextFile::m_fileSize;
    using CTextFile::m_lineStartPos;
    using CTextFile::m_validBytes;
    using CTextFile::ungetSymbol;
    using CTextFile::ungetSymbolW;
};

// At most 100 lines, as texts in test form.
std::vector<std::string> lines_of(CTextFile& file, bool skip_empty)
{
    std::vector<std::string> lines;
    Wide line;
    while (lines.size() < 100 && file.GetNextLine(line, skip_empty))
        lines.push_back(shown(line));
    return lines;
}

std::vector<std::string> lines(const std::string& bytes, bool skip_empty, int buffer_size = 512)
{
    const TempFolder folder;
    CTextFile file(buffer_size);
    EXPECT_EQ(file.Open(folder.write("text", bytes)), 1);
    return lines_of(file, skip_empty);
}

using Lines = std::vector<std::string>;

} // namespace

TEST(TextFile, EndSymbolIsNeitherByteNorUnit)
{
    EXPECT_EQ(static_cast<unsigned int>(TEXT_FILE_END_SYMBOL), 0xFFFF0000u);
}

TEST(TextFile, AnEmptyFileOpensAndEndsAtOnce)
{
    const TempFolder folder;
    CTextFile file;
    ASSERT_EQ(file.Open(folder.write("empty", "")), 1);
    EXPECT_FALSE(file.IsUTF8());
    EXPECT_FALSE(file.IsUTF16());
    EXPECT_FALSE(file.IsEndOfFile());
    Wide line(ZOR_W("old"));
    EXPECT_EQ(file.GetNextLine(line, false), 0u);
    EXPECT_TRUE(line.empty());
    EXPECT_TRUE(file.IsEndOfFile());
}

TEST(TextFile, AMissingFileDoesNotOpen)
{
    const TempFolder folder;
    CTextFile file;
    EXPECT_EQ(file.Open(folder.wide("missing")), 0);
    EXPECT_EQ(file.Open(folder.wide()), 0);
    EXPECT_EQ(file.Open(ZOR_W("..")), 0);
    EXPECT_EQ(file.Open(ZOR_W("")), 0);
}

TEST(TextFile, EachKindOfLineEndEndsOneLine)
{
    const struct
    {
        const char* bytes;
        Lines all, filled;
    } rows[] = {
        {"a\nb", {"a", "b"}, {"a", "b"}},
        {"a\r\nb", {"a", "b"}, {"a", "b"}},
        {"a\rb", {"a", "b"}, {"a", "b"}},
        {"a\n", {"a"}, {"a"}},
        {"a\r\n", {"a"}, {"a"}},
        {"a", {"a"}, {"a"}},
        {"\n", {""}, {}},
        {"\n\n", {"", ""}, {}},
        {"a\n\nb\n", {"a", "", "b"}, {"a", "b"}},
        {"a\r\rb", {"a", "", "b"}, {"a", "b"}},
        {"a\n\rb", {"a", "", "b"}, {"a", "b"}},
        {"a\r\n\r\nb\r\n", {"a", "", "b"}, {"a", "b"}},
        {" \n", {" "}, {" "}},
    };
    for (const auto& row : rows) {
        const std::string narrow = row.bytes;
        std::basic_string<WCHAR> wide(narrow.begin(), narrow.end());
        for (int buffer : {2, 4, 6, 512}) {
            EXPECT_EQ(lines(narrow, false, buffer), row.all)
                << testing::PrintToString(narrow) << buffer;
            EXPECT_EQ(lines(narrow, true, buffer), row.filled) << testing::PrintToString(narrow);
            EXPECT_EQ(lines(mark16 + utf16(wide), false, buffer), row.all)
                << testing::PrintToString(narrow);
            EXPECT_EQ(lines(mark16 + utf16(wide), true, buffer), row.filled)
                << testing::PrintToString(narrow);
        }
    }
}

TEST(TextFile, ALineEndSplitAcrossTwoBlocksIsOneLineEnd)
{
    const std::string head(511, 'x');
    EXPECT_EQ(lines(head + "\r\nnext", false), (Lines{head, "next"}));
    EXPECT_EQ(lines(head + "\rnext", false), (Lines{head, "next"}));
    EXPECT_EQ(lines(std::string(512, 'x') + "\r\nnext", false),
              (Lines{std::string(512, 'x'), "next"}));
}

TEST(TextFile, LinesOfAnyLengthArriveWhole)
{
    for (size_t length : {1u, 255u, 256u, 511u, 512u, 513u, 1023u, 1024u, 1025u, 2000u, 100000u}) {
        const std::string text(length, 'x');
        EXPECT_EQ(lines(text + "\nend", false), (Lines{text, "end"})) << length;
        const std::basic_string<WCHAR> wide(length, static_cast<WCHAR>('x'));
        EXPECT_EQ(lines(mark16 + utf16(wide) + utf16({'\n', 'e', 'n', 'd'}), false),
                  (Lines{text, "end"}))
            << length;
    }
}

TEST(TextFile, AFileThatEndsInALoneCarriageReturnNeverEnds)
{
    const TempFolder folder;
    CTextFile file;
    ASSERT_EQ(file.Open(folder.write("text", "a\r")), 1);
    Wide line;
    EXPECT_EQ(file.GetNextLine(line, false), 1u);
    EXPECT_EQ(shown(line), "a");
    // The test by which a caller leaves the loop.
    EXPECT_TRUE(file.IsEndOfFile());
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(file.GetNextLine(line, false), 1u);
        EXPECT_TRUE(line.empty());
    }
    CTextFile wide_file;
    ASSERT_EQ(wide_file.Open(folder.write("wide", mark16 + utf16({'a', '\r'}))), 1);
    EXPECT_EQ(wide_file.GetNextLine(line, false), 1u);
    EXPECT_EQ(shown(line), "a");
    EXPECT_TRUE(wide_file.IsEndOfFile());
    EXPECT_EQ(wide_file.GetNextLine(line, false), 1u);
    EXPECT_TRUE(line.empty());
}

TEST(TextFile, AZeroIsNotDeliveredButMakesItsLineCount)
{
    const std::string zero(1, '\0');
    EXPECT_EQ(lines(zero + "\nb", true), (Lines{"", "b"}));
    EXPECT_EQ(lines("a" + zero + "b\n", true), (Lines{"ab"}));
    EXPECT_EQ(lines("a\n" + zero, true), (Lines{"a", ""}));
    EXPECT_EQ(lines(mark16 + utf16({0, '\n', 'b'}), true), (Lines{"", "b"}));
    EXPECT_EQ(lines(mark16 + utf16({'a', 0, 'b', '\n'}), true), (Lines{"ab"}));
}

// --- Encodings.

TEST(TextFile, BytesAreOfTheCodePageAndAUtf8FileBeginsWithItsMark)
{
    ZOR_NEEDS_PAGE_1252();
    const TempFolder folder;
    CTextFile file;
    ASSERT_EQ(file.Open(folder.write("text", mark8 + "a\xC2\xB0\n")), 1);
    EXPECT_TRUE(file.IsUTF8());
    EXPECT_FALSE(file.IsUTF16());
    const Lines first = {"\\u00EF\\u00BB\\u00BFa\\u00C2\\u00B0"};
    EXPECT_EQ(lines_of(file, false), first);
    file.Reset();
    EXPECT_EQ(lines_of(file, false), first);
}

TEST(TextFile, Utf16WithAMarkBeginsBehindItAlsoAfterReset)
{
    const TempFolder folder;
    CTextFile file;
    ASSERT_EQ(file.Open(folder.write("text", mark16 + utf16({'a', 0x20AC, '\r', '\n', 'b'}))), 1);
    EXPECT_TRUE(file.IsUTF16());
    EXPECT_FALSE(file.IsUTF8());
    const Lines all = {"a\\u20AC", "b"};
    EXPECT_EQ(lines_of(file, false), all);
    EXPECT_TRUE(file.IsEndOfFile());
    file.Reset();
    EXPECT_FALSE(file.IsEndOfFile());
    EXPECT_EQ(lines_of(file, false), all);
}

TEST(TextFile, Utf16WithoutAMarkLosesFiveCharactersAndOneAfterReset)
{
    const TempFolder folder;
    CTextFile file;
    ASSERT_EQ(file.Open(folder.write("text", utf16({'0', '1', '2', '3', '4', '5', '6'}))), 1);
    EXPECT_TRUE(file.IsUTF16());
    EXPECT_EQ(lines_of(file, false), (Lines{"56"}));
    file.Reset();
    EXPECT_EQ(lines_of(file, false), (Lines{"123456"}));
}

TEST(TextFile, HalfAUnitAtTheEndIsDropped)
{
    EXPECT_EQ(lines(mark16 + utf16({'a', 'b'}) + "c", false), (Lines{"ab"}));
    EXPECT_EQ(lines(mark16 + "c", false), Lines{});
}

TEST(TextFile, ShortFilesWithoutAMarkAreBytes)
{
    const TempFolder folder;
    CTextFile file;
    ASSERT_EQ(file.Open(folder.write("text", utf16({'a', 'b', 'c', 'd'}) + "e")), 1);
    EXPECT_FALSE(file.IsUTF16());
    EXPECT_EQ(lines_of(file, false), (Lines{"abcde"}));
}

TEST(TextFile, OtherMarksAreBytesFromTheStart)
{
    const TempFolder folder;
    CTextFile file;
    ASSERT_EQ(file.Open(folder.write("text", "\xFE\xFF" + std::string("\0a\0b", 4))), 1);
    EXPECT_FALSE(file.IsUTF8());
    EXPECT_FALSE(file.IsUTF16());
    const Lines read = lines_of(file, false);
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0].substr(read[0].size() - 2), "ab");
}

TEST(TextFile, MarksAreToldFromAHandleAndLeaveItsPosition)
{
    const TempFolder folder;
    const auto position_after = [&](const std::string& bytes, bool (*test)(base::PlatformFile),
                                    bool expected) {
        base::PlatformFileError error;
        const base::PlatformFile file = base::CreatePlatformFile(
            folder.write("marked", bytes), base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ,
            nullptr, &error);
        EXPECT_EQ(test(file), expected);
        const INT64 position = base::SeekPlatformFile(file, base::PLATFORM_FILE_FROM_CURRENT, 0);
        base::ClosePlatformFile(file);
        return position;
    };
    EXPECT_EQ(position_after(mark8 + "abc", CTextFile::IsUTF8File, true), 3);
    EXPECT_EQ(position_after("abc", CTextFile::IsUTF8File, false), 0);
    EXPECT_EQ(position_after("\xEF\xBB", CTextFile::IsUTF8File, false), 0);
    EXPECT_EQ(position_after(mark16 + "abc", CTextFile::IsUTF16File, true), 2);
    EXPECT_EQ(position_after("abc", CTextFile::IsUTF16File, false), 0);
    EXPECT_EQ(position_after("\xFF", CTextFile::IsUTF16File, false), 0);
    EXPECT_FALSE(CTextFile::IsUTF8File(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(CTextFile::IsUTF16File(INVALID_HANDLE_VALUE));
}

// --- The object.

TEST(TextFile, SymbolsAreZeroExtendedAndGoBack)
{
    const TempFolder folder;
    OpenedFile file;
    ASSERT_EQ(file.Open(folder.write("text", "\xFF"
                                             "a")),
              1);
    EXPECT_EQ(file.getSymbol(), 0xFF);
    EXPECT_EQ(file.getSymbol(), 'a');
    file.ungetSymbol();
    EXPECT_EQ(file.getSymbol(), 'a');
    EXPECT_EQ(file.getSymbol(), TEXT_FILE_END_SYMBOL);
    EXPECT_EQ(file.getSymbol(), TEXT_FILE_END_SYMBOL);
    OpenedFile wide;
    ASSERT_EQ(wide.Open(folder.write("wide", mark16 + utf16({0xFFFF, 'a'}))), 1);
    EXPECT_EQ(wide.getSymbolW(), 0xFFFF);
    EXPECT_EQ(wide.getSymbolW(), 'a');
    wide.ungetSymbolW();
    EXPECT_EQ(wide.getSymbolW(), 'a');
    EXPECT_EQ(wide.getSymbolW(), TEXT_FILE_END_SYMBOL);
}

TEST(TextFile, FieldsTellSizeAndPositions)
{
    const TempFolder folder;
    OpenedFile file(16);
    ASSERT_EQ(file.Open(folder.write("text", std::string(20, 'x') + "\nabc\ndef")), 1);
    EXPECT_EQ(file.m_fileSize, 28);
    EXPECT_EQ(file.m_validBytes, 16u);
    Wide line;
    file.GetNextLine(line, false);
    EXPECT_EQ(file.m_lineStartPos, 0);
    EXPECT_EQ(file.m_bufferFilePos, 16);
    file.GetNextLine(line, false);
    EXPECT_EQ(file.m_lineStartPos, 21);
    EXPECT_EQ(shown(line), "abc");
}

TEST(TextFile, CloseLeavesTheObjectReusable)
{
    const TempFolder folder;
    OpenedFile file;
    ASSERT_EQ(file.Open(folder.write("first", "one\n")), 1);
    EXPECT_EQ(lines_of(file, false), (Lines{"one"}));
    file.Close();
    EXPECT_EQ(file.m_file, INVALID_HANDLE_VALUE);
    ASSERT_EQ(file.Open(folder.write("second", "two\n")), 1);
    file.Reset();
    EXPECT_EQ(lines_of(file, false), (Lines{"two"}));
}

TEST(TextFile, ReadingAfterCloseIsTheEndOfTheFile)
{
    const TempFolder folder;
    CTextFile file;
    ASSERT_EQ(file.Open(folder.write("text", "one\n")), 1);
    file.Close();
    Wide line;
    EXPECT_EQ(file.GetNextLine(line, true), 0u);
    EXPECT_TRUE(file.IsEndOfFile());
}

TEST(TextFile, ObjectsOfTheClassAreTheLibrarysOwn)
{
    std::unique_ptr<CTextFile> file(new CTextFile(64));
    EXPECT_FALSE(file->IsEndOfFile());
    alignas(CTextFile) unsigned char memory[sizeof(CTextFile)];
    auto* const placed = new (memory) CTextFile;
    EXPECT_EQ(static_cast<void*>(placed), static_cast<void*>(memory));
    placed->~CTextFile();
}

// --- Every short mix of characters against a model of the rules.

namespace {

// Lines by the rules, written anew: each LF, CR LF or CR ends one; a zero makes a line count.
Lines model(const std::string& text, bool skip_empty)
{
    Lines result;
    std::string line;
    bool counts = false;
    size_t i = 0;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '\n' && c != '\r') {
            counts = true;
            if (c != 0)
                line += c;
            continue;
        }
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            ++i;
        if (counts || !skip_empty)
            result.push_back(line);
        line.clear();
        counts = false;
    }
    if (counts)
        result.push_back(line);
    return result;
}

} // namespace

TEST(TextFile, EveryShortMixOfCharactersReadsByTheRules)
{
    const char alphabet[] = {'a', '\r', '\n', '\0'};
    const TempFolder folder;
    for (int length = 0; length <= 5; ++length) {
        const int count = 1 << (2 * length);
        for (int code = 0; code < count; ++code) {
            std::string text;
            for (int i = 0; i < length; ++i)
                text += alphabet[(code >> (2 * i)) & 3];
            if (!text.empty() && text.back() == '\r')
                continue; // never ends, as told above
            for (bool skip : {false, true}) {
                CTextFile file(4);
                ASSERT_EQ(file.Open(folder.write("mix", text)), 1);
                ASSERT_EQ(lines_of(file, skip), model(text, skip)) << testing::PrintToString(text);
            }
        }
    }
}
