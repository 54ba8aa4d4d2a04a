// zorutils/platform/posix/crt_file.h: run-time file calls on handles: _open_osfhandle, _fdopen.
#pragma once

#include "zorutils/platform/win_types.h"
