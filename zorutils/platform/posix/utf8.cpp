#include "zorutils/platform/posix/utf8.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace zor {
namespace platform {

int utf8_to_wide(const char* source, int length, WCHAR* out, int size, bool strict)
{
    const auto* const bytes = reinterpret_cast<const uint8_t*>(source);
    int count = 0;
    for (int i = 0; i < length;) {
        UChar32 character;
        U8_NEXT(bytes, i, length, character);
        if (character < 0) {
            if (strict)
                return utf8_invalid;
            character = 0xFFFD;
        }
        const int units = U16_LENGTH(character);
        if (size != 0) {
            if (units > size - count)
                return utf8_no_room;
            int at = count;
            U16_APPEND_UNSAFE(out, at, character);
        }
        count += units;
    }
    return count;
}

int wide_to_utf8(const WCHAR* source, int length, char* out, int size, bool strict)
{
    int count = 0;
    for (int i = 0; i < length;) {
        UChar32 character;
        U16_NEXT(source, i, length, character);
        if (U_IS_SURROGATE(character)) {
            if (strict)
                return utf8_invalid;
            character = 0xFFFD;
        }
        const int bytes = U8_LENGTH(character);
        if (size != 0) {
            if (bytes > size - count)
                return utf8_no_room;
            int at = count;
            U8_APPEND_UNSAFE(out, at, character);
        }
        count += bytes;
    }
    return count;
}

} // namespace platform
} // namespace zor
