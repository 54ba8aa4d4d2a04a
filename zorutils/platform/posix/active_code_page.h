// zorutils/platform/posix/active_code_page.h: the code page that stands for CP_ACP on POSIX.
//
// 1252 unless ZOR_ACP in the environment or a host names another. A change holds for conversions
// that begin after it; texts converted before stay as they are.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"

namespace zor {
namespace platform {

// Sets the active code page. False, with nothing changed, for a page that cannot be had. Any
// thread.
ZOR_API bool set_active_code_page(UINT page);

// The active code page. Any thread.
ZOR_API UINT active_code_page();

} // namespace platform
} // namespace zor
