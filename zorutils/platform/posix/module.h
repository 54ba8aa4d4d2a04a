// zorutils/platform/posix/module.h: modules: their names, loading them, their functions.
//
// A module's handle is the address that it begins at; the null handle is the program. Any thread.
#pragma once

#include "zorutils/platform/win_types.h"

// The path of the program for null, else of the loaded library that holds the address `module`,
// with "\" between the names. The number of units without the terminator; `size` with
// ERROR_INSUFFICIENT_BUFFER if the path was cut; 0 on failure.
DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size);

// Loads a library with all that it needs, or counts it once more. A name without a folder is looked
// for beside the program, then where the system's loader looks; none is made up from an extension.
// Null, with ERROR_MOD_NOT_FOUND if it or one that it needs is missing, ERROR_PROC_NOT_FOUND if a
// function of those is, ERROR_OUTOFMEMORY, ERROR_ACCESS_DENIED, ERROR_BAD_EXE_FORMAT for a file
// that is none.
HMODULE LoadLibraryW(LPCWSTR name);

// Takes one count back; at the last the module goes, unless another needs it. False, with
// ERROR_MOD_NOT_FOUND, for what is no module.
BOOL FreeLibrary(HMODULE module);

// A function that the module itself exports, and not one of those that it needs. Null, with
// ERROR_PROC_NOT_FOUND, or ERROR_MOD_NOT_FOUND for what is no module.
FARPROC GetProcAddress(HMODULE module, LPCSTR name);
