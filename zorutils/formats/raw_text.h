// zorutils/formats/raw_text.h: lines of bytes from a platform file, text to C streams, and bytes.
//
//     CZorStringT<WCHAR> line;
//     zor_formats::ReadLine(file, line);                       // base::PlatformFile
//     zor_formats::WriteUTF16BOM(out) && zor_formats::WriteUTF16String(out, line);
//     zor_formats::bin_to_str(bytes, 2);                       // "00 AB"
//
// Nothing here throws but for std::bad_alloc. Threads: nothing is shared but what the file brings.
#pragma once

#include <stdio.h>

#include "zorutils/core/zor_api.h"
#include "zorutils/zortext/zor_string.h"

namespace zor_formats {

using zor_text::CZorStringT;

// Reads the next line of a platform file, each byte as one unit, and its line end. A run of CR and
// LF of any length is one line end, so empty lines inside a file never come; a line of blanks comes
// as an empty one. A zero byte ends what is kept of its line.
//
// The end of the file, a failed read and an empty line all leave `line` empty.
ZOR_API void ReadLine(void* file, CZorStringT<WCHAR>& line);

// The text up to its first zero, through the active code page. False if not all was written.
ZOR_API bool WriteString(FILE* file, const CZorStringT<WCHAR>& text);

// The text's units, low byte first, without terminator or byte order mark.
ZOR_API bool WriteUTF16String(FILE* file, const CZorStringT<WCHAR>& text);

// The bytes FF FE.
ZOR_API bool WriteUTF16BOM(FILE* file);

// The low bytes of the first units, as many as the smaller length says, and a zero: `target` needs
// one byte more than that. Units beyond a byte are cut and not mapped. Lengths must not be
// negative.
ZOR_API void String2ASCII(const WCHAR* source, int sourceLength, char* target, int targetLength);

// Two upper-case hexadecimal digits per byte with blanks between; empty for a `count` below 1.
ZOR_API CZorStringT<WCHAR> bin_to_str(const unsigned char* bytes, int count);

// Copies a little-endian integer into another width. Widening fills with 0xFF if both flags are
// false and the source's first byte is 128 or more, else with 0: the lowest byte is the one that is
// looked at, on purpose. A null source is no bytes. Sizes are in bytes and not negative.
ZOR_API void int_to_int(unsigned char* target, int targetSize, bool targetFlag,
                        const unsigned char* source, int sourceSize, bool sourceFlag);

} // namespace zor_formats
