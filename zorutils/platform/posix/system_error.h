// zorutils/platform/posix/system_error.h: the system's error numbers as Win32 errors.
//
//     if (system_calls().rmdir(path) != 0)
//         return fail_with_errno(FALSE);
#pragma once

#include "zorutils/platform/posix/last_error.h"

#include <errno.h>
#include <new>

namespace zor::platform {

// The Win32 error of an errno value; ERROR_GEN_FAILURE for one that has no counterpart. The one
// place where the two meet. ENOENT is "file not found": whether its folder is missing too, only
// the caller can tell.
DWORD win32_error_of(int system_error);

// Sets the last error and returns `result`.
template <typename Result>
Result fail_with(DWORD error, Result result)
{
    SetLastError(error);
    return result;
}

template <typename Result>
Result fail_with_errno(Result result)
{
    return fail_with(win32_error_of(errno), result);
}

// Runs `body`, and turns memory that ran out into a Win32 failure: callers of Win32 expect no
// exception.
template <typename Result, typename Body>
Result without_exceptions(Result failure, Body body)
{
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return fail_with(ERROR_NOT_ENOUGH_MEMORY, failure);
    }
}

} // namespace zor::platform
