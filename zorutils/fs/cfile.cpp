#include "zorutils/fs/cfile.h"

#include <stdexcept>

#include "zorutils/platform/winapi.h"

namespace base {

namespace {

[[noreturn]] void fail(int line, const char* call, DWORD error)
{
    zor_text::CZorStringT<char> text;
    text.Format("[%s:%d] %s: %d", "fs\\platform_file", line, call, static_cast<int>(error));
    throw std::runtime_error(text.c_str());
}

[[noreturn]] void fail(int line, const char* call)
{
    fail(line, call, GetLastError());
}

// The two halves of a position or a length. A low half of all ones is one of them unless the last
// error says that the call failed.
UINT64 joined(DWORD low, LONG high, int line, const char* call)
{
    if (low == INVALID_SET_FILE_POINTER) {
        const DWORD error = GetLastError();
        if (error != NO_ERROR)
            fail(line, call, error);
    }
    return static_cast<UINT64>(static_cast<DWORD>(high)) << 32 | low;
}

UINT64 move_pointer(PlatformFile file, INT64 offset, DWORD from, int line)
{
    LONG high = static_cast<LONG>(offset >> 32);
    SetLastError(NO_ERROR);
    const DWORD low = SetFilePointer(file, static_cast<LONG>(offset & 0xFFFFFFFF), &high, from);
    return joined(low, high, line, "SetFilePointer");
}

} // namespace

CFile::CFile() : m_file(INVALID_HANDLE_VALUE) {}

bool CFile::Open(const String& path, int flags, bool* created, PlatformFileError* error)
{
    m_file = CreatePlatformFile(path, flags, created, error);
    return Opened();
}

bool CFile::Opened() const
{
    return m_file != INVALID_HANDLE_VALUE;
}

PlatformFile CFile::GetHandle() const
{
    return m_file;
}

bool CFile::Read(void* buffer, unsigned int count, unsigned int& done, OVERLAPPED* overlapped)
{
    DWORD transferred = 0;
    const BOOL ok = ReadFile(m_file, buffer, count, &transferred, overlapped);
    const DWORD error = GetLastError();
    done = transferred;
    if (!ok && error != ERROR_IO_PENDING)
        fail(__LINE__, "ReadFile", error);
    return ok != FALSE;
}

bool CFile::Write(const void* buffer, unsigned int count, unsigned int& done,
                  OVERLAPPED* overlapped)
{
    DWORD transferred = 0;
    const BOOL ok = WriteFile(m_file, buffer, count, &transferred, overlapped);
    const DWORD error = GetLastError();
    done = transferred;
    if (!ok && error != ERROR_IO_PENDING)
        fail(__LINE__, "WriteFile", error);
    return ok != FALSE;
}

UINT64 CFile::Seek(INT64 offset, DWORD from)
{
    return move_pointer(m_file, offset, from, __LINE__);
}

UINT64 CFile::GetPosition() const
{
    return move_pointer(m_file, 0, FILE_CURRENT, __LINE__);
}

UINT64 CFile::GetLength() const
{
    DWORD high = 0;
    SetLastError(NO_ERROR);
    const DWORD low = GetFileSize(m_file, &high);
    return joined(low, static_cast<LONG>(high), __LINE__, "GetFileSize");
}

void CFile::SetLength(UINT64 length)
{
    Seek(static_cast<INT64>(length), FILE_BEGIN);
    if (!SetEndOfFile(m_file))
        fail(__LINE__, "SetEndOfFile");
}

void CFile::Flush()
{
    if (!FlushFileBuffers(m_file))
        fail(__LINE__, "FlushFileBuffers");
}

void CFile::Close()
{
    if (!Opened())
        return;
    const bool closed = ClosePlatformFile(m_file);
    const DWORD error = GetLastError();
    m_file = INVALID_HANDLE_VALUE;
    if (!closed)
        fail(__LINE__, "CloseHandle", error);
}

void CFile::Remove(const WCHAR* path)
{
    if (!DeleteFileW(path))
        fail(__LINE__, "DeleteFile");
}

void CFile::Rename(const WCHAR* from, const WCHAR* to)
{
    if (!MoveFileW(from, to))
        fail(__LINE__, "MoveFile");
}

// --- Files found by a search.

namespace {

bool find_first(const WCHAR* path, WIN32_FIND_DATAW& data)
{
    if (path == nullptr || *path == 0)
        return false;
    const HANDLE search = FindFirstFileW(path, &data);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    FindClose(search);
    return true;
}

} // namespace

UINT64 CFile::GetLength(const WCHAR* path)
{
    WIN32_FIND_DATAW data;
    if (!find_first(path, data))
        return ~static_cast<UINT64>(0);
    return static_cast<UINT64>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

bool CFile::FileExists(const WCHAR* path)
{
    bool is_directory = false;
    return FileExists(path, is_directory);
}

bool CFile::FileExists(const WCHAR* path, bool& isDirectory)
{
    WIN32_FIND_DATAW data;
    const bool found = find_first(path, data);
    isDirectory = found && (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return found;
}

// --- Names that the system gives.

void CFile::GetTempPathW(String& out)
{
    WCHAR buffer[MAX_PATH] = {};
    if (::GetTempPathW(MAX_PATH, buffer) == 0) {
        const DWORD error = GetLastError();
        out.Empty();
        fail(__LINE__, "GetTempPath", error);
    }
    out = buffer;
}

void CFile::GetTempFileNameW(const WCHAR* dir, const WCHAR* prefix, unsigned int unique,
                             String& out)
{
    WCHAR buffer[MAX_PATH] = {};
    if (::GetTempFileNameW(dir, prefix, unique, buffer) == 0) {
        const DWORD error = GetLastError();
        out.Empty();
        fail(__LINE__, "GetTempFileName", error);
    }
    out = buffer;
}

void CFile::GetModuleFileNameW(HINSTANCE module, String& out, bool full)
{
    WCHAR buffer[MAX_PATH] = {};
    if (::GetModuleFileNameW(module, buffer, MAX_PATH) == 0) {
        const DWORD error = GetLastError();
        out.Empty();
        fail(__LINE__, "GetModuleFileName", error);
    }
    // A path that fills the buffer may come without its terminator.
    buffer[MAX_PATH - 1] = 0;
    if (full) {
        out = buffer;
        return;
    }
    String drive, dir, name, ext;
    SplitPath(buffer, drive, dir, name, ext);
    out = name;
}

// --- Parts of paths.

void CFile::MakePath(String& out, const WCHAR* drive, const WCHAR* dir, const WCHAR* name,
                     const WCHAR* ext)
{
    // Built aside: a part may be the old text of `out`.
    String path;
    if (drive != nullptr)
        path += drive;
    for (const WCHAR* part : {dir, name}) {
        if (part == nullptr)
            continue;
        if (!path.empty())
            path += static_cast<WCHAR>('\\');
        path += part;
    }
    if (ext != nullptr && *ext != 0) {
        if (*ext != '.')
            path += static_cast<WCHAR>('.');
        path += ext;
    }
    path.Replace(static_cast<WCHAR>('/'), static_cast<WCHAR>('\\'));
    while (path.Replace(ZOR_W("\\\\"), ZOR_W("\\")) > 0) {
    }
    out = path;
}

void CFile::SplitPath(const WCHAR* path, String& drive, String& dir, String& name, String& ext)
{
    String rest;
    rest = path;
    rest.Replace(static_cast<WCHAR>('/'), static_cast<WCHAR>('\\'));

    const int colon = rest.Find(static_cast<WCHAR>(':'));
    drive = rest.Left(colon + 1);
    rest = rest.Mid(colon + 1);

    const int point = rest.ReverseFind(static_cast<WCHAR>('.'));
    const bool has_ext = point >= 0 && rest.ReverseFind(static_cast<WCHAR>('\\')) < point;
    ext = has_ext ? rest.Mid(point) : String();
    if (has_ext)
        rest = rest.Left(point);

    const int separator = rest.ReverseFind(static_cast<WCHAR>('\\'));
    name = rest.Mid(separator + 1);
    dir = rest.Left(separator + 1);
}

void CFile::UpdateFileName(const WCHAR* path, const WCHAR* name, String& out)
{
    if (path == nullptr || *path == 0) {
        out = name;
        return;
    }
    String drive, dir, old_name, ext;
    SplitPath(path, drive, dir, old_name, ext);
    MakePath(out, drive.c_str(), dir.c_str(), name, nullptr);
}

} // namespace base
