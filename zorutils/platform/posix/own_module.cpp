#include "zorutils/platform/own_module.h"

namespace zor::platform {

// An address inside a module stands for the module here.
HMODULE module_at(const void* address)
{
    return static_cast<HMODULE>(const_cast<void*>(address));
}

} // namespace zor::platform
