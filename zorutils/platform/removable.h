// zorutils/platform/removable.h: whether a folder lies on a removable card.
#pragma once

#include "zorutils/platform/win_types.h"

namespace zor::platform {

// Asks the volume that holds `folder`; false also if it cannot be asked.
bool is_on_removable_volume(const WCHAR* folder);

} // namespace zor::platform
