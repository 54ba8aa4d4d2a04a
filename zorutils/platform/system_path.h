// zorutils/platform/system_path.h: texts as Boost's paths, and back.
//
// On Windows both are 16-bit text. On POSIX the text is Windows-shaped, and every name on disk,
// also one that is no valid UTF-8, goes there and back without loss.
#pragma once

#include <boost/filesystem/path.hpp>
#include <boost/system/error_code.hpp>
#include <string>

#include "zorutils/platform/win_types.h"

namespace zor::platform {

// An empty path for a text that can be no path.
boost::filesystem::path to_boost_path(const WCHAR* text);

// The absolute form of such a path. An empty path with an error where the current folder, which it
// starts from, is gone: Boost's own form of this raises then.
boost::filesystem::path to_absolute_path(const WCHAR* text, boost::system::error_code& code);

std::basic_string<WCHAR> from_boost_path(const boost::filesystem::path& path);

} // namespace zor::platform
