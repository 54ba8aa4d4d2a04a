#include "zorutils/platform/posix/file_status.h"

#include "zorutils/platform/posix/files.h"
#include "zorutils/platform/posix/system_calls.h"

#include <algorithm>
#include <errno.h>
#include <sys/sysmacros.h>

namespace zor::platform {

namespace {

constexpr INT64 seconds_from_1601_to_1970 = 11644473600;
constexpr INT64 ticks_per_second = 10000000;
constexpr long nanoseconds_per_tick = 100;

UINT64 ticks_of(const FILETIME& time)
{
    return (UINT64(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

FILETIME to_file_time(const struct statx_timestamp& time)
{
    return zor::platform::to_file_time(time.tv_sec, static_cast<long>(time.tv_nsec));
}

// The birth, where the file system keeps it; else the earliest time that is known of the file's
// content and of its record.
FILETIME creation_time(const struct statx& raw)
{
    if ((raw.stx_mask & STATX_BTIME) != 0)
        return to_file_time(raw.stx_btime);
    const FILETIME write = to_file_time(raw.stx_mtime);
    const FILETIME change = to_file_time(raw.stx_ctime);
    return ticks_of(write) < ticks_of(change) ? write : change;
}

bool status_at(int folder, const char* path, int flags, FileStatus& status)
{
    struct statx raw;
    if (system_calls().statx(folder, path, flags, STATX_BASIC_STATS | STATX_BTIME, &raw) != 0)
        return false;
    status.mode = raw.stx_mode;
    status.attributes = status.is_folder() ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
    if (status.is_read_only())
        status.attributes |= FILE_ATTRIBUTE_READONLY;
    status.creation = creation_time(raw);
    status.last_access = to_file_time(raw.stx_atime);
    status.last_write = to_file_time(raw.stx_mtime);
    status.size = status.is_folder() ? 0 : raw.stx_size;
    status.links = raw.stx_nlink;
    status.identity = {makedev(raw.stx_dev_major, raw.stx_dev_minor), raw.stx_ino};
    return true;
}

} // namespace

bool FileStatus::is_read_only() const
{
    return (mode & S_IWUSR) == 0;
}

bool status_of(int descriptor, FileStatus& status)
{
    return status_at(descriptor, "", AT_EMPTY_PATH, status);
}

bool status_of(const std::string& path, Links links, FileStatus& status)
{
    return status_at(AT_FDCWD, path.c_str(), links == Links::keep ? AT_SYMLINK_NOFOLLOW : 0,
                     status);
}

bool listed_status_of(const std::string& path, FileStatus& status)
{
    if (!status_of(path, Links::keep, status))
        return false;
    if (!S_ISLNK(status.mode) || !status_of(path, Links::follow, status))
        return true;
    if (status.is_folder())
        status.attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    return true;
}

FILETIME to_file_time(INT64 seconds, long nanoseconds)
{
    const INT64 since_1601 = std::max<INT64>(seconds + seconds_from_1601_to_1970, 0);
    const auto ticks =
        static_cast<UINT64>(since_1601 * ticks_per_second + nanoseconds / nanoseconds_per_tick);
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

struct timespec from_file_time(const FILETIME& time)
{
    const auto ticks = static_cast<INT64>(ticks_of(time));
    struct timespec system_time = {};
    system_time.tv_sec = ticks / ticks_per_second - seconds_from_1601_to_1970;
    system_time.tv_nsec = static_cast<long>(ticks % ticks_per_second) * nanoseconds_per_tick;
    return system_time;
}

} // namespace zor::platform
