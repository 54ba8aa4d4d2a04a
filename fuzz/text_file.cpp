// The text file against the model of its rules; the first byte chooses the size of a block and
// whether empty lines are skipped.
#include "zorutils/zortext/text_file.h"
#include "fuzz/input_file.h"
#include "fuzz/properties.h"
#include "tests/support/text_file_model.h"
#include "zorutils/zortext/text_utils.h"

using namespace zor_test;

namespace {

bool same(const Wide& line, const TextFileModel::Line& expected)
{
    return TextFileModel::Line(line.c_str(), static_cast<size_t>(line.GetLength())) == expected;
}

void check_detection(const unsigned char* data, size_t size)
{
    // A copy of the exact size, so that a look behind it is seen.
    std::string copy(reinterpret_cast<const char*>(data), size);
    copy.shrink_to_fit();
    auto* const bytes = reinterpret_cast<unsigned char*>(copy.data());
    unsigned int mark = 0;
    const auto bom = zor::text_utils::detect_bom_header(bytes, static_cast<unsigned>(size), &mark);
    zor_fuzz::require((bom != zor::text_utils::BOM_NONE) == (mark != 0) && mark <= size,
                      "a mark has a length, and lies in the text");
    zor::text_utils::detect_text_encoding(bytes, static_cast<unsigned>(size), &mark);
    zor_fuzz::require(mark <= size, "the mark lies in the text");
}

} // namespace

void zor_fuzz::text_file(const unsigned char* data, size_t size)
{
    static const InputFile input(".txt");
    if (size == 0)
        return;
    const size_t buffer = 2 + (data[0] & 0x3F);
    const bool skip = (data[0] & 0x40) != 0;
    check_detection(data + 1, size - 1);
    const std::string bytes = bytes_of(data + 1, size - 1);
    TextFileModel model(bytes, buffer);
    CTextFile file(static_cast<int>(buffer));
    require(file.Open(input.write(bytes)) == 1, "a file that is there opens");
    require(file.IsUTF8() == model.is_utf8() && file.IsUTF16() == model.is_utf16(),
            "the encoding is told");
    Wide line;
    TextFileModel::Line expected;
    for (int i = 0; i < 1000; ++i) {
        const bool more = model.next_line(expected, skip);
        if (!more && skip && model.is_endless())
            return; // the file itself would not answer
        require(file.GetNextLine(line, skip) == (more ? 1u : 0u), "lines are as many as modelled");
        require(same(line, expected), "a line is as modelled");
        require(file.IsEndOfFile() == model.is_end_of_file(), "the end is where it is modelled");
        if (!more)
            return;
    }
}
