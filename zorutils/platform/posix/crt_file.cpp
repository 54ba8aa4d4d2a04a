#include "zorutils/platform/posix/crt_file.h"

#include <errno.h>
#include <string.h>

#include <map>
#include <mutex>

#include "zorutils/platform/posix/files.h"
#include "zorutils/platform/posix/handle_table.h"
#include "zorutils/platform/posix/open_file.h"

using namespace zor::platform;

namespace {

// Numbers handed out and not yet made a stream.
struct Numbers
{
    std::mutex mutex;
    std::map<int, HANDLE> handles;
    int next = 3;
};

Numbers& numbers()
{
    static Numbers* const all = new Numbers; // lives for ever: streams may be closed at exit
    return *all;
}

ssize_t stream_read(void* cookie, char* buffer, size_t size)
{
    DWORD done = 0;
    return ReadFile(cookie, buffer, static_cast<DWORD>(size), &done, nullptr)
               ? static_cast<ssize_t>(done)
               : -1;
}

ssize_t stream_write(void* cookie, const char* buffer, size_t size)
{
    DWORD done = 0;
    return WriteFile(cookie, buffer, static_cast<DWORD>(size), &done, nullptr)
               ? static_cast<ssize_t>(done)
               : 0;
}

int stream_seek(void* cookie, off64_t* offset, int whence)
{
    LARGE_INTEGER distance, position;
    distance.QuadPart = *offset;
    if (!SetFilePointerEx(cookie, distance, &position, static_cast<DWORD>(whence)))
        return -1;
    *offset = position.QuadPart;
    return 0;
}

int stream_close(void* cookie)
{
    return CloseHandle(cookie) ? 0 : EOF;
}

} // namespace

FILE* _wfopen(const WCHAR* path, const WCHAR* mode)
{
    const WCHAR kind = mode == nullptr ? WCHAR{0} : mode[0];
    bool both = false;
    for (const WCHAR* letter = mode; letter != nullptr && *letter != 0; ++letter)
        both = both || *letter == '+';
    const DWORD access = kind == 'r' ? GENERIC_READ | (both ? GENERIC_WRITE : 0)
                                     : GENERIC_WRITE | (both ? GENERIC_READ : 0);
    const DWORD disposition = kind == 'r'   ? OPEN_EXISTING
                              : kind == 'w' ? CREATE_ALWAYS
                              : kind == 'a' ? OPEN_ALWAYS
                                            : 0;
    if (disposition == 0) {
        errno = EINVAL;
        return nullptr;
    }
    const HANDLE handle = CreateFileW(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return nullptr;
    if (kind == 'a')
        SetFilePointer(handle, 0, nullptr, FILE_END);
    const char plain[] = {static_cast<char>(kind), both ? '+' : '\0', '\0'};
    FILE* const stream = _fdopen(_open_osfhandle(reinterpret_cast<intptr_t>(handle), 0), plain);
    if (stream == nullptr)
        CloseHandle(handle);
    return stream;
}

int _open_osfhandle(intptr_t handle, int)
{
    const auto file = reinterpret_cast<HANDLE>(handle);
    if (handle_as<OpenFile>(file) == nullptr) {
        errno = EBADF;
        return -1;
    }
    Numbers& all = numbers();
    const std::lock_guard<std::mutex> guard(all.mutex);
    all.handles[all.next] = file;
    return all.next++;
}

FILE* _fdopen(int number, const char* mode)
{
    Numbers& all = numbers();
    const std::lock_guard<std::mutex> guard(all.mutex);
    const auto entry = all.handles.find(number);
    if (entry == all.handles.end()) {
        errno = EBADF;
        return nullptr;
    }
    if (mode == nullptr || strchr("rwa", mode[0]) == nullptr || mode[0] == 0) {
        errno = EINVAL;
        return nullptr;
    }
    // "t" and "b" are the run-time's own letters: a stream here is always binary.
    const bool both = strchr(mode, '+') != nullptr;
    const char plain[] = {mode[0], both ? '+' : '\0', '\0'};
    const cookie_io_functions_t calls = {stream_read, stream_write, stream_seek, stream_close};
    FILE* const stream = fopencookie(entry->second, plain, calls);
    if (stream != nullptr)
        all.handles.erase(entry);
    return stream;
}
