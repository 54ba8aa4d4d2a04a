// zorutils/fs/FileFunctions.h: everyday operations on files and folders.
//
//     if (FileFuncs::CreateDirRecursive(backup))
//         done = FileFuncs::CopyFromTo(job, backup_job, true);
//
// Results tell of failures and nothing throws for one; only WriteFile logs. Paths are texts with
// "\" or "/" between the names, relative ones to the current folder. A link counts as what it
// names, except where a deletion meets it: then the link goes, and what it names stays.
//
// Threads: any; nothing is kept and nothing locked. Two copies onto one target race in the file
// system.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/core/zor_vector.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zortext/zor_string.h"

// What GetFileEntriesInFolder collects.
enum EFindFolder
{
    FIND_FOLDER_FILES = 1,
    FIND_FOLDER_FOLDERS = 2,
    FIND_FOLDER_ALL = 3,
};

namespace FileFuncs {

using zor_text::CZorStringT;

// --- Asking.

// A file, that is, anything but a folder. FileExists is the same for a pointer.
ZOR_API bool IsFileExist(const CZorStringT<WCHAR>& path);
ZOR_API bool FileExists(const WCHAR* path);
ZOR_API bool IsDirExist(const CZorStringT<WCHAR>& path);
ZOR_API bool IsFolder(const WCHAR* path);

// "." or "..". False for null.
ZOR_API bool IsDots(const WCHAR* text);

// The length in bytes of a regular file; false, with `length` as it was, for all else.
ZOR_API bool GetFileLength(const WCHAR* path, UINT64& length);

// Whether the path lies on a removable card: the volume of its top folder ("\Storage Card" of
// "\Storage Card\a\b") is asked.
ZOR_API bool IsPathOnFlashCard(const WCHAR* path);

// The folder for temporary files, without a closing "\"; empty if the system has none.
ZOR_API CZorStringT<WCHAR> GetTempDirWithoutSlash();

// --- Names. No name holds one of < > " \ / : ? * |

ZOR_API bool IsFileNameCorrect(const CZorStringT<WCHAR>& name);

// The name with each of these characters replaced; by "_" if the replacement is one itself.
ZOR_API CZorStringT<WCHAR> CreateCorrectFileName(const CZorStringT<WCHAR>& name, WCHAR replacement);

// The path as far as `width` allows, for people: whole if it fits, else with folders from its
// middle replaced by "...", at last the file name alone. `window` gives font and width, in pixels
// of its client area; the path comes whole where there is none.
ZOR_API CZorStringT<WCHAR> CompactPath(HWND window, const CZorStringT<WCHAR>& path);

// --- Copying. Missing folders of the target are made. A copy keeps the read-only attribute and the
// time of the last write, and a failed one leaves no part of a file.

// An existing target stands, and counts as success, unless `overwrite` is set; then it is replaced
// even if it is read-only.
ZOR_API bool CopyFromTo(const WCHAR* from, const WCHAR* to, bool overwrite);

// Copies where there is no target. An existing one stands: true if the source is no newer, false if
// it is, on purpose, and false for a missing source.
ZOR_API bool CopyFromToCheckDate(const WCHAR* from, const WCHAR* to);

// Copies the files of a folder and of all below it over those of the target. Empty folders are not
// made. The result is that of the last entry, on purpose: a later success hides an earlier failure.
// `third` has no effect; nor has `fourth`, which gives each source entry the rights that it has.
ZOR_API bool CopyDirectory(const WCHAR* from, const WCHAR* to, bool third, bool fourth);

// --- Deleting.

// Deletes one regular file; with `force` also a read-only one. Folders are refused.
ZOR_API bool DelFile(const WCHAR* path, bool force);

// Deletes all that a folder holds, read-only files too, and leaves the folder. It goes on behind
// what cannot be deleted, and tells of it. False also for what is no folder.
ZOR_API bool EmptyFolder(const CZorStringT<WCHAR>& path);

// Deletes a folder with all that it holds, or one file. True also if there is nothing; false, with
// the rest left, at the first entry that cannot be deleted.
ZOR_API bool RemoveDirectoryTree(const WCHAR* path);

// --- Making.

// Makes a folder and its missing parents; true if it is there.
ZOR_API bool CreateDirRecursive(const CZorStringT<WCHAR>& path);
ZOR_API bool CreateDirectoryTree(const CZorStringT<WCHAR>& path);

// Writes `size` bytes as the whole content of a file. False, and logged, if not all are written.
ZOR_API bool WriteFile(const WCHAR* path, const char* bytes, unsigned int size);

// --- Walking. Hidden entries count. Links to folders are not followed, and a folder that cannot be
// read counts as empty.

// Collects what a search in `folder` for `pattern` (null: all) finds, without "." and "..", in
// place of what `entries` held.
ZOR_API void GetFileEntriesInFolder(zor_vector<WIN32_FIND_DATAW>& entries, EFindFolder what,
                                    const CZorStringT<WCHAR>& folder, const WCHAR* pattern);

// Looks for a file of this name in `folder` and all folders below it, a folder's own files before
// those below. `found` receives its path; false, with `found` as it was, if there is none.
ZOR_API bool FindFileInDirTree(const CZorStringT<WCHAR>& folder, const CZorStringT<WCHAR>& name,
                               CZorStringT<WCHAR>& found);

// The number of files in a folder, and, with `recursive`, in all below it.
ZOR_API unsigned int CountFiles(const CZorStringT<WCHAR>& folder, bool recursive);

// Bytes of a file, or of all files of a folder and below it; 0 if there is nothing.
ZOR_API UINT64 GetPathSize(const CZorStringT<WCHAR>& path);

} // namespace FileFuncs
