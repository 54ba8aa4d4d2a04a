#include "zorutils/platform/posix/files.h"

#include "zorutils/platform/posix/open_file.h"
#include "zorutils/platform/posix/path_text.h"

#include <atomic>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

using namespace zor::platform;

namespace {

constexpr UINT most_numbers = 0xFFFF;
constexpr size_t prefix_units = 3;

// The folder of the environment, as other programs of the system take it; from the root, with a
// separator at its end.
Text temporary_folder()
{
    std::string folder = "/tmp";
    for (const char* name : {"TMPDIR", "TMP", "TEMP", "TEMPDIR"}) {
        const char* value = getenv(name);
        if (value && value[0] == '/') {
            folder = value;
            break;
        }
    }
    if (folder.back() != '/')
        folder += '/';
    return from_system_path(folder);
}

// A number to begin the search with: other processes begin elsewhere.
UINT first_number()
{
    static std::atomic<UINT> calls{0};
    struct timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<UINT>(now.tv_nsec / 1000) + static_cast<UINT>(now.tv_sec) + calls++;
}

Text temporary_name(const Text& folder, const Text& prefix, UINT number)
{
    char tail[16];
    snprintf(tail, sizeof(tail), "%x.tmp", number);
    Text name = folder + prefix;
    for (const char* unit = tail; *unit; ++unit)
        name += static_cast<WCHAR>(*unit);
    return name;
}

// Makes an empty file of the first free number, and tells the number; 0 with the last error.
UINT make_temporary_file(const Text& folder, const Text& prefix, Text& name)
{
    UINT number = first_number() & most_numbers;
    for (UINT tried = 0; tried < most_numbers; ++tried, number = (number + 1) & most_numbers) {
        if (number == 0)
            continue;
        name = temporary_name(folder, prefix, number);
        const HANDLE file =
            CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
        if (file != INVALID_HANDLE_VALUE) {
            CloseHandle(file);
            return number;
        }
        if (GetLastError() != ERROR_FILE_EXISTS && GetLastError() != ERROR_SHARING_VIOLATION)
            return 0;
    }
    return 0;
}

} // namespace

DWORD GetTempPathW(DWORD count, LPWSTR buffer)
{
    return without_exceptions(DWORD(0), [&] {
        const Text folder = temporary_folder();
        const auto length = static_cast<DWORD>(folder.size());
        if (length >= count)
            return length + 1;
        memcpy(buffer, folder.c_str(), (length + 1) * sizeof(WCHAR));
        return length;
    });
}

UINT GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR buffer)
{
    return without_exceptions(0u, [&] {
        if (!folder || !buffer)
            return fail_with(ERROR_INVALID_PARAMETER, 0u);
        Text path = folder;
        if (path.size() > MAX_PATH - 14)
            return fail_with(ERROR_BUFFER_OVERFLOW, 0u);
        if (path.empty() || (path.back() != '\\' && path.back() != '/'))
            path += static_cast<WCHAR>('\\');
        const Text start = Text(prefix ? prefix : ZOR_W("")).substr(0, prefix_units);
        Text name;
        UINT number = unique & most_numbers;
        if (number != 0) {
            name = temporary_name(path, start, number);
        } else {
            const DWORD attributes = GetFileAttributesW(path.c_str());
            if (attributes == INVALID_FILE_ATTRIBUTES ||
                (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
                return fail_with(ERROR_DIRECTORY, 0u);
            number = make_temporary_file(path, start, name);
        }
        if (number != 0)
            memcpy(buffer, name.c_str(), (name.size() + 1) * sizeof(WCHAR));
        return number;
    });
}
