#include "zorutils/platform/posix/file_copy.h"
#include "zorutils/platform/posix/file_status.h"
#include "zorutils/platform/posix/files.h"
#include "zorutils/platform/posix/open_file.h"
#include "zorutils/platform/posix/path_text.h"

#include <limits.h>
#include <string.h>

using namespace zor::platform;

namespace {

constexpr mode_t mode_of_new_folder = 0777;
constexpr ShareClaim deletion = {share_delete, share_read | share_write | share_delete};

// The system's form of a path, or false with the last error.
bool take_path(LPCWSTR text, SystemPath& path)
{
    const DWORD error = to_system_path(text, path);
    return error == ERROR_SUCCESS || fail_with(error, false);
}

// Whether another process has the file for itself. Its content isn't read: a file that this user
// may not open is nobody's that this layer knows of.
DWORD check_other_processes(const std::string& path)
{
    const Descriptor descriptor = open_descriptor(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
    return descriptor.valid() ? lock_across_processes(descriptor.get(), deletion)
                              : DWORD(ERROR_SUCCESS);
}

DWORD check_deletion(const ShareLock& lock, const std::string& path, const FileStatus& status)
{
    const DWORD error = check_claim(lock, status.identity, deletion);
    return error || has_claims(lock, status.identity) || !S_ISREG(status.mode)
               ? error
               : check_other_processes(path);
}

// Copies a text with its zero to the caller's buffer: its length, or the size that it needs.
DWORD give_text(const Text& text, DWORD count, LPWSTR buffer)
{
    const auto length = static_cast<DWORD>(text.size());
    if (length >= count)
        return length + 1;
    memcpy(buffer, text.c_str(), (length + 1) * sizeof(WCHAR));
    return length;
}

// A link to a folder counts as a folder: it is not deleted as a file.
bool is_folder_or_link_to_one(const std::string& path, const FileStatus& status)
{
    FileStatus target;
    return status.is_folder() ||
           (S_ISLNK(status.mode) && status_of(path, Links::follow, target) && target.is_folder());
}

DWORD replace_target(const ShareLock& lock, const std::string& path)
{
    FileStatus target;
    if (!status_of(path, Links::keep, target))
        return errno == ENOENT ? path_or(path, ERROR_SUCCESS) : path_error(path);
    const bool barred = is_folder_or_link_to_one(path, target) ||
                        (!S_ISLNK(target.mode) && target.is_read_only()) ||
                        has_claims(lock, target.identity);
    return barred ? DWORD(ERROR_ACCESS_DENIED) : check_deletion(lock, path, target);
}

DWORD move_error(const std::string& to)
{
    const DWORD error = win32_error_of(errno);
    if (error == ERROR_FILE_EXISTS)
        return ERROR_ALREADY_EXISTS;
    return error == ERROR_FILE_NOT_FOUND ? path_or(to, error) : error;
}

DWORD move_file(const std::string& from, const std::string& to, DWORD flags)
{
    const ShareLock lock;
    FileStatus status;
    if (!status_of(from, Links::keep, status))
        return path_error(from);
    DWORD error = check_deletion(lock, from, status);
    if (error == ERROR_SUCCESS && from == to)
        return ERROR_SUCCESS;
    const bool replaces = (flags & MOVEFILE_REPLACE_EXISTING) != 0;
    if (error == ERROR_SUCCESS && replaces)
        error = replace_target(lock, to);
    if (error != ERROR_SUCCESS)
        return error;
    const int moved = replaces ? system_calls().rename(from.c_str(), to.c_str())
                               : system_calls().rename_new(from.c_str(), to.c_str());
    if (moved == 0)
        return ERROR_SUCCESS;
    if (errno != EXDEV || (flags & MOVEFILE_COPY_ALLOWED) == 0 || !S_ISREG(status.mode))
        return move_error(to);
    return move_by_copy(from, to, replaces) ? DWORD(ERROR_SUCCESS) : move_error(to);
}

} // namespace

BOOL DeleteFileW(LPCWSTR path)
{
    return without_exceptions(FALSE, [&] {
        SystemPath file;
        if (!take_path(path, file))
            return FALSE;
        const ShareLock lock;
        FileStatus status;
        if (!status_of(file.path, Links::keep, status))
            return fail_with(path_error(file.path), FALSE);
        if (is_folder_or_link_to_one(file.path, status))
            return fail_with(ERROR_ACCESS_DENIED, FALSE);
        if (file.ends_in_separator)
            return fail_with(ERROR_INVALID_NAME, FALSE);
        if (!S_ISLNK(status.mode) && status.is_read_only())
            return fail_with(ERROR_ACCESS_DENIED, FALSE);
        const DWORD error = check_deletion(lock, file.path, status);
        if (error != ERROR_SUCCESS)
            return fail_with(error, FALSE);
        // The other names of an open file stay: this one can go at once.
        if (has_claims(lock, status.identity) && status.links == 1) {
            set_delete_pending(lock, status.identity);
            return TRUE;
        }
        if (system_calls().unlink(file.path.c_str()) != 0)
            return fail_with(path_error(file.path), FALSE);
        return TRUE;
    });
}

BOOL MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags)
{
    return without_exceptions(FALSE, [&] {
        SystemPath old_path, new_path;
        if (!take_path(from, old_path) || !take_path(to, new_path))
            return FALSE;
        const DWORD error = move_file(old_path.path, new_path.path, flags);
        return error == ERROR_SUCCESS ? TRUE : fail_with(error, FALSE);
    });
}

BOOL MoveFileW(LPCWSTR from, LPCWSTR to)
{
    return MoveFileExW(from, to, MOVEFILE_COPY_ALLOWED);
}

BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL fail_if_exists)
{
    const HANDLE source = CreateFileW(from, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (source == INVALID_HANDLE_VALUE)
        return FALSE;
    const HANDLE target = CreateFileW(to, GENERIC_WRITE, 0, nullptr,
                                      fail_if_exists ? CREATE_NEW : CREATE_ALWAYS, 0, nullptr);
    if (target == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        CloseHandle(source);
        return fail_with(error, FALSE);
    }
    DWORD error = ERROR_SUCCESS;
    if (!copy_open_file(handle_as<OpenFile>(source)->descriptor(),
                        handle_as<OpenFile>(target)->descriptor()))
        error = win32_error_of(errno);
    CloseHandle(source);
    if (!CloseHandle(target) && error == ERROR_SUCCESS)
        error = GetLastError();
    if (error == ERROR_SUCCESS)
        return TRUE;
    // Half a file is worse than none.
    SystemPath path;
    if (to_system_path(to, path) == ERROR_SUCCESS)
        system_calls().unlink(path.path.c_str());
    return fail_with(error, FALSE);
}

BOOL CreateDirectoryW(LPCWSTR path, SECURITY_ATTRIBUTES*)
{
    return without_exceptions(FALSE, [&] {
        SystemPath folder;
        if (!take_path(path, folder))
            return FALSE;
        if (system_calls().mkdir(folder.path.c_str(), mode_of_new_folder) == 0)
            return TRUE;
        if (errno == EEXIST)
            return fail_with(ERROR_ALREADY_EXISTS, FALSE);
        return fail_with(path_error(folder.path), FALSE);
    });
}

BOOL RemoveDirectoryW(LPCWSTR path)
{
    return without_exceptions(FALSE, [&] {
        SystemPath folder;
        if (!take_path(path, folder))
            return FALSE;
        const ShareLock lock;
        FileStatus status;
        if (!status_of(folder.path, Links::keep, status))
            return fail_with(path_error(folder.path), FALSE);
        if (!is_folder_or_link_to_one(folder.path, status))
            return fail_with(ERROR_DIRECTORY, FALSE);
        const DWORD error = check_claim(lock, status.identity, deletion);
        if (error != ERROR_SUCCESS)
            return fail_with(error, FALSE);
        const char* name = folder.path.c_str();
        const int removed =
            status.is_folder() ? system_calls().rmdir(name) : system_calls().unlink(name);
        if (removed != 0)
            return fail_with(errno == EEXIST ? DWORD(ERROR_DIR_NOT_EMPTY) : path_error(folder.path),
                             FALSE);
        return TRUE;
    });
}

DWORD GetCurrentDirectoryW(DWORD count, LPWSTR buffer)
{
    return without_exceptions(DWORD(0), [&] {
        char folder[PATH_MAX];
        if (!system_calls().getcwd(folder, sizeof(folder)))
            return fail_with_errno(DWORD(0));
        return give_text(from_system_path(folder), count, buffer);
    });
}

BOOL SetCurrentDirectoryW(LPCWSTR path)
{
    return without_exceptions(FALSE, [&] {
        SystemPath folder;
        if (!take_path(path, folder))
            return FALSE;
        if (system_calls().chdir(folder.path.c_str()) == 0)
            return TRUE;
        return fail_with(errno == ENOTDIR ? DWORD(ERROR_DIRECTORY) : path_error(folder.path),
                         FALSE);
    });
}
