#include "zorutils/fs/file_enumerator.h"

#include "zorutils/fs/file_names.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/zor_check.h"
#include "zorutils/zorsys/zor_time.h"

namespace base {

namespace {

typedef zor_text::CZorStringT<WCHAR> String;

constexpr const char* source_path = "fs\\platform_file";

} // namespace

TFileEnumerator::TFileEnumerator(const String& root, bool recurse, int type)
    : TFileEnumerator(root, recurse, type, String())
{
}

TFileEnumerator::TFileEnumerator(const String& root, bool recurse, int type, const String& search)
    : hasFindData(false), findData(), findHandle(INVALID_HANDLE_VALUE), recursive(recurse),
      fileType(type), pattern(search)
{
    if (recursive && (fileType & FILE_TYPE_INCLUDE_DOT_DOT) != 0)
        zor_logging::zor_err_log(source_path, __LINE__, "");
    pendingPaths.push_back(root);
}

TFileEnumerator::~TFileEnumerator()
{
    if (findHandle != INVALID_HANDLE_VALUE)
        FindClose(findHandle);
}

String TFileEnumerator::Next()
{
    for (;;) {
        if (hasFindData && findHandle != INVALID_HANDLE_VALUE &&
            !FindNextFileW(findHandle, &findData)) {
            FindClose(findHandle);
            findHandle = INVALID_HANDLE_VALUE;
        }
        if (!hasFindData) {
            if (pendingPaths.empty())
                return String();
            rootPath = pendingPaths.back();
            pendingPaths.pop_back();
            String search = rootPath;
            search += ZOR_W("/");
            search += pattern.empty() ? String(ZOR_W("*")) : pattern;
            findHandle = FindFirstFileW(search.c_str(), &findData);
            hasFindData = true;
        }
        if (findHandle == INVALID_HANDLE_VALUE) {
            hasFindData = false;
            // The pattern was the root's alone, on purpose: in the folders below everything counts.
            pattern.Empty();
            continue;
        }
        const String name = findData.cFileName;
        if (ShouldSkip(name))
            continue;
        if (!IsDirectory(findData)) {
            if ((fileType & FILE_TYPE_FILES) != 0)
                return name;
            continue;
        }
        // The bare name, on purpose: hosts walk with the current folder at the root.
        if (recursive)
            pendingPaths.push_back(name);
        if ((fileType & FILE_TYPE_DIRECTORIES) != 0)
            return name;
    }
}

void TFileEnumerator::GetFindInfo(WIN32_FIND_DATAW* out)
{
    if (out == nullptr)
        zor_logging::zor_err_log(source_path, __LINE__, "");
    if (hasFindData)
        *out = findData;
}

bool TFileEnumerator::ShouldSkip(const String& name)
{
    const String last = zor::file_names::ExtractFileNameWithExtFromPathName(name);
    return IsDot(last) || (IsDotDot(last) && (fileType & FILE_TYPE_INCLUDE_DOT_DOT) == 0);
}

bool TFileEnumerator::IsDirectory(const WIN32_FIND_DATAW& data)
{
    return (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

String TFileEnumerator::GetFilename(const WIN32_FIND_DATAW& data)
{
    return data.cFileName;
}

INT64 TFileEnumerator::GetFilesize(const WIN32_FIND_DATAW& data)
{
    return static_cast<INT64>(static_cast<UINT64>(data.nFileSizeHigh) << 32 | data.nFileSizeLow);
}

INT64 TFileEnumerator::GetLastModifiedTime(const WIN32_FIND_DATAW& data)
{
    return to_time_t(data.ftLastWriteTime);
}

bool IsDot(const String& name)
{
    return name.Compare(ZOR_W(".")) == 0;
}

bool IsDotDot(const String& name)
{
    return name.Compare(ZOR_W("..")) == 0;
}

} // namespace base
