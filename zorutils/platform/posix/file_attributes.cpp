#include "zorutils/platform/posix/files.h"

#include "zorutils/platform/posix/file_status.h"
#include "zorutils/platform/posix/open_file.h"
#include "zorutils/platform/posix/path_text.h"

using namespace zor::platform;

namespace {

constexpr mode_t permission_bits = 07777;
constexpr mode_t write_bits = 0222;

// Null, 0 and all ones stand for "as it is".
struct timespec time_or_omitted(const FILETIME* time)
{
    const bool omitted = !time || (time->dwLowDateTime == 0 && time->dwHighDateTime == 0) ||
                         (time->dwLowDateTime == 0xFFFFFFFF && time->dwHighDateTime == 0xFFFFFFFF);
    if (!omitted)
        return from_file_time(*time);
    struct timespec left = {};
    left.tv_nsec = UTIME_OMIT;
    return left;
}

// The file of a path, or the last error.
bool existing_path(LPCWSTR text, SystemPath& path, FileStatus& status)
{
    const DWORD error = to_system_path(text, path);
    if (error != ERROR_SUCCESS)
        return fail_with(error, false);
    if (!status_of(path.path, Links::follow, status))
        return fail_with(path_error(path.path), false);
    if (path.ends_in_separator && !status.is_folder())
        return fail_with(ERROR_INVALID_NAME, false);
    return true;
}

} // namespace

BOOL GetFileInformationByHandle(HANDLE handle, BY_HANDLE_FILE_INFORMATION* information)
{
    const auto file = handle_as<OpenFile>(handle);
    if (!file)
        return FALSE;
    FileStatus status;
    if (!status_of(file->descriptor(), status))
        return fail_with_errno(FALSE);
    information->dwFileAttributes = status.attributes;
    information->ftCreationTime = status.creation;
    information->ftLastAccessTime = status.last_access;
    information->ftLastWriteTime = status.last_write;
    information->dwVolumeSerialNumber = static_cast<DWORD>(status.identity.device);
    information->nFileSizeHigh = static_cast<DWORD>(status.size >> 32);
    information->nFileSizeLow = static_cast<DWORD>(status.size);
    information->nNumberOfLinks = static_cast<DWORD>(status.links);
    information->nFileIndexHigh = static_cast<DWORD>(status.identity.inode >> 32);
    information->nFileIndexLow = static_cast<DWORD>(status.identity.inode);
    return TRUE;
}

BOOL GetFileTime(HANDLE handle, FILETIME* creation, FILETIME* access, FILETIME* write)
{
    const auto file = handle_as<OpenFile>(handle);
    if (!file)
        return FALSE;
    FileStatus status;
    if (!status_of(file->descriptor(), status))
        return fail_with_errno(FALSE);
    if (creation)
        *creation = status.creation;
    if (access)
        *access = status.last_access;
    if (write)
        *write = status.last_write;
    return TRUE;
}

BOOL SetFileTime(HANDLE handle, const FILETIME*, const FILETIME* access, const FILETIME* write)
{
    const auto file = handle_as<OpenFile>(handle);
    if (!file)
        return FALSE;
    if (!file->may(FILE_WRITE_ATTRIBUTES))
        return fail_with(ERROR_ACCESS_DENIED, FALSE);
    const struct timespec times[] = {time_or_omitted(access), time_or_omitted(write)};
    return system_calls().futimens(file->descriptor(), times) == 0 ? TRUE : fail_with_errno(FALSE);
}

DWORD GetFileAttributesW(LPCWSTR path)
{
    return without_exceptions(INVALID_FILE_ATTRIBUTES, [&] {
        SystemPath system_path;
        FileStatus status;
        return existing_path(path, system_path, status) ? status.attributes
                                                        : INVALID_FILE_ATTRIBUTES;
    });
}

BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes)
{
    return without_exceptions(FALSE, [&] {
        SystemPath system_path;
        FileStatus status;
        if (!existing_path(path, system_path, status))
            return FALSE;
        // A folder's write permission says who may make files in it, which the attribute doesn't.
        if (status.is_folder())
            return TRUE;
        const bool read_only = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
        const mode_t old_mode = status.mode & permission_bits;
        const mode_t mode = read_only ? old_mode & ~write_bits : old_mode | S_IWUSR;
        if (read_only == status.is_read_only() && !read_only)
            return TRUE;
        return system_calls().chmod(system_path.path.c_str(), mode) == 0 ? TRUE
                                                                         : fail_with_errno(FALSE);
    });
}
