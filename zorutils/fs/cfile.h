// zorutils/fs/cfile.h: a file as an object whose operations throw, and what goes with paths.
//
//     base::CFile file;
//     if (file.Open(path, base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ, nullptr, nullptr)) {
//         unsigned int done = 0;
//         file.Read(buffer, sizeof buffer, done, nullptr);
//         file.Close();
//     }
//
// Errors: the members marked "throws" raise std::runtime_error with the text
// "[source path:line] call: error", where the error is the system's; nothing is logged.
//
// Threads: as of the handle, see fs/platform_file.h.
#pragma once

#include "zorutils/fs/platform_file.h"

namespace base {

// Holds one handle and does not own it: there is no destructor on purpose, copies name the same
// handle, and only Close releases it.
class ZOR_API CFile
{
public:
    typedef zor_text::CZorStringT<WCHAR> String;

    CFile();

    // True if the file was opened. The handle of a file that was open before is lost.
    bool Open(const String& path, int flags, bool* created, PlatformFileError* error);
    bool Opened() const;
    PlatformFile GetHandle() const;

    // Throws. `done` receives the bytes transferred in every case. False while an overlapped
    // transfer is under way.
    bool Read(void* buffer, unsigned int count, unsigned int& done, OVERLAPPED* overlapped);
    bool Write(const void* buffer, unsigned int count, unsigned int& done, OVERLAPPED* overlapped);

    // Throws. The new position in bytes; `from` is a PlatformFileWhence.
    UINT64 Seek(INT64 offset, DWORD from);
    // Throw.
    UINT64 GetPosition() const;
    UINT64 GetLength() const;
    // Throws. The position is at the new end afterwards.
    void SetLength(UINT64 length);
    void Flush();
    // Throws, with the object closed in every case. Nothing on a file that is not open.
    void Close();

    // Throw.
    static void Remove(const WCHAR* path);
    static void Rename(const WCHAR* from, const WCHAR* to);

    // The length in bytes of the file that a search for `path` finds first; all ones if there is
    // none.
    static UINT64 GetLength(const WCHAR* path);

    // Whether a search for `path` finds anything: a path with wildcards exists when anything
    // matches.
    static bool FileExists(const WCHAR* path);
    static bool FileExists(const WCHAR* path, bool& isDirectory);

    // Throw, with `out` empty. With `full` false the module's file name comes without folder and
    // extension.
    static void GetTempPathW(String& out);
    static void GetTempFileNameW(const WCHAR* dir, const WCHAR* prefix, unsigned int unique,
                                 String& out);
    static void GetModuleFileNameW(HINSTANCE module, String& out, bool full);

    // Joins the parts, of which each may be null, with one backslash between them. Runs of
    // backslashes become one, the leading two of a network path included: on purpose.
    static void MakePath(String& out, const WCHAR* drive, const WCHAR* dir, const WCHAR* name,
                         const WCHAR* ext);

    // The drive through its colon, the folder with its last backslash, the name, and the extension
    // with its point. All four are always assigned.
    static void SplitPath(const WCHAR* path, String& drive, String& dir, String& name, String& ext);

    // `path` with its file part, name and extension, replaced by `name`.
    static void UpdateFileName(const WCHAR* path, const WCHAR* name, String& out);

private:
    PlatformFile m_file;
};

} // namespace base
