#include "zorutils/platform/posix/memory.h"

#include "zorutils/platform/posix/last_error.h"

#include <stdlib.h>

HLOCAL LocalAlloc(UINT, SIZE_T bytes)
{
    HLOCAL block = malloc(bytes ? bytes : 1);
    if (!block)
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return block;
}

HLOCAL LocalFree(HLOCAL block)
{
    free(block);
    return nullptr;
}
