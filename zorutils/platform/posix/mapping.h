// zorutils/platform/posix/mapping.h: files mapped into memory.
//
// Only whole files, for reading. Threads: any.
#pragma once

#include "zorutils/platform/win_types.h"

#define PAGE_READONLY 0x02
#define FILE_MAP_READ 0x0004

struct SECURITY_ATTRIBUTES;

// A mapping of an open file, which must not be closed in between; both sizes must be 0. Null on
// failure: ERROR_FILE_INVALID for an empty file, ERROR_INVALID_PARAMETER for other protections.
HANDLE CreateFileMappingW(HANDLE file, SECURITY_ATTRIBUTES* security, DWORD protection,
                          DWORD size_high, DWORD size_low, LPCWSTR name);

// The whole file in memory; null on failure. The view outlives the mapping's handle.
void* MapViewOfFile(HANDLE mapping, DWORD access, DWORD offset_high, DWORD offset_low,
                    SIZE_T count);

// False with ERROR_INVALID_ADDRESS for what is no view.
BOOL UnmapViewOfFile(const void* view);
