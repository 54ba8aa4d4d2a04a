// zorutils/fs/file_names.h: the parts of a path, by its text alone.
//
//     zor::file_names::ExtractFileNameExtFromPathName(ZOR_W("C:\\data\\job.txt")); // "txt"
//
// No file is touched and no drive is known. "\" and "/" both separate. The extension begins at the
// last dot of the whole path, on purpose: in "a.b\c" it begins inside the folder's name, and every
// function below goes by that.
//
// Nothing fails but an allocation (std::bad_alloc). Any thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/zortext/zor_string.h"

namespace zor {
namespace file_names {

using zor_text::CZorStringT;

// The index of the file name's first unit: behind the last separator, or 0.
ZOR_API int GetFileNameStart(const CZorStringT<WCHAR>& path);

// The index of the last dot, or the length.
ZOR_API int GetFileExtStart(const CZorStringT<WCHAR>& path);

// "a\b.txt" gives "b.txt", "b", "txt" and "a\b".
ZOR_API CZorStringT<WCHAR> ExtractFileNameWithExtFromPathName(const CZorStringT<WCHAR>& path);
ZOR_API CZorStringT<WCHAR> ExtractFileNameWithoutExtFromPathName(const CZorStringT<WCHAR>& path);
ZOR_API CZorStringT<WCHAR> ExtractFileNameExtFromPathName(const CZorStringT<WCHAR>& path);
ZOR_API CZorStringT<WCHAR> ExtractPathNameWithoutExtFromPathName(const CZorStringT<WCHAR>& path);

// The folder: "a\b.txt" gives "a\" and "a". Empty for a path without a separator.
ZOR_API CZorStringT<WCHAR> ExtractDirNameWithSlashFromPathName(const CZorStringT<WCHAR>& path);
ZOR_API CZorStringT<WCHAR> ExtractDirNameWithoutSlashFromPathName(const CZorStringT<WCHAR>& path);

// All at once: file name with and without extension, extension, the name of the folder that holds
// the file, and the path of that folder's own parent. All five are assigned in every case; the
// result is whether there is an extension.
ZOR_API bool ExtractFileNameAndExtAndParentDirFromPathName(
    const CZorStringT<WCHAR>& path, CZorStringT<WCHAR>& fileName, CZorStringT<WCHAR>& baseName,
    CZorStringT<WCHAR>& ext, CZorStringT<WCHAR>& parentName, CZorStringT<WCHAR>& parentPath);

} // namespace file_names
} // namespace zor
