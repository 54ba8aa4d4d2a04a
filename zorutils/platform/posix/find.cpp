#include "zorutils/platform/posix/find.h"

#include <dirent.h>
#include <errno.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "zorutils/platform/posix/descriptor.h"
#include "zorutils/platform/posix/file_status.h"
#include "zorutils/platform/posix/handle_table.h"
#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/path_text.h"
#include "zorutils/platform/posix/system_error.h"

using namespace zor::platform;

namespace {

// A surrogate has no case of its own: units are compared one by one.
WCHAR folded(WCHAR unit)
{
    const UChar32 upper = u_toupper(unit);
    return upper < 0x10000 ? static_cast<WCHAR>(upper) : unit;
}

bool is_wild(WCHAR unit)
{
    return unit == '*' || unit == '?';
}

// A greedy walk with one point to come back to: linear in practice, quadratic at worst.
bool matches(TextView pattern, TextView name)
{
    size_t p = 0, n = 0;
    size_t star = TextView::npos, star_name = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            star_name = n;
        } else if (p < pattern.size() &&
                   (pattern[p] == '?' || folded(pattern[p]) == folded(name[n]))) {
            ++p;
            ++n;
        } else if (star != TextView::npos) {
            p = star + 1;
            n = ++star_name;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    while (pattern.size() - p >= 2 && pattern[p] == '.' && pattern[p + 1] == '*')
        p += 2;
    return p == pattern.size();
}

bool comes_before(const Text& a, const Text& b)
{
    const bool less = std::lexicographical_compare(
        a.begin(), a.end(), b.begin(), b.end(),
        [](WCHAR left, WCHAR right) { return folded(left) < folded(right); });
    const bool greater = std::lexicographical_compare(
        b.begin(), b.end(), a.begin(), a.end(),
        [](WCHAR left, WCHAR right) { return folded(left) < folded(right); });
    return less != greater ? less : a < b;
}

bool fill(WIN32_FIND_DATAW& data, const std::string& path, const Text& name)
{
    FileStatus status;
    if (!listed_status_of(path, status) || name.size() >= MAX_PATH)
        return false;
    data = WIN32_FIND_DATAW{};
    data.dwFileAttributes = status.attributes;
    data.ftCreationTime = status.creation;
    data.ftLastAccessTime = status.last_access;
    data.ftLastWriteTime = status.last_write;
    data.nFileSizeHigh = static_cast<DWORD>(status.size >> 32);
    data.nFileSizeLow = static_cast<DWORD>(status.size);
    std::copy(name.begin(), name.end(), data.cFileName);
    return true;
}

class Search : public HandleObject
{
public:
    Search(std::string folder, std::vector<Text> names)
        : m_folder(std::move(folder)), m_names(std::move(names))
    {
    }

    // ERROR_SUCCESS with the next entry, ERROR_NO_MORE_FILES at the end. Entries that went away
    // since the folder was read are passed over; one that is there and cannot be looked at is told,
    // and a caller that goes on gets those behind it.
    DWORD next(WIN32_FIND_DATAW& data)
    {
        while (m_next < m_names.size()) {
            const Text& name = m_names[m_next++];
            errno = 0;
            if (fill(data, m_folder + "/" + to_system_name(name), name))
                return ERROR_SUCCESS;
            if (errno != ENOENT && errno != 0)
                return win32_error_of(errno);
        }
        return ERROR_NO_MORE_FILES;
    }

private:
    std::string m_folder;
    std::vector<Text> m_names;
    size_t m_next = 0;
};

// The name as text if it matches.
void take_name(std::string_view bytes, TextView pattern, std::vector<Text>& names)
{
    // The two folders' own entries are no names of files: their dots stay as they are.
    Text name =
        bytes == "." || bytes == ".." ? Text(bytes.begin(), bytes.end()) : from_system_name(bytes);
    if (matches(pattern, name))
        names.push_back(std::move(name));
}

// The names in a folder that match, sorted. False with errno set on failure.
bool read_folder(const std::string& path, TextView pattern, std::vector<Text>& names)
{
    // Not by opendir: a folder must be read while the C library's heap is out of reach, too.
    const Descriptor folder = open_descriptor(path.c_str(), O_RDONLY | O_DIRECTORY);
    if (!folder.valid())
        return false;
    alignas(dirent64) char block[16384];
    for (;;) {
        const ssize_t length = retry_interrupted(
            [&] { return system_calls().getdents64(folder.get(), block, sizeof block); });
        if (length < 0)
            return false;
        if (length == 0)
            break;
        for (ssize_t at = 0; at < length;) {
            const auto* const entry = reinterpret_cast<const dirent64*>(block + at);
            take_name(entry->d_name, pattern, names);
            at += entry->d_reclen;
        }
    }
    std::sort(names.begin(), names.end(), comes_before);
    return true;
}

HANDLE fail(DWORD error)
{
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
}

DWORD folder_error()
{
    return errno == ENOTDIR  ? ERROR_INVALID_NAME
           : errno == ENOENT ? ERROR_PATH_NOT_FOUND
                             : win32_error_of(errno);
}

HANDLE find_one(TextView text, WIN32_FIND_DATAW& data)
{
    SystemPath path;
    const DWORD error = to_system_path(text, path);
    if (error != ERROR_SUCCESS)
        return fail(error == ERROR_INVALID_NAME ? ERROR_FILE_NOT_FOUND : error);
    const std::string name = path.path.substr(path.path.find_last_of('/') + 1);
    if (path.ends_in_separator || name.empty())
        return fail(ERROR_FILE_NOT_FOUND);
    const Text listed = from_system_name(name);
    if (!fill(data, path.path, listed)) {
        const int cause = errno;
        FileStatus folder;
        if (cause == ENOENT && !status_of(parent_of(path.path), Links::follow, folder))
            return fail(ERROR_PATH_NOT_FOUND);
        return fail(cause == ENOENT    ? ERROR_FILE_NOT_FOUND
                    : cause == ENOTDIR ? ERROR_INVALID_NAME
                                       : win32_error_of(cause));
    }
    return add_handle(std::make_shared<Search>(std::string(), std::vector<Text>()));
}

HANDLE find_pattern(TextView folder_text, TextView pattern, WIN32_FIND_DATAW& data)
{
    SystemPath folder;
    folder.path = ".";
    if (!folder_text.empty()) {
        const DWORD error = to_system_path(folder_text, folder);
        if (error != ERROR_SUCCESS)
            return fail(error);
    }
    while (!pattern.empty() && pattern.back() == '.')
        pattern.remove_suffix(1);
    std::vector<Text> names;
    if (!read_folder(folder.path, pattern, names))
        return fail(folder_error());
    auto search = std::make_shared<Search>(folder.path, std::move(names));
    const DWORD first = search->next(data);
    if (first != ERROR_SUCCESS)
        return fail(first == ERROR_NO_MORE_FILES ? ERROR_FILE_NOT_FOUND : first);
    return add_handle(std::move(search));
}

} // namespace

HANDLE FindFirstFileW(LPCWSTR path, WIN32_FIND_DATAW* data)
{
    return without_exceptions(INVALID_HANDLE_VALUE, [&]() -> HANDLE {
        if (path == nullptr)
            return fail(ERROR_PATH_NOT_FOUND);
        const TextView text(path);
        const size_t separator = text.find_last_of(ZOR_W("\\/"));
        const size_t start = separator == TextView::npos ? 0 : separator + 1;
        const TextView last = text.substr(start);
        if (std::none_of(last.begin(), last.end(), is_wild))
            return find_one(text, *data);
        return find_pattern(text.substr(0, start), last, *data);
    });
}

BOOL FindNextFileW(HANDLE handle, WIN32_FIND_DATAW* data)
{
    return without_exceptions(FALSE, [&]() -> BOOL {
        const auto search = handle_as<Search>(handle);
        if (search == nullptr)
            return FALSE;
        const DWORD result = search->next(*data);
        if (result == ERROR_SUCCESS)
            return TRUE;
        SetLastError(result);
        return FALSE;
    });
}

BOOL FindClose(HANDLE handle)
{
    return handle_as<Search>(handle) != nullptr && close_handle(handle);
}
