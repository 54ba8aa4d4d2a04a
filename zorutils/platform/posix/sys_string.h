// zorutils/platform/posix/sys_string.h: counted system strings: SysAllocStringLen and its kin.
#pragma once

#include "zorutils/platform/win_types.h"
