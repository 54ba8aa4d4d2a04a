#include "zorutils/platform/posix/memory.h"

#include "zorutils/platform/posix/last_error.h"

#include "zorutils/platform/posix/system_calls.h"

#include <algorithm>
#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <unistd.h>

using zor::platform::system_calls;

namespace {

// What a process on this machine can address, less the pages that the system keeps at the end.
constexpr SIZE_T address_space = 0x7FFFFFFFF000;

// Reads a file of the process file system, whose files come whole in one read. Empty on failure.
struct ProcText
{
    char text[4096];

    explicit ProcText(const char* path)
    {
        text[0] = 0;
        const int file = system_calls().open(path, O_RDONLY | O_CLOEXEC, 0);
        if (file < 0)
            return;
        const ssize_t length = system_calls().read(file, text, sizeof(text) - 1);
        text[length > 0 ? length : 0] = 0;
        system_calls().close(file);
    }

    // The figure of a line "<name>:  <kibibytes> kB" in bytes, 0 without such a line.
    SIZE_T bytes_of(const char* name) const
    {
        const size_t length = strlen(name);
        for (const char* line = text; line; line = strchr(line, '\n')) {
            line += *line == '\n';
            if (strncmp(line, name, length) == 0 && line[length] == ':')
                return static_cast<SIZE_T>(strtoull(line + length + 1, nullptr, 10)) * 1024;
        }
        return 0;
    }
};

SIZE_T address_limit()
{
    rlimit limit = {};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return address_space;
    return std::min(static_cast<SIZE_T>(limit.rlim_cur), address_space);
}

// The first figure of statm is the size of the process in pages.
SIZE_T address_space_used()
{
    const ProcText statm("/proc/self/statm");
    return static_cast<SIZE_T>(strtoull(statm.text, nullptr, 10)) *
           static_cast<SIZE_T>(sysconf(_SC_PAGESIZE));
}

} // namespace

void GlobalMemoryStatus(MEMORYSTATUS* status)
{
    const ProcText figures("/proc/meminfo");
    *status = MEMORYSTATUS();
    status->dwLength = sizeof(*status);
    status->dwTotalPhys = figures.bytes_of("MemTotal");
    status->dwAvailPhys = std::min(figures.bytes_of("MemAvailable"), status->dwTotalPhys);
    status->dwTotalPageFile = status->dwTotalPhys + figures.bytes_of("SwapTotal");
    status->dwAvailPageFile = status->dwAvailPhys + figures.bytes_of("SwapFree");
    status->dwTotalVirtual = address_limit();
    status->dwAvailVirtual =
        status->dwTotalVirtual - std::min(address_space_used(), status->dwTotalVirtual);
    if (status->dwTotalPhys != 0) {
        const SIZE_T used = status->dwTotalPhys - status->dwAvailPhys;
        status->dwMemoryLoad = static_cast<DWORD>(used / (status->dwTotalPhys / 100 + 1));
    }
}

HLOCAL LocalAlloc(UINT, SIZE_T bytes)
{
    HLOCAL block = malloc(bytes ? bytes : 1);
    if (!block)
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return block;
}

HLOCAL LocalFree(HLOCAL block)
{
    free(block);
    return nullptr;
}
