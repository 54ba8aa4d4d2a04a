// zorutils/platform/posix/crt_file.h: C streams over handles: _open_osfhandle and _fdopen.
#pragma once

#include <stdint.h>
#include <stdio.h>

#include "zorutils/platform/win_types.h"

// A number for the handle, which goes over to it; -1 with errno EBADF for what is no open file.
// The number is good for one _fdopen.
int _open_osfhandle(intptr_t handle, int flags);

// A stream that closes the handle with itself. Null with errno for an unknown number (EBADF) or a
// bad mode (EINVAL).
FILE* _fdopen(int number, const char* mode);

// fopen with a path of 16-bit units, which others may read and write at the same time. Null with
// the last error of the opening on failure.
FILE* _wfopen(const WCHAR* path, const WCHAR* mode);
