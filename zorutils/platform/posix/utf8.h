// zorutils/platform/posix/utf8.h: UTF-8 and UTF-16 as the system converts them for page 65001.
#pragma once

#include "zorutils/platform/win_types.h"

namespace zor {
namespace platform {

// What the two conversions return instead of a count.
constexpr int utf8_no_room = -1;
constexpr int utf8_invalid = -2;

// Convert `length` characters into `out` of `size`, or only count them if `size` is 0. What is not
// valid becomes U+FFFD, or ends a strict conversion with utf8_invalid.
int utf8_to_wide(const char* source, int length, WCHAR* out, int size, bool strict);
int wide_to_utf8(const WCHAR* source, int length, char* out, int size, bool strict);

} // namespace platform
} // namespace zor
