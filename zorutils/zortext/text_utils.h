// zorutils/zortext/text_utils.h: how a text held in memory is encoded.
//
//     unsigned int mark = 0;
//     if (detect_text_encoding(bytes, size, &mark) == TEXT_ENCODING_UTF16)
//         text = bytes + mark;
//
// Pure functions of the bytes given: no file, no allocation, no state. Any thread.
#pragma once

#include "zorutils/core/zor_api.h"

namespace zor {
namespace text_utils {

// The byte order mark that a text begins with.
enum EZorTextByteOrderMaskEncoding
{
    BOM_NONE = 0,
    BOM_UTF8 = 1,
    BOM_UTF16_BE = 2,
    BOM_UTF16_LE = 3,
    BOM_UTF32_BE = 4,
    BOM_UTF32_LE = 5,
    BOM_SCSU = 6,
    BOM_UTF7 = 7,
    BOM_UTF_EBCDIC = 8,
    BOM_BOCU1 = 9,
};

// The encoding in the sense of the library's readers.
enum EZorTextEncoding
{
    TEXT_ENCODING_UNKNOWN = 0, // nothing can be said, or a mark of what the library does not read
    TEXT_ENCODING_ANSI = 1,    // bytes of the active code page
    TEXT_ENCODING_UTF16 = 2,   // UTF-16, little-endian
};

// The mark at the start of `size` bytes at `data`, which may be null. *bomLength, if not null,
// receives the mark's length in bytes; it is not written without a mark.
ZOR_API EZorTextByteOrderMaskEncoding detect_bom_header(unsigned char* data, unsigned int size,
                                                        unsigned int* bomLength);

// The encoding of the text that begins with `size` bytes at `data`, which may be null. A mark
// decides alone, and every mark but UTF-16 little-endian means unknown, UTF-8 included. Without one
// the first eight bytes of nine or more are looked at: four characters of Latin-1 range in UTF-16
// are told from bytes. *bomLength as above.
ZOR_API EZorTextEncoding detect_text_encoding(void* data, unsigned int size,
                                              unsigned int* bomLength);

} // namespace text_utils
} // namespace zor
