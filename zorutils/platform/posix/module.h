// zorutils/platform/posix/module.h: modules: GetModuleFileNameW.
#pragma once

#include "zorutils/platform/win_types.h"

// The path of the program for null, else of the loaded library that holds the address `module`,
// with "\" between the names. The number of units without the terminator; `size` with
// ERROR_INSUFFICIENT_BUFFER if the path was cut; 0 on failure.
DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size);
