// Folders with all that they hold.
#include <vector>

#include "zorutils/fs/FileFunctions.h"
#include "zorutils/fs/file_enumerator.h"
#include "zorutils/platform/winapi.h"

namespace FileFuncs {

namespace {

typedef CZorStringT<WCHAR> String;
typedef zor_vector<WIN32_FIND_DATAW> Entries;

String joined(const String& folder, const WCHAR* name)
{
    String path = folder;
    path += ZOR_W("\\");
    path += name;
    return path;
}

bool is_folder(const WIN32_FIND_DATAW& entry)
{
    return base::TFileEnumerator::IsDirectory(entry);
}

bool is_link(const WIN32_FIND_DATAW& entry)
{
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

// Calls `visit` with each file's folder and entry, a folder's own before those below it, until it
// answers true; whether it did. Folders wait in a list, so that no depth is too deep.
template <class Visit>
bool walk(const String& root, bool recursive, Visit visit)
{
    std::vector<String> pending = {root};
    while (!pending.empty()) {
        const String folder = pending.back();
        pending.pop_back();
        Entries entries;
        GetFileEntriesInFolder(entries, FIND_FOLDER_ALL, folder, nullptr);
        for (const WIN32_FIND_DATAW& entry : entries) {
            if (!is_folder(entry) && visit(folder, entry))
                return true;
            if (is_folder(entry) && !is_link(entry) && recursive)
                pending.push_back(joined(folder, entry.cFileName));
        }
    }
    return false;
}

bool remove_entry(const String& path, const WIN32_FIND_DATAW& entry)
{
    if (!is_folder(entry))
        return DeleteFileW(path.c_str()) != 0;
    return is_link(entry) ? RemoveDirectoryW(path.c_str()) != 0 : RemoveDirectoryTree(path.c_str());
}

} // namespace

void GetFileEntriesInFolder(Entries& entries, EFindFolder what, const String& folder,
                            const WCHAR* pattern)
{
    using base::TFileEnumerator;
    const int type =
        ((what & FIND_FOLDER_FILES) != 0 ? TFileEnumerator::FILE_TYPE_FILES : 0) |
        ((what & FIND_FOLDER_FOLDERS) != 0 ? TFileEnumerator::FILE_TYPE_DIRECTORIES : 0);
    entries.clear();
    TFileEnumerator search(folder, false, type, pattern == nullptr ? String() : String(pattern));
    while (!search.Next().empty()) {
        WIN32_FIND_DATAW data;
        search.GetFindInfo(&data);
        entries.push_back(data);
    }
}

bool RemoveDirectoryTree(const WCHAR* path)
{
    const DWORD attributes = GetFileAttributesW(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        // A link that names nothing has no attributes of its target, and goes.
        const DWORD error = GetLastError();
        return DeleteFileW(path) != 0 || error == ERROR_FILE_NOT_FOUND ||
               error == ERROR_PATH_NOT_FOUND;
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        return DeleteFileW(path) != 0;
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        return RemoveDirectoryW(path) != 0;
    Entries entries;
    GetFileEntriesInFolder(entries, FIND_FOLDER_ALL, path, nullptr);
    for (const WIN32_FIND_DATAW& entry : entries) {
        if (!remove_entry(joined(path, entry.cFileName), entry))
            return false;
    }
    return RemoveDirectoryW(path) != 0;
}

bool EmptyFolder(const String& path)
{
    if (!IsDirExist(path))
        return false;
    Entries entries;
    GetFileEntriesInFolder(entries, FIND_FOLDER_ALL, path, nullptr);
    bool all = true;
    for (const WIN32_FIND_DATAW& entry : entries) {
        const String inside = joined(path, entry.cFileName);
        if (!is_folder(entry) && DelFile(inside.c_str(), true))
            continue;
        if (is_folder(entry) && !is_link(entry))
            EmptyFolder(inside);
        all = remove_entry(inside, entry) && all;
    }
    return all;
}

bool CreateDirRecursive(const String& path)
{
    String folder = path;
    folder.Replace(static_cast<WCHAR>('/'), static_cast<WCHAR>('\\'));
    if (!folder.empty() && folder[folder.GetLength() - 1] == '\\')
        folder = folder.Left(folder.GetLength() - 1);
    std::vector<String> missing;
    while (!IsDirExist(folder) && !CreateDirectoryW(folder.c_str(), nullptr)) {
        const int separator = folder.ReverseFind(static_cast<WCHAR>('\\'));
        if (separator <= 0)
            return false;
        missing.push_back(folder);
        folder = folder.Left(separator);
    }
    for (; !missing.empty(); missing.pop_back()) {
        if (!CreateDirectoryW(missing.back().c_str(), nullptr) && !IsDirExist(missing.back()))
            return false;
    }
    return true;
}

bool CreateDirectoryTree(const String& path)
{
    return CreateDirRecursive(path);
}

bool FindFileInDirTree(const String& folder, const String& name, String& found)
{
    return walk(folder, true, [&](const String& place, const WIN32_FIND_DATAW& entry) {
        if (name.CompareNoCase(entry.cFileName) != 0)
            return false;
        found = joined(place, entry.cFileName);
        return true;
    });
}

unsigned int CountFiles(const String& folder, bool recursive)
{
    unsigned int count = 0;
    walk(folder, recursive, [&](const String&, const WIN32_FIND_DATAW&) {
        ++count;
        return false;
    });
    return count;
}

UINT64 GetPathSize(const String& path)
{
    UINT64 size = 0;
    if (GetFileLength(path.c_str(), size))
        return size;
    walk(path, true, [&](const String&, const WIN32_FIND_DATAW& entry) {
        size += static_cast<UINT64>(base::TFileEnumerator::GetFilesize(entry));
        return false;
    });
    return size;
}

} // namespace FileFuncs
