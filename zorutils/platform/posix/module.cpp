#include "zorutils/platform/posix/module.h"

#include <dlfcn.h>
#include <errno.h>

#include <algorithm>
#include <string>

#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/path_text.h"
#include "zorutils/platform/posix/system_calls.h"
#include "zorutils/platform/posix/system_error.h"

using namespace zor::platform;

namespace {

// Empty with the last error on failure.
std::string path_of(HMODULE module)
{
    if (module == nullptr) {
        std::string path(4096, '\0');
        const ssize_t length = system_calls().readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0)
            SetLastError(win32_error_of(errno));
        path.resize(length < 0 ? 0 : static_cast<size_t>(length));
        return path;
    }
    Dl_info info;
    if (dladdr(module, &info) == 0 || info.dli_fname == nullptr) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return std::string();
    }
    char full[PATH_MAX];
    return system_calls().realpath(info.dli_fname, full) != nullptr ? full : info.dli_fname;
}

} // namespace

DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size)
{
    return without_exceptions(DWORD{0}, [&]() -> DWORD {
        if (size == 0) {
            SetLastError(ERROR_INSUFFICIENT_BUFFER);
            return 0;
        }
        const std::string path = path_of(module);
        if (path.empty())
            return 0;
        const Text text = from_system_path(path);
        const size_t copied = std::min<size_t>(text.size(), size - 1);
        std::copy_n(text.begin(), copied, buffer);
        buffer[copied] = 0;
        if (copied == text.size())
            return static_cast<DWORD>(copied);
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return size;
    });
}
