#include "zorutils/platform/posix/last_error.h"

namespace {

thread_local DWORD t_last_error = ERROR_SUCCESS;

} // namespace

DWORD GetLastError()
{
    return t_last_error;
}

void SetLastError(DWORD error)
{
    t_last_error = error;
}
