// Copies, with what FileFuncs promises of them.
#include <boost/filesystem.hpp>
#include <vector>

#include "zorutils/fs/FileFunctions.h"
#include "zorutils/fs/file_time.h"
#include "zorutils/platform/system_path.h"
#include "zorutils/platform/winapi.h"

namespace FileFuncs {

namespace {

namespace fs = boost::filesystem;
using zor::platform::from_boost_path;
using zor::platform::to_absolute_path;
using zor::platform::to_boost_path;

typedef CZorStringT<WCHAR> String;

String text_of(const fs::path& path)
{
    const auto text = from_boost_path(path);
    return String(text.data(), static_cast<int>(text.size()));
}

bool exists(const WCHAR* path)
{
    return GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}

bool copy(const WCHAR* from, const WCHAR* to, bool overwrite)
{
    if (overwrite && exists(to))
        DelFile(to, true);
    boost::system::error_code code;
    const fs::path source = to_absolute_path(from, code);
    if (code)
        return false;
    const fs::path target = to_absolute_path(to, code);
    if (code)
        return false;
    if (target.has_parent_path() && !fs::is_directory(fs::status(target.parent_path(), code)))
        fs::create_directories(target.parent_path(), code);
    // The system's copy, which keeps what the system keeps and cleans up behind itself; the library
    // of paths would pass over other handles' share modes where the platform layer keeps them.
    const bool copied =
        CopyFileW(text_of(source).c_str(), text_of(target).c_str(), overwrite ? FALSE : TRUE) != 0;
    return copied && fs::exists(fs::status(target, code));
}

} // namespace

bool CopyFromTo(const WCHAR* from, const WCHAR* to, bool overwrite)
{
    if (exists(to) && !overwrite)
        return true;
    return copy(from, to, overwrite);
}

bool CopyFromToCheckDate(const WCHAR* from, const WCHAR* to)
{
    if (!exists(to))
        return copy(from, to, false);
    if (!exists(from))
        return false;
    FILETIME source, target;
    if (!zor::file_time::zorGetFileTimes(from, nullptr, nullptr, &source) ||
        !zor::file_time::zorGetFileTimes(to, nullptr, nullptr, &target))
        return true;
    if (CompareFileTime(&source, &target) <= 0)
        return true;
    // Without overwriting, on purpose: the existing target is refused, and hosts rely on being
    // told.
    return copy(from, to, false);
}

bool CopyDirectory(const WCHAR* from, const WCHAR* to, bool third, bool fourth)
{
    boost::system::error_code code;
    // The whole list first, so that a target inside the source is not copied into itself.
    std::vector<fs::path> entries;
    for (fs::directory_iterator entry(to_boost_path(from), code), end; !code && entry != end;
         entry.increment(code))
        entries.push_back(entry->path());
    bool result = true;
    for (const fs::path& entry : entries) {
        const String source = text_of(entry);
        String target = to;
        target += ZOR_W("\\");
        target += text_of(entry.filename());
        if (fs::is_directory(fs::status(entry, code))) {
            result = CopyDirectory(source.c_str(), target.c_str(), third, fourth);
            continue;
        }
        result = CopyFromTo(source.c_str(), target.c_str(), true);
        if (result && fourth)
            fs::permissions(entry, fs::add_perms | fs::status(entry, code).permissions(), code);
    }
    return result;
}

} // namespace FileFuncs
