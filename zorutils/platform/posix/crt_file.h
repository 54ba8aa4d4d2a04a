// zorutils/platform/posix/crt_file.h: C streams over handles: _open_osfhandle and _fdopen.
#pragma once

#include <stdint.h>
#include <stdio.h>

// A number for the handle, which goes over to it; -1 with errno EBADF for what is no open file.
// The number is good for one _fdopen.
int _open_osfhandle(intptr_t handle, int flags);

// A stream that closes the handle with itself. Null with errno for an unknown number (EBADF) or a
// bad mode (EINVAL).
FILE* _fdopen(int number, const char* mode);
