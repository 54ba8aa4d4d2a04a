// zorutils/fs/platform_file.h: the lowest file layer, handles and what can be done with them.
//
//     base::PlatformFileError error;
//     base::PlatformFile file = base::CreatePlatformFile(
//         path, base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ, nullptr, &error);
//     if (file != INVALID_HANDLE_VALUE) {
//         count = base::ReadPlatformFile(file, buffer, size);
//         base::ClosePlatformFile(file);
//     }
//
// The free functions report by their results and never throw. CFile (fs/cfile.h) wraps the same
// handle and throws. Paths are texts with "\" between the names; "/" is taken too.
//
// Threads: nothing is locked. A handle may be used from any thread; its position is shared by all
// its users.
#pragma once

#include <stdio.h>

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zortext/zor_string.h"

namespace base {

// INVALID_HANDLE_VALUE, all ones, is the invalid handle; zero is not.
typedef HANDLE PlatformFile;

// Bits of the open flags. Reading and writing are shared unless an exclusive flag is given;
// deletion is shared only if asked for.
enum PlatformFileFlags
{
    PLATFORM_FILE_OPEN = 0x00001,          // an existing file
    PLATFORM_FILE_CREATE = 0x00002,        // a new file; fails if there is one
    PLATFORM_FILE_OPEN_ALWAYS = 0x00004,   // an existing file, or a new one
    PLATFORM_FILE_CREATE_ALWAYS = 0x00008, // a new file in place of any old one
    PLATFORM_FILE_TRUNCATE = 0x00010,      // an existing file, emptied; needs PLATFORM_FILE_WRITE
    PLATFORM_FILE_READ = 0x00020,
    PLATFORM_FILE_WRITE = 0x00040,
    PLATFORM_FILE_EXCLUSIVE_READ = 0x00080,
    PLATFORM_FILE_EXCLUSIVE_WRITE = 0x00100,
    PLATFORM_FILE_ASYNC = 0x00200,
    PLATFORM_FILE_TEMPORARY = 0x00400,
    PLATFORM_FILE_HIDDEN = 0x00800,
    PLATFORM_FILE_DELETE_ON_CLOSE = 0x01000,
    PLATFORM_FILE_WRITE_ATTRIBUTES = 0x02000,
    PLATFORM_FILE_SHARE_DELETE = 0x08000,
    PLATFORM_FILE_BACKUP_SEMANTICS = 0x20000, // folders as well
};

enum PlatformFileError : int
{
    PLATFORM_FILE_OK = 0,
    PLATFORM_FILE_ERROR_FAILED = -1, // all that has no value of its own, a missing folder included
    PLATFORM_FILE_ERROR_IN_USE = -2,
    PLATFORM_FILE_ERROR_EXISTS = -3,
    PLATFORM_FILE_ERROR_NOT_FOUND = -4,
    PLATFORM_FILE_ERROR_ACCESS_DENIED = -5,
};

enum PlatformFileWhence
{
    PLATFORM_FILE_FROM_BEGIN = 0,
    PLATFORM_FILE_FROM_CURRENT = 1,
    PLATFORM_FILE_FROM_END = 2,
};

struct ZOR_API PlatformFileInfo
{
    PlatformFileInfo();

    INT64 size; // bytes
    bool is_directory;
    bool is_symbolic_link; // always false
    INT64 last_modified;   // seconds since 1970-01-01 UTC, as the other two
    INT64 last_accessed;
    INT64 creation_time;
};

// Opens a file: its handle, or the invalid one. `created`, if not null, receives whether a file was
// made; with PLATFORM_FILE_CREATE_ALWAYS also when an old one was replaced. `error`, if not null,
// receives what happened. A path that holds ".." anywhere, also inside a name, is refused with
// PLATFORM_FILE_ERROR_ACCESS_DENIED, with `created` left alone.
//
// The first five flags are alternatives; the last one given counts, and more than one is logged.
// With none of them the result is 0, which is not the invalid handle, and `error` is not written.
ZOR_API PlatformFile CreatePlatformFile(const zor_text::CZorStringT<WCHAR>& path, int flags,
                                        bool* created, PlatformFileError* error);

// The same without the test for "..".
ZOR_API PlatformFile CreatePlatformFileUnsafe(const zor_text::CZorStringT<WCHAR>& path, int flags,
                                              bool* created, PlatformFileError* error);

// False if the system refuses; the invalid handle is not tested for.
ZOR_API bool ClosePlatformFile(PlatformFile file);

// The bytes read, 0 at the end of the file; all ones on any other failure.
ZOR_API unsigned int ReadPlatformFile(PlatformFile file, void* buffer, unsigned int count);

// The bytes written; all ones on any failure.
ZOR_API unsigned int WritePlatformFile(PlatformFile file, const void* buffer, unsigned int count);

// The new position in bytes; -1 for the invalid handle, but 0 for a seek that fails. Callers cannot
// tell that from position 0: on purpose.
ZOR_API INT64 SeekPlatformFile(PlatformFile file, PlatformFileWhence whence, INT64 offset);

ZOR_API bool FlushPlatformFile(PlatformFile file);

// Makes the file `length` bytes long and keeps the position, which may then lie behind the end.
// After a failure the position may be at `length`. Not atomic against other users of the handle.
ZOR_API bool TruncatePlatformFile(PlatformFile file, INT64 length);

// Sets both times, in seconds since 1970-01-01 UTC; the creation time stays.
ZOR_API bool TouchPlatformFile(PlatformFile file, const INT64& last_access,
                               const INT64& last_modified);

// False, with `info` left alone, for a null `info` or a handle that the system refuses.
ZOR_API bool GetPlatformFileInfo(PlatformFile file, PlatformFileInfo* info);

// A C stream over the handle, which it owns from then on; null on failure. `mode` as in fopen.
ZOR_API FILE* FdopenPlatformFile(PlatformFile file, const char* mode);

} // namespace base
