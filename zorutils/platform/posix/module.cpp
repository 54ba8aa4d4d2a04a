#include "zorutils/platform/posix/module.h"

#include <dlfcn.h>
#include <errno.h>
#include <link.h>
#include <string.h>

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

// The path that the loader gets. With a "/" in it the loader does not search.
std::string library_path(LPCWSTR name, const std::string& system_path)
{
    const TextView text(name);
    if (text.find_first_of(TextView(ZOR_W("\\/:"))) != TextView::npos)
        return system_path.find('/') == std::string::npos ? "./" + system_path : system_path;
    const std::string beside = parent_of(path_of(nullptr)) + "/" + system_path;
    struct stat found;
    return system_calls().stat(beside.c_str(), &found) == 0 ? beside : system_path;
}

DWORD load_error(int reason)
{
    switch (reason) {
    case ENOENT:
        return ERROR_MOD_NOT_FOUND;
    case ENOMEM:
        return ERROR_OUTOFMEMORY;
    case ENOSYS:
        return ERROR_PROC_NOT_FOUND;
    case ENOEXEC:
        return ERROR_BAD_EXE_FORMAT;
    default:
        return win32_error_of(reason);
    }
}

// Where the module begins that holds an address; null if none does.
const void* start_of(const void* address)
{
    Dl_info info;
    return dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

// The loader's own handle of a module, counted once more. Null for what is none.
void* counted_handle(HMODULE module)
{
    Dl_info info;
    link_map* map = nullptr;
    if (module != nullptr &&
        dladdr1(module, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) == 0)
        return nullptr;
    const bool is_program = module == nullptr || map->l_name == nullptr || map->l_name[0] == 0;
    return dlopen(is_program ? nullptr : map->l_name, RTLD_NOW | RTLD_NOLOAD);
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

HMODULE LoadLibraryW(LPCWSTR name)
{
    return without_exceptions(HMODULE{}, [&]() -> HMODULE {
        SystemPath path;
        if (to_system_path(name, path) != ERROR_SUCCESS)
            return fail_with(ERROR_MOD_NOT_FOUND, HMODULE{});
        void* const handle = system_calls().load_library(library_path(name, path.path).c_str());
        if (handle == nullptr)
            return fail_with(load_error(errno), HMODULE{});
        const link_map* map = nullptr;
        dlinfo(handle, RTLD_DI_LINKMAP, &map);
        return static_cast<HMODULE>(const_cast<void*>(start_of(map->l_ld)));
    });
}

BOOL FreeLibrary(HMODULE module)
{
    void* const handle = module == nullptr ? nullptr : counted_handle(module);
    if (handle == nullptr)
        return fail_with(ERROR_MOD_NOT_FOUND, FALSE);
    dlclose(handle);
    dlclose(handle);
    return TRUE;
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name)
{
    void* const handle = counted_handle(module);
    if (handle == nullptr)
        return fail_with(ERROR_MOD_NOT_FOUND, FARPROC{});
    void* const address = name == nullptr ? nullptr : dlsym(handle, name);
    dlclose(handle);
    // The loader also finds what the module needs; its owner is asked for that.
    if (address == nullptr || (module != nullptr && start_of(address) != start_of(module)))
        return fail_with(ERROR_PROC_NOT_FOUND, FARPROC{});
    return reinterpret_cast<FARPROC>(address);
}
