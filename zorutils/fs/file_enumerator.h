// zorutils/fs/file_enumerator.h: the entries of a folder, one at a time.
//
//     base::TFileEnumerator entries(folder, false, base::TFileEnumerator::FILE_TYPE_FILES,
//                                   ZOR_W("*.txt"));
//     for (auto name = entries.Next(); !name.empty(); name = entries.Next())
//         use(folder, name); // the bare name: join it yourself
//
// A folder that cannot be searched counts as empty, and nothing is reported. Errors: a failed
// allocation is std::bad_alloc. Threads: an enumerator belongs to one.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/core/zor_vector.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zortext/zor_string.h"

namespace base {

class ZOR_API TFileEnumerator
{
public:
    typedef zor_text::CZorStringT<WCHAR> String;

    // Bits of the file type.
    enum FileType
    {
        FILE_TYPE_FILES = 1,
        FILE_TYPE_DIRECTORIES = 2,
        FILE_TYPE_INCLUDE_DOT_DOT = 4, // the entry ".." as well; "." never comes
    };

    // Enumerates the entries of the folder `root`: all of them, or those that match `pattern` by
    // the rules of a search ("*.txt"). `fileType` says which are reported.
    //
    // With `recursive` every folder met is searched when the present one has ended, the one met
    // last first. Three things are so on purpose: the pattern holds for the root alone; names come
    // without their folder; and a folder met is searched by its bare name, so relative to the
    // current folder of the process. With FILE_TYPE_INCLUDE_DOT_DOT it would loop, and is logged.
    TFileEnumerator(const String& root, bool recursive, int fileType);
    TFileEnumerator(const String& root, bool recursive, int fileType, const String& pattern);
    ~TFileEnumerator();
    TFileEnumerator(const TFileEnumerator&) = delete;
    TFileEnumerator& operator=(const TFileEnumerator&) = delete;

    // The next entry's name; empty at the end, and from then on.
    String Next();

    // Copies what the search told of the current entry; nothing if there is none. `out` must not be
    // null.
    void GetFindInfo(WIN32_FIND_DATAW* out);

    static bool IsDirectory(const WIN32_FIND_DATAW& data);
    static String GetFilename(const WIN32_FIND_DATAW& data);
    // Bytes.
    static INT64 GetFilesize(const WIN32_FIND_DATAW& data);
    // Seconds since 1970-01-01 UTC.
    static INT64 GetLastModifiedTime(const WIN32_FIND_DATAW& data);

private:
    bool ShouldSkip(const String& name);

    bool hasFindData;
    WIN32_FIND_DATAW findData;
    HANDLE findHandle;
    String rootPath;
    bool recursive;
    int fileType;
    String pattern;
    zor_vector<String> pendingPaths;
};

// Whether the whole text is "." or "..".
ZOR_API bool IsDot(const zor_text::CZorStringT<WCHAR>& name);
ZOR_API bool IsDotDot(const zor_text::CZorStringT<WCHAR>& name);

} // namespace base
