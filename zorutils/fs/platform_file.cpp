#include "zorutils/fs/platform_file.h"

#include "zorutils/platform/crt.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/zor_check.h"
#include "zorutils/zorsys/zor_time.h"

namespace base {

namespace {

const char* const source_path = "fs\\platform_file";
constexpr unsigned int failed_count = ~0u;

struct FlagBit
{
    int flag;
    DWORD bit;
};

constexpr FlagBit dispositions[] = {
    {PLATFORM_FILE_OPEN, OPEN_EXISTING},         {PLATFORM_FILE_CREATE, CREATE_NEW},
    {PLATFORM_FILE_OPEN_ALWAYS, OPEN_ALWAYS},    {PLATFORM_FILE_CREATE_ALWAYS, CREATE_ALWAYS},
    {PLATFORM_FILE_TRUNCATE, TRUNCATE_EXISTING},
};

constexpr FlagBit accesses[] = {
    {PLATFORM_FILE_READ, GENERIC_READ},
    {PLATFORM_FILE_WRITE, GENERIC_WRITE},
    {PLATFORM_FILE_WRITE_ATTRIBUTES, FILE_WRITE_ATTRIBUTES},
};

constexpr FlagBit attributes[] = {
    {PLATFORM_FILE_ASYNC, FILE_FLAG_OVERLAPPED},
    {PLATFORM_FILE_TEMPORARY, FILE_ATTRIBUTE_TEMPORARY},
    {PLATFORM_FILE_HIDDEN, FILE_ATTRIBUTE_HIDDEN},
    {PLATFORM_FILE_DELETE_ON_CLOSE, FILE_FLAG_DELETE_ON_CLOSE},
    {PLATFORM_FILE_BACKUP_SEMANTICS, FILE_FLAG_BACKUP_SEMANTICS},
};

template <size_t N>
DWORD bits_of(int flags, const FlagBit (&table)[N])
{
    DWORD bits = 0;
    for (const FlagBit& row : table) {
        if (flags & row.flag)
            bits |= row.bit;
    }
    return bits;
}

// The last of the alternatives counts; that there is more than one is a mistake of the caller's.
DWORD disposition_of(int flags)
{
    DWORD disposition = 0;
    for (const FlagBit& row : dispositions) {
        if (!(flags & row.flag))
            continue;
        if (disposition != 0)
            zor_logging::zor_err_log(source_path, __LINE__, "");
        disposition = row.bit;
    }
    if ((flags & PLATFORM_FILE_TRUNCATE) && !(flags & PLATFORM_FILE_WRITE))
        zor_logging::zor_err_log(source_path, __LINE__, "");
    return disposition;
}

DWORD share_of(int flags)
{
    DWORD share = 0;
    if (!(flags & PLATFORM_FILE_EXCLUSIVE_READ))
        share |= FILE_SHARE_READ;
    if (!(flags & PLATFORM_FILE_EXCLUSIVE_WRITE))
        share |= FILE_SHARE_WRITE;
    if (flags & PLATFORM_FILE_SHARE_DELETE)
        share |= FILE_SHARE_DELETE;
    return share;
}

PlatformFileError error_of(DWORD error)
{
    switch (error) {
    case ERROR_SHARING_VIOLATION:
        return PLATFORM_FILE_ERROR_IN_USE;
    case ERROR_FILE_EXISTS:
        return PLATFORM_FILE_ERROR_EXISTS;
    case ERROR_FILE_NOT_FOUND:
        return PLATFORM_FILE_ERROR_NOT_FOUND;
    case ERROR_ACCESS_DENIED:
        return PLATFORM_FILE_ERROR_ACCESS_DENIED;
    default:
        return PLATFORM_FILE_ERROR_FAILED;
    }
}

bool move_to(PlatformFile file, INT64 offset, DWORD method, INT64* position = nullptr)
{
    LARGE_INTEGER distance, reached;
    distance.QuadPart = offset;
    if (!SetFilePointerEx(file, distance, &reached, method))
        return false;
    if (position != nullptr)
        *position = reached.QuadPart;
    return true;
}

} // namespace

PlatformFileInfo::PlatformFileInfo()
    : size(0), is_directory(false), is_symbolic_link(false), last_modified(0), last_accessed(0),
      creation_time(0)
{
}

PlatformFile CreatePlatformFile(const zor_text::CZorStringT<WCHAR>& path, int flags, bool* created,
                                PlatformFileError* error)
{
    // A plain search, on purpose: "a..b" is refused as well.
    if (path.Find(ZOR_W("..")) >= 0) {
        if (error != nullptr)
            *error = PLATFORM_FILE_ERROR_ACCESS_DENIED;
        return INVALID_HANDLE_VALUE;
    }
    return CreatePlatformFileUnsafe(path, flags, created, error);
}

PlatformFile CreatePlatformFileUnsafe(const zor_text::CZorStringT<WCHAR>& path, int flags,
                                      bool* created, PlatformFileError* error)
{
    if (created != nullptr)
        *created = false;
    const DWORD disposition = disposition_of(flags);
    if (disposition == 0)
        return nullptr; // not the invalid handle, on purpose
    const HANDLE file = CreateFileW(path.c_str(), bits_of(flags, accesses), share_of(flags),
                                    nullptr, disposition, bits_of(flags, attributes), nullptr);
    const DWORD last_error = GetLastError();
    const bool valid = file != INVALID_HANDLE_VALUE;
    if (created != nullptr && valid) {
        if (flags & PLATFORM_FILE_OPEN_ALWAYS)
            *created = last_error != ERROR_ALREADY_EXISTS;
        else if (flags & (PLATFORM_FILE_CREATE | PLATFORM_FILE_CREATE_ALWAYS))
            *created = true;
    }
    if (error != nullptr)
        *error = valid ? PLATFORM_FILE_OK : error_of(last_error);
    return file;
}

bool ClosePlatformFile(PlatformFile file)
{
    return CloseHandle(file) != FALSE;
}

unsigned int ReadPlatformFile(PlatformFile file, void* buffer, unsigned int count)
{
    if (file == INVALID_HANDLE_VALUE)
        return failed_count;
    DWORD done = 0;
    if (ReadFile(file, buffer, count, &done, nullptr))
        return done;
    return GetLastError() == ERROR_HANDLE_EOF ? 0 : failed_count;
}

unsigned int WritePlatformFile(PlatformFile file, const void* buffer, unsigned int count)
{
    DWORD done = 0;
    if (file == INVALID_HANDLE_VALUE || !WriteFile(file, buffer, count, &done, nullptr))
        return failed_count;
    return done;
}

INT64 SeekPlatformFile(PlatformFile file, PlatformFileWhence whence, INT64 offset)
{
    if (file == INVALID_HANDLE_VALUE)
        return -1;
    INT64 position = 0;
    return move_to(file, offset, static_cast<DWORD>(whence), &position) ? position : 0;
}

bool FlushPlatformFile(PlatformFile file)
{
    return file != INVALID_HANDLE_VALUE && FlushFileBuffers(file) != FALSE;
}

bool TruncatePlatformFile(PlatformFile file, INT64 length)
{
    if (file == INVALID_HANDLE_VALUE)
        return false;
    INT64 position = 0;
    return move_to(file, 0, FILE_CURRENT, &position) && move_to(file, length, FILE_BEGIN) &&
           SetEndOfFile(file) != FALSE && move_to(file, position, FILE_BEGIN);
}

bool TouchPlatformFile(PlatformFile file, const INT64& last_access, const INT64& last_modified)
{
    if (file == INVALID_HANDLE_VALUE)
        return false;
    FILETIME access, modified;
    to_FILETIME(last_access, access);
    to_FILETIME(last_modified, modified);
    return SetFileTime(file, nullptr, &access, &modified) != FALSE;
}

bool GetPlatformFileInfo(PlatformFile file, PlatformFileInfo* info)
{
    BY_HANDLE_FILE_INFORMATION found;
    if (info == nullptr || !GetFileInformationByHandle(file, &found))
        return false;
    info->size =
        static_cast<INT64>(static_cast<UINT64>(found.nFileSizeHigh) << 32 | found.nFileSizeLow);
    info->is_directory = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    info->is_symbolic_link = false;
    info->last_modified = to_time_t(found.ftLastWriteTime);
    info->last_accessed = to_time_t(found.ftLastAccessTime);
    info->creation_time = to_time_t(found.ftCreationTime);
    return true;
}

FILE* FdopenPlatformFile(PlatformFile file, const char* mode)
{
    if (file == INVALID_HANDLE_VALUE)
        return nullptr;
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(file), 0);
    return descriptor < 0 ? nullptr : _fdopen(descriptor, mode);
}

} // namespace base
