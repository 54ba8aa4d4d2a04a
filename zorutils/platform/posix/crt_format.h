// zorutils/platform/posix/crt_format.h: the formatters _vsnprintf, _vsnwprintf and their kin, with Microsoft rules.
#pragma once

#include "zorutils/platform/win_types.h"
