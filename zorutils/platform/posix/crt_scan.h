// zorutils/platform/posix/crt_scan.h: the scanner swscanf on 16-bit units.
#pragma once

#include "zorutils/platform/win_types.h"
