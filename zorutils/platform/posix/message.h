// zorutils/platform/posix/message.h: FormatMessageW with positional inserts.
#pragma once

#include "zorutils/platform/win_types.h"
