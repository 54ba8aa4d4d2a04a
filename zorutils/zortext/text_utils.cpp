#include "zorutils/zortext/text_utils.h"

#include <algorithm>
#include <iterator>

namespace zor {
namespace text_utils {

namespace {

struct Mark
{
    EZorTextByteOrderMaskEncoding encoding;
    unsigned int length;
    unsigned char bytes[4];
};

// The order counts: the mark of UTF-32 little-endian begins with that of UTF-16.
constexpr Mark marks[] = {
    {BOM_UTF32_LE, 4, {0xFF, 0xFE, 0x00, 0x00}},
    {BOM_UTF16_LE, 2, {0xFF, 0xFE}},
    {BOM_UTF8, 3, {0xEF, 0xBB, 0xBF}},
    {BOM_UTF7, 3, {0x2B, 0x2F, 0x76}},
    {BOM_UTF16_BE, 2, {0xFE, 0xFF}},
    {BOM_UTF32_BE, 4, {0x00, 0x00, 0xFE, 0xFF}},
    {BOM_BOCU1, 3, {0xFB, 0xEE, 0x28}},
    {BOM_SCSU, 3, {0x0E, 0xFE, 0xFF}},
    {BOM_UTF_EBCDIC, 4, {0xDD, 0x73, 0x66, 0x73}},
};

bool begins_with(const unsigned char* data, unsigned int size, const Mark& mark)
{
    if (size < mark.length || !std::equal(mark.bytes, mark.bytes + mark.length, data))
        return false;
    if (mark.encoding != BOM_UTF7)
        return true;
    // "+/v" is ordinary text unless the character behind it completes the mark.
    constexpr unsigned char endings[] = {0x38, 0x39, 0x2B, 0x2F};
    return size >= 4 &&
           std::find(std::begin(endings), std::end(endings), data[3]) != std::end(endings);
}

} // namespace

EZorTextByteOrderMaskEncoding detect_bom_header(unsigned char* data, unsigned int size,
                                                unsigned int* bomLength)
{
    if (data == nullptr)
        return BOM_NONE;
    for (const Mark& mark : marks) {
        if (!begins_with(data, size, mark))
            continue;
        if (bomLength != nullptr)
            *bomLength = mark.length;
        return mark.encoding;
    }
    return BOM_NONE;
}

EZorTextEncoding detect_text_encoding(void* data, unsigned int size, unsigned int* bomLength)
{
    if (data == nullptr || size < 2)
        return TEXT_ENCODING_UNKNOWN;
    auto* const bytes = static_cast<unsigned char*>(data);
    const EZorTextByteOrderMaskEncoding mark = detect_bom_header(bytes, size, bomLength);
    if (mark != BOM_NONE)
        return mark == BOM_UTF16_LE ? TEXT_ENCODING_UTF16 : TEXT_ENCODING_UNKNOWN;
    if (size <= 8)
        return TEXT_ENCODING_ANSI;
    if (bytes[1] != 0 || bytes[3] != 0 || bytes[5] != 0 || bytes[7] != 0)
        return TEXT_ENCODING_ANSI;
    const bool any = bytes[0] != 0 || bytes[2] != 0 || bytes[4] != 0 || bytes[6] != 0;
    return any ? TEXT_ENCODING_UTF16 : TEXT_ENCODING_ANSI;
}

} // namespace text_utils
} // namespace zor
