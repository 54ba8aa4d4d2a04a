#include "zorutils/platform/posix/stay_loaded.h"

#include <dlfcn.h>

#include <mutex>

namespace zor::platform {

void stay_loaded()
{
    static std::once_flag once;
    std::call_once(once, [] {
        Dl_info info;
        if (dladdr(reinterpret_cast<const void*>(&stay_loaded), &info) != 0)
            dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    });
}

} // namespace zor::platform
