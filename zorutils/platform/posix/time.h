// zorutils/platform/posix/time.h: time and zones: FileTimeToLocalFileTime and its kin.
#pragma once

#include "zorutils/platform/win_types.h"
