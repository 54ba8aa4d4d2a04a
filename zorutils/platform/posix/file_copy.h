// zorutils/platform/posix/file_copy.h: copies, and moves between file systems, which are a copy and
// a deletion.
#pragma once

#include <string>

namespace zor::platform {

// Moves a regular file with its permissions and times. False with errno set on failure: then `to`
// is as it was, and `from` still stands unless only its removal failed.
bool move_by_copy(const std::string& from, const std::string& to, bool replaces);

// Copies what two open files hold, with permissions and times, and sees that it reaches the disk.
// False with errno set on failure; the target may then hold a part.
bool copy_open_file(int from, int to);

} // namespace zor::platform
