// zorutils/platform/posix/file_copy.h: a move between file systems, which is a copy and a deletion.
#pragma once

#include <string>

namespace zor::platform {

// Moves a regular file with its permissions and times. False with errno set on failure: then `to`
// is as it was, and `from` still stands unless only its removal failed.
bool move_by_copy(const std::string& from, const std::string& to, bool replaces);

} // namespace zor::platform
