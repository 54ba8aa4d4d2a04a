// zorutils/platform/own_module.h: the module that the library's code lies in.
#pragma once

#include "zorutils/platform/win_types.h"

namespace zor::platform {

// For GetModuleFileNameW; null if the system cannot tell. `address` is one inside the library.
HMODULE module_at(const void* address);

} // namespace zor::platform
