// tests/platform/file_handle.h: a handle that closes itself, and the usual ways to get one.
#pragma once

#include <string>

#include "tests/support/text.h"
#include "zorutils/platform/winapi.h"

namespace zor_test {

class FileHandle
{
public:
    explicit FileHandle(HANDLE handle = INVALID_HANDLE_VALUE) : m_handle(handle) {}
    ~FileHandle() { close(); }
    FileHandle(FileHandle&& other) : m_handle(other.m_handle)
    {
        other.m_handle = INVALID_HANDLE_VALUE;
    }
    FileHandle& operator=(FileHandle&& other)
    {
        close();
        m_handle = other.m_handle;
        other.m_handle = INVALID_HANDLE_VALUE;
        return *this;
    }

    HANDLE get() const { return m_handle; }
    bool ok() const { return m_handle != INVALID_HANDLE_VALUE; }
    // Keeps the last error: what is told of the handle's calls outlives it.
    void close()
    {
        const DWORD error = GetLastError();
        if (ok())
            CloseHandle(m_handle);
        SetLastError(error);
        m_handle = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE m_handle;
};

constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

inline FileHandle open_file(const Wide& path, DWORD access = GENERIC_READ | GENERIC_WRITE,
                            DWORD share = share_all, DWORD disposition = OPEN_EXISTING,
                            DWORD flags = 0)
{
    return FileHandle(
        CreateFileW(path.c_str(), access, share, nullptr, disposition, flags, nullptr));
}

// The last error of a call that failed, or 0 for one that did not.
inline DWORD error_of(bool succeeded)
{
    return succeeded ? 0 : GetLastError();
}

inline long long position_of(HANDLE file)
{
    LARGE_INTEGER zero, position;
    zero.QuadPart = 0;
    return SetFilePointerEx(file, zero, &position, FILE_CURRENT) ? position.QuadPart : -1;
}

} // namespace zor_test
