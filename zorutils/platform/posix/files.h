// zorutils/platform/posix/files.h: files: CreateFileW and its kin.
//
// Names, arguments, results and last errors are those of Windows; tests/platform/files_*_test.cpp
// state them case by case. What is this port's own:
//
//   paths       as path_text.h tells; names are case-sensitive, since the file system's are
//   sharing     as share_locks.h tells
//   read-only   the attribute is a missing write permission of the owner; a write or a deletion is
//               refused by it even to the superuser
//   attributes  ARCHIVE for files, DIRECTORY for folders, and READONLY; HIDDEN, TEMPORARY and the
//               others are accepted and not kept
//   overlapped  a transfer is done before the call returns, whatever the handle; on a handle opened
//               with FILE_FLAG_OVERLAPPED it is reported as Windows reports one under way
//   creation    the time of birth where the file system keeps one, else the earlier of the last
//               write and the last change; SetFileTime leaves it as it is
#pragma once

#include "zorutils/platform/posix/wait.h"
#include "zorutils/platform/win_types.h"

#define GENERIC_READ 0x80000000u
#define GENERIC_WRITE 0x40000000u
#define GENERIC_EXECUTE 0x20000000u
#define GENERIC_ALL 0x10000000u
#define FILE_READ_DATA 0x0001
#define FILE_WRITE_DATA 0x0002
#define FILE_APPEND_DATA 0x0004
#define FILE_EXECUTE 0x0020
#define FILE_READ_ATTRIBUTES 0x0080
#define FILE_WRITE_ATTRIBUTES 0x0100
#define DELETE 0x00010000

#define FILE_SHARE_READ 1
#define FILE_SHARE_WRITE 2
#define FILE_SHARE_DELETE 4

#define CREATE_NEW 1
#define CREATE_ALWAYS 2
#define OPEN_EXISTING 3
#define OPEN_ALWAYS 4
#define TRUNCATE_EXISTING 5

#define FILE_ATTRIBUTE_READONLY 0x00000001
#define FILE_ATTRIBUTE_HIDDEN 0x00000002
#define FILE_ATTRIBUTE_SYSTEM 0x00000004
#define FILE_ATTRIBUTE_DIRECTORY 0x00000010
#define FILE_ATTRIBUTE_ARCHIVE 0x00000020
#define FILE_ATTRIBUTE_NORMAL 0x00000080
#define FILE_ATTRIBUTE_TEMPORARY 0x00000100
#define FILE_ATTRIBUTE_REPARSE_POINT 0x00000400
#define INVALID_FILE_ATTRIBUTES (static_cast<DWORD>(-1))

#define FILE_FLAG_WRITE_THROUGH 0x80000000u
#define FILE_FLAG_OVERLAPPED 0x40000000u
#define FILE_FLAG_RANDOM_ACCESS 0x10000000u
#define FILE_FLAG_SEQUENTIAL_SCAN 0x08000000u
#define FILE_FLAG_DELETE_ON_CLOSE 0x04000000u
#define FILE_FLAG_BACKUP_SEMANTICS 0x02000000u

#define FILE_BEGIN 0
#define FILE_CURRENT 1
#define FILE_END 2
#define INVALID_SET_FILE_POINTER (static_cast<DWORD>(-1))
#define INVALID_FILE_SIZE (static_cast<DWORD>(-1))

#define MOVEFILE_REPLACE_EXISTING 1
#define MOVEFILE_COPY_ALLOWED 2

struct SECURITY_ATTRIBUTES;

struct BY_HANDLE_FILE_INFORMATION
{
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD dwVolumeSerialNumber;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD nNumberOfLinks;
    DWORD nFileIndexHigh;
    DWORD nFileIndexLow;
};

// Opening (open_file.cpp, files.cpp); CloseHandle stands in wait.h.
HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                   DWORD disposition, DWORD flags, HANDLE model);

// Content and position (files.cpp).
BOOL ReadFile(HANDLE file, void* buffer, DWORD count, DWORD* done, OVERLAPPED* overlapped);
BOOL WriteFile(HANDLE file, const void* buffer, DWORD count, DWORD* done, OVERLAPPED* overlapped);
DWORD SetFilePointer(HANDLE file, LONG distance, LONG* distance_high, DWORD method);
BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, LARGE_INTEGER* position, DWORD method);
BOOL SetEndOfFile(HANDLE file);
DWORD GetFileSize(HANDLE file, DWORD* size_high);
BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size);
BOOL FlushFileBuffers(HANDLE file);

// Attributes and times (file_attributes.cpp).
BOOL GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION* information);
BOOL GetFileTime(HANDLE file, FILETIME* creation, FILETIME* access, FILETIME* write);
BOOL SetFileTime(HANDLE file, const FILETIME* creation, const FILETIME* access,
                 const FILETIME* write);
DWORD GetFileAttributesW(LPCWSTR path);
BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes);

// Names and folders (file_names.cpp, temporary_names.cpp).
BOOL DeleteFileW(LPCWSTR path);
BOOL MoveFileW(LPCWSTR from, LPCWSTR to);

// Copies a file with its read-only attribute and its times. A copy that fails leaves no target
// behind, whatever was there before; with `fail_if_exists` an existing target stands, error 80.
BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL fail_if_exists);
BOOL MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags);
BOOL CreateDirectoryW(LPCWSTR path, SECURITY_ATTRIBUTES* security);
BOOL RemoveDirectoryW(LPCWSTR path);
DWORD GetCurrentDirectoryW(DWORD count, LPWSTR buffer);
BOOL SetCurrentDirectoryW(LPCWSTR path);
DWORD GetTempPathW(DWORD count, LPWSTR buffer);
UINT GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR buffer);
