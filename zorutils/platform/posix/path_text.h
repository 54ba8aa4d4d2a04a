// zorutils/platform/posix/path_text.h: paths as Windows writes them, and as the system takes them.
//
//     SystemPath path;
//     const DWORD error = to_system_path(ZOR_W("C:\\job\\.\\points.txt"), path); //
//     "/job/points.txt"
//
// Text is UTF-16 with "\" or "/" between names; the system gets UTF-8 with "/". Three rules let
// every name on disk be listed, and be opened by what was listed:
//
//   in a name on disk                             in text
//   a byte 0x80..0xFF that is not valid UTF-8     the unit U+DC80..U+DCFF (byte + 0xDC00)
//   a character that no Windows name can hold:    the unit of its value + 0xF000
//     1..31, " * : < > ? | \, and a "." or " "
//     at the end of the name
//   one of those units of U+F000 itself           its three bytes, each as U+DC80..U+DCFF
//
// Another unpaired surrogate in text goes to disk as its three-byte form, and is listed as bytes.
#pragma once

#include "zorutils/platform/win_types.h"

#include <string>
#include <string_view>

namespace zor::platform {

using Text = std::basic_string<WCHAR>;
using TextView = std::basic_string_view<WCHAR>;

struct SystemPath
{
    std::string path;               // never empty: "." for the current folder
    bool ends_in_separator = false; // the text named a folder: "a\" or "a/"
};

// The system's form of a path. A drive ("C:") and the prefixes "\\?\" and "\\.\" have no meaning
// and are dropped; "." and ".." are resolved in the text, as Windows does, and dots and spaces at
// its end don't count. ERROR_PATH_NOT_FOUND for null and empty, ERROR_INVALID_NAME for a character
// that no name can hold, else ERROR_SUCCESS.
DWORD to_system_path(LPCWSTR text, SystemPath& path);

// The same for a counted text without a zero unit.
DWORD to_system_path(TextView text, SystemPath& path);

// One name, without separators: text to bytes and back.
std::string to_system_name(TextView name);
Text from_system_name(std::string_view name);

// A path of the system, as handed out: "\" between the names.
Text from_system_path(std::string_view path);

// The folder that holds `path`: "/" for "/a", "." for "a".
std::string parent_of(const std::string& path);

} // namespace zor::platform
