// Asking, names and single files.
#include "zorutils/fs/FileFunctions.h"

#include <stdio.h>

#include <boost/filesystem.hpp>

#include "zorutils/platform/crt.h"
#include "zorutils/platform/removable.h"
#include "zorutils/platform/system_path.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/zor_check.h"

namespace FileFuncs {

namespace {

namespace fs = boost::filesystem;
using zor::platform::from_boost_path;
using zor::platform::to_absolute_path;
using zor::platform::to_boost_path;

typedef CZorStringT<WCHAR> String;

constexpr const char* source_path = "fs\\FileFunctions";

bool is_forbidden(WCHAR unit)
{
    return unit != 0 && String(ZOR_W("<>\"\\/:?*|")).Find(unit) >= 0;
}

fs::file_status status_of(const WCHAR* path, boost::system::error_code& code)
{
    const fs::path absolute = to_absolute_path(path, code);
    return code ? fs::file_status() : fs::status(absolute, code);
}

} // namespace

// --- Asking.

bool IsFileExist(const String& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool FileExists(const WCHAR* path)
{
    return IsFileExist(path);
}

bool IsDirExist(const String& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsFolder(const WCHAR* path)
{
    boost::system::error_code code;
    const fs::file_status status = status_of(path, code);
    return status.type() == fs::directory_file && !code;
}

bool IsDots(const WCHAR* text)
{
    if (text == nullptr)
        return false;
    const String name(text, static_cast<int>(String(text).GetLength()));
    return name.Compare(ZOR_W(".")) == 0 || name.Compare(ZOR_W("..")) == 0;
}

bool GetFileLength(const WCHAR* path, UINT64& length)
{
    boost::system::error_code code;
    if (status_of(path, code).type() != fs::regular_file)
        return false;
    const UINT64 size = fs::file_size(to_absolute_path(path, code), code);
    if (code)
        return false;
    length = size;
    return true;
}

bool IsPathOnFlashCard(const WCHAR* path)
{
    String top = path;
    if (!top.empty() && top[0] == '\\') {
        const int second = top.Find(static_cast<WCHAR>('\\'), 1);
        if (second > 0)
            top = top.Left(second);
    }
    // A failed call gives all bits and goes on; the volume then cannot be asked.
    if ((GetFileAttributesW(top.c_str()) & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_TEMPORARY)) ==
        0)
        return false;
    return zor::platform::is_on_removable_volume(top.c_str());
}

String GetTempDirWithoutSlash()
{
    boost::system::error_code code;
    const auto folder = from_boost_path(fs::temp_directory_path(code));
    if (code || folder.empty())
        return String();
    const String path(folder.data(), static_cast<int>(folder.size()));
    return path[path.GetLength() - 1] == '\\' ? path.Left(path.GetLength() - 1) : path;
}

// --- Names.

bool IsFileNameCorrect(const String& name)
{
    for (int i = 0; i < name.GetLength(); ++i) {
        if (is_forbidden(name[i]))
            return false;
    }
    return !name.empty();
}

String CreateCorrectFileName(const String& name, WCHAR replacement)
{
    const WCHAR used = is_forbidden(replacement) ? WCHAR{'_'} : replacement;
    String correct = name;
    for (int i = 0; i < correct.GetLength(); ++i) {
        if (is_forbidden(correct[i]))
            correct.SetAt(i, used);
    }
    return correct;
}

// --- Single files.

bool DelFile(const WCHAR* path, bool force)
{
    boost::system::error_code code;
    if (fs::status(to_boost_path(path), code).type() != fs::regular_file)
        return false;
    if (force)
        fs::permissions(to_boost_path(path),
                        fs::add_perms | fs::owner_write | fs::group_write | fs::others_write, code);
    // By the system's call and not by the library of paths, which would pass over other handles'
    // share modes where the platform layer keeps them.
    return DeleteFileW(path) != 0;
}

bool WriteFile(const WCHAR* path, const char* bytes, unsigned int size)
{
    FILE* const file = _wfopen(path, ZOR_W("wb"));
    if (file == nullptr) {
        zor_logging::zor_err_log(source_path, __LINE__, "");
        return false;
    }
    const bool written = fwrite(bytes, 1, size, file) == size;
    const bool closed = fclose(file) == 0;
    if (!written || !closed)
        zor_logging::zor_err_log(source_path, __LINE__, "");
    return written && closed;
}

} // namespace FileFuncs
