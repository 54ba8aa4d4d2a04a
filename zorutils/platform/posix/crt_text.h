// zorutils/platform/posix/crt_text.h: text calls on 16-bit units and the narrow non-standard ones.
#pragma once

#include "zorutils/platform/win_types.h"
