// zorutils/platform/posix/find.h: searches: FindFirstFileW and its kin.
#pragma once

#include "zorutils/platform/win_types.h"
