// zorutils/platform/posix/crt_time.h: 64-bit time calls and wcsftime.
#pragma once

#include "zorutils/platform/win_types.h"
