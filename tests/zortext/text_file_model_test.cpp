// The text file against the model of its rules, over every kind of file and block size.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "tests/support/text_file_model.h"
#include "zorutils/zortext/text_file.h"

using namespace zor_test;

namespace {

// Reads the whole file of both, or, where empty lines have no end, some lines of it.
void expect_as_modelled(CTextFile& file, TextFileModel& model, bool skip)
{
    Wide line;
    TextFileModel::Line expected;
    for (int i = 0; i < 100; ++i) {
        const bool more = model.next_line(expected, skip);
        if (!more && skip && model.is_endless())
            return; // the file itself would not answer
        ASSERT_EQ(file.GetNextLine(line, skip), more ? 1u : 0u) << "line " << i;
        ASSERT_EQ(shown(line), shown(expected.c_str(), expected.size())) << "line " << i;
        ASSERT_EQ(file.IsEndOfFile(), model.is_end_of_file()) << "line " << i;
        if (!more)
            return;
    }
}

class TextFileAgainstModel : public testing::Test
{
protected:
    void compare(const std::string& bytes, std::initializer_list<int> buffers, bool skip)
    {
        const Wide path = m_folder.write("text", bytes);
        for (const int buffer : buffers) {
            SCOPED_TRACE(testing::PrintToString(bytes) + " buffer " + std::to_string(buffer) +
                         (skip ? " skipping" : ""));
            TextFileModel model(bytes, static_cast<size_t>(buffer));
            CTextFile file(buffer);
            ASSERT_EQ(file.Open(path), 1);
            ASSERT_EQ(file.IsUTF8(), model.is_utf8());
            ASSERT_EQ(file.IsUTF16(), model.is_utf16());
            ASSERT_NO_FATAL_FAILURE(expect_as_modelled(file, model, skip));
            file.Reset();
            model.reset();
            ASSERT_NO_FATAL_FAILURE(expect_as_modelled(file, model, skip));
        }
    }

    void compare_random(const std::string& start, const std::string& alphabet, size_t width,
                        std::initializer_list<int> buffers)
    {
        std::mt19937 random(11);
        for (size_t size = 0; size <= 40; ++size) {
            for (int round = 0; round < 5; ++round) {
                std::string bytes = start;
                while (bytes.size() < start.size() + size) {
                    const auto at = random() % (alphabet.size() / width) * width;
                    bytes += alphabet.substr(at, width);
                }
                bytes.resize(start.size() + size);
                ASSERT_NO_FATAL_FAILURE(compare(bytes, buffers, random() % 2 == 0));
            }
        }
    }

    TempFolder m_folder;
};

// Odd blocks lose bytes of a file of units. Blocks of one unit are left out: half a unit at the end
// of the file would overwrite it.
const auto byte_buffers = {1, 2, 3, 4, 16, 512};
const auto unit_buffers = {1, 4, 5, 7, 16, 512};

} // namespace

TEST_F(TextFileAgainstModel, BytesOfEverySizeAndBlock)
{
    compare_random("", std::string("ab\r\n\0\r\n\xE9", 8), 1, byte_buffers);
}

TEST_F(TextFileAgainstModel, BytesBehindAMarkOfUtf8)
{
    compare_random("\xEF\xBB\xBF", std::string("a\r\n\0", 4), 1, byte_buffers);
}

TEST_F(TextFileAgainstModel, UnitsOfEverySizeAndBlock)
{
    compare_random("\xFF\xFE", std::string("a\0\r\0\n\0\0\0\x0A\x0D", 10), 2, unit_buffers);
}

TEST_F(TextFileAgainstModel, UnitsWithoutAMark)
{
    compare_random("", std::string("a\0b\0\r\0\n\0", 8), 2, unit_buffers);
}

TEST_F(TextFileAgainstModel, LinesAroundTheSizesOfBlockAndChunk)
{
    for (const size_t length : {0u, 1u, 15u, 16u, 17u, 31u, 32u, 33u})
        for (const char* end : {"", "\n", "\r\n", "\r", "\rx", "\n\r\n"}) {
            const auto buffers = {15, 16, 17, 32};
            const std::string line(length, 'x');
            const std::string zero(1, '\0');
            compare(line + end, buffers, false);
            compare(line + zero + line + end, buffers, true);
            compare(line + end + line + end, buffers, true);
            Text<WCHAR> units(length, static_cast<WCHAR>('x'));
            for (const char* c = end; *c != 0; ++c)
                units += static_cast<WCHAR>(*c);
            compare("\xFF\xFE" + utf16(units + units), buffers, true);
        }
}
