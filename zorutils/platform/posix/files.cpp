#include "zorutils/platform/posix/files.h"

#include "zorutils/platform/posix/open_file.h"
#include "zorutils/platform/posix/path_text.h"

#include <limits>

using namespace zor::platform;

namespace {

constexpr INT64 use_file_position = -1;

// FALSE and the last error if the file is a folder or wasn't opened for this.
BOOL check_right(const OpenFile& file, DWORD right)
{
    if (!file.may(right))
        return fail_with(ERROR_ACCESS_DENIED, FALSE);
    if (file.is_folder())
        return fail_with(ERROR_INVALID_FUNCTION, FALSE);
    return TRUE;
}

INT64 offset_of(const OVERLAPPED* overlapped)
{
    if (!overlapped)
        return use_file_position;
    const UINT64 offset = (UINT64(overlapped->OffsetHigh) << 32) | overlapped->Offset;
    return static_cast<INT64>(offset);
}

// After a transfer at an offset the position stands behind it, as on Windows.
void move_behind(const OpenFile& file, INT64 offset, size_t done)
{
    if (!file.overlapped())
        system_calls().lseek(file.descriptor(), offset + static_cast<INT64>(done), SEEK_SET);
}

// The start of a transfer: the right, the offset, and the record of what is under way.
BOOL begin_transfer(const OpenFile& file, DWORD right, OVERLAPPED* overlapped)
{
    if (!check_right(file, right))
        return FALSE;
    if (!overlapped)
        return file.overlapped() ? fail_with(ERROR_INVALID_PARAMETER, FALSE) : TRUE;
    if (offset_of(overlapped) < 0)
        return fail_with(ERROR_INVALID_PARAMETER, FALSE);
    return TRUE;
}

} // namespace

HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, SECURITY_ATTRIBUTES*, DWORD disposition,
                   DWORD flags, HANDLE)
{
    return without_exceptions(INVALID_HANDLE_VALUE, [&] {
        if (disposition < CREATE_NEW || disposition > TRUNCATE_EXISTING)
            return fail_with(ERROR_INVALID_PARAMETER, INVALID_HANDLE_VALUE);
        SystemPath system_path;
        const DWORD path_error = to_system_path(path, system_path);
        if (path_error != ERROR_SUCCESS)
            return fail_with(path_error, INVALID_HANDLE_VALUE);
        DWORD rights = specific_rights(access);
        if (flags & FILE_FLAG_DELETE_ON_CLOSE)
            rights |= DELETE;
        const OpenResult result =
            open_file({std::move(system_path.path), system_path.ends_in_separator, rights, share,
                       disposition, flags});
        const HANDLE handle = result.file ? add_handle(result.file) : INVALID_HANDLE_VALUE;
        SetLastError(result.error);
        return handle;
    });
}

BOOL CloseHandle(HANDLE handle)
{
    // All ones is the current process's own handle to the system: closing it does nothing.
    return handle == INVALID_HANDLE_VALUE ? TRUE : close_handle(handle);
}

BOOL ReadFile(HANDLE handle, void* buffer, DWORD count, DWORD* done, OVERLAPPED* overlapped)
{
    if (done)
        *done = 0;
    const auto file = handle_as<OpenFile>(handle);
    if (!file || !begin_transfer(*file, FILE_READ_DATA, overlapped))
        return FALSE;
    size_t moved = 0;
    const bool read = read_bytes(file->descriptor(), buffer, count, offset_of(overlapped), moved);
    // What was read before a failure is given; the failure comes with the next call.
    if (!read && moved == 0)
        return fail_with_errno(FALSE);
    if (overlapped)
        move_behind(*file, offset_of(overlapped), moved);
    if (overlapped && moved == 0 && count != 0)
        return fail_with(ERROR_HANDLE_EOF, FALSE);
    if (done)
        *done = static_cast<DWORD>(moved);
    return TRUE;
}

BOOL WriteFile(HANDLE handle, const void* buffer, DWORD count, DWORD* done, OVERLAPPED* overlapped)
{
    if (done)
        *done = 0;
    const auto file = handle_as<OpenFile>(handle);
    if (!file || !begin_transfer(*file, FILE_WRITE_DATA | FILE_APPEND_DATA, overlapped))
        return FALSE;
    size_t moved = 0;
    const bool written =
        write_bytes(file->descriptor(), buffer, count, offset_of(overlapped), moved);
    const DWORD error = written ? DWORD(ERROR_SUCCESS) : win32_error_of(errno);
    if (overlapped)
        move_behind(*file, offset_of(overlapped), moved);
    if (done)
        *done = static_cast<DWORD>(moved);
    return written ? TRUE : fail_with(error, FALSE);
}

BOOL SetFilePointerEx(HANDLE handle, LARGE_INTEGER distance, LARGE_INTEGER* position, DWORD method)
{
    const auto file = handle_as<OpenFile>(handle);
    if (!file)
        return FALSE;
    static constexpr int whence[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    if (method > FILE_END)
        return fail_with(ERROR_INVALID_PARAMETER, FALSE);
    const off_t moved = system_calls().lseek(file->descriptor(), distance.QuadPart, whence[method]);
    if (moved < 0)
        return errno == EINVAL ? fail_with(ERROR_NEGATIVE_SEEK, FALSE) : fail_with_errno(FALSE);
    if (position)
        position->QuadPart = moved;
    return TRUE;
}

DWORD SetFilePointer(HANDLE handle, LONG distance, LONG* distance_high, DWORD method)
{
    LARGE_INTEGER offset;
    offset.QuadPart = distance;
    if (distance_high) {
        offset.u.LowPart = static_cast<DWORD>(distance);
        offset.u.HighPart = *distance_high;
    }
    LARGE_INTEGER position;
    if (!SetFilePointerEx(handle, offset, &position, method))
        return INVALID_SET_FILE_POINTER;
    if (distance_high)
        *distance_high = position.u.HighPart;
    // The one value that also tells a failure is told apart by the last error.
    if (position.u.LowPart == INVALID_SET_FILE_POINTER)
        SetLastError(ERROR_SUCCESS);
    return position.u.LowPart;
}

BOOL SetEndOfFile(HANDLE handle)
{
    const auto file = handle_as<OpenFile>(handle);
    if (!file || !check_right(*file, FILE_WRITE_DATA))
        return FALSE;
    const off_t position = system_calls().lseek(file->descriptor(), 0, SEEK_CUR);
    if (position < 0 || retry_interrupted([&] {
                            return system_calls().ftruncate(file->descriptor(), position);
                        }) != 0)
        return fail_with_errno(FALSE);
    return TRUE;
}

BOOL GetFileSizeEx(HANDLE handle, LARGE_INTEGER* size)
{
    const auto file = handle_as<OpenFile>(handle);
    if (!file)
        return FALSE;
    struct stat status;
    if (system_calls().fstat(file->descriptor(), &status) != 0)
        return fail_with_errno(FALSE);
    size->QuadPart = status.st_size;
    return TRUE;
}

DWORD GetFileSize(HANDLE handle, DWORD* size_high)
{
    LARGE_INTEGER size;
    if (!GetFileSizeEx(handle, &size))
        return INVALID_FILE_SIZE;
    if (size_high)
        *size_high = static_cast<DWORD>(size.u.HighPart);
    if (size.u.LowPart == INVALID_FILE_SIZE)
        SetLastError(ERROR_SUCCESS);
    return size.u.LowPart;
}

BOOL FlushFileBuffers(HANDLE handle)
{
    const auto file = handle_as<OpenFile>(handle);
    if (!file || !check_right(*file, FILE_WRITE_DATA | FILE_APPEND_DATA))
        return FALSE;
    const int result = retry_interrupted([&] { return system_calls().fsync(file->descriptor()); });
    return result == 0 ? TRUE : fail_with_errno(FALSE);
}
