// zorutils/platform/posix/file_status.h: what the system tells of a file, in Windows terms.
#pragma once

#include "zorutils/platform/posix/share_locks.h"

#include <string>

namespace zor::platform {

struct FileStatus
{
    DWORD attributes; // FILE_ATTRIBUTE_*
    FILETIME creation;
    FILETIME last_access;
    FILETIME last_write;
    UINT64 size; // 0 for a folder
    UINT64 links;
    FileIdentity identity;
    mode_t mode;

    bool is_folder() const { return S_ISDIR(mode); }
    bool is_read_only() const;
};

// What becomes of a symbolic link: its target is looked at, or the link itself.
enum class Links
{
    follow,
    keep,
};

// False with errno set on failure, and then `status` is as it was.
bool status_of(int descriptor, FileStatus& status);
bool status_of(const std::string& path, Links links, FileStatus& status);

// The status that a listing shows: that of a link's target, marked as a link if it is a folder;
// that of the link itself if its target is missing.
bool listed_status_of(const std::string& path, FileStatus& status);

// Time of the system and of Windows; what lies before 1601 is 1601.
FILETIME to_file_time(INT64 seconds, long nanoseconds);
struct timespec from_file_time(const FILETIME& time);

} // namespace zor::platform
