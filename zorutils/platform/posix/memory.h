// zorutils/platform/posix/memory.h: memory and system figures: GlobalMemoryStatus, GetSystemInfo,
// LocalFree.
#pragma once

#include "zorutils/platform/win_types.h"
