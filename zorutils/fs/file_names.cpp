#include "zorutils/fs/file_names.h"

#include <algorithm>

namespace zor {
namespace file_names {

typedef CZorStringT<WCHAR> String;

int GetFileNameStart(const String& path)
{
    // A missing separator is at -1, and the name behind it at 0.
    return std::max(path.ReverseFind('\\'), path.ReverseFind('/')) + 1;
}

int GetFileExtStart(const String& path)
{
    const int dot = path.ReverseFind('.');
    return dot < 0 ? path.GetLength() : dot;
}

String ExtractFileNameWithExtFromPathName(const String& path)
{
    const int start = GetFileNameStart(path);
    return path.Mid(start, path.GetLength() - start);
}

String ExtractFileNameWithoutExtFromPathName(const String& path)
{
    const int start = GetFileNameStart(path);
    return path.Mid(start, GetFileExtStart(path) - start);
}

String ExtractFileNameExtFromPathName(const String& path)
{
    const int count = path.GetLength() - GetFileExtStart(path) - 1;
    return count > 0 ? path.Right(count) : String();
}

String ExtractPathNameWithoutExtFromPathName(const String& path)
{
    return path.Mid(0, GetFileExtStart(path));
}

String ExtractDirNameWithSlashFromPathName(const String& path)
{
    return path.Left(GetFileNameStart(path));
}

String ExtractDirNameWithoutSlashFromPathName(const String& path)
{
    const int start = GetFileNameStart(path);
    return start == 0 ? String() : path.Left(start - 1);
}

bool ExtractFileNameAndExtAndParentDirFromPathName(const String& path, String& fileName,
                                                   String& baseName, String& ext,
                                                   String& parentName, String& parentPath)
{
    fileName = ExtractFileNameWithExtFromPathName(path);
    baseName = ExtractFileNameWithoutExtFromPathName(path);
    ext = ExtractFileNameExtFromPathName(path);
    parentPath = ExtractDirNameWithoutSlashFromPathName(path);
    parentName = ExtractFileNameWithExtFromPathName(parentPath);
    parentPath = ExtractDirNameWithoutSlashFromPathName(parentPath);
    return !ext.empty();
}

} // namespace file_names
} // namespace zor
