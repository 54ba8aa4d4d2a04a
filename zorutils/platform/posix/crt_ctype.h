// zorutils/platform/posix/crt_ctype.h: character classes and case mapping on 16-bit units.
#pragma once

#include "zorutils/platform/win_types.h"
