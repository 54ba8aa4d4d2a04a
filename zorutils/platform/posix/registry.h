// zorutils/platform/posix/registry.h: reads of the registry.
//
// The registry is the text file, in the registry editor's export form, that ZOR_REGISTRY names in
// the environment; it is read again when it changed, and an open key keeps what it showed. The
// calls return a Win32 error and leave the last error alone: ERROR_FILE_NOT_FOUND without a file
// and for what is not in it, ERROR_BADDB for a file that is broken anywhere. Any thread.
#pragma once

#include "zorutils/platform/win_types.h"

#define ZOR_REGISTRY_ROOT(number)                                                                  \
    (reinterpret_cast<HKEY>(static_cast<intptr_t>(static_cast<LONG>(0x80000000u + (number)))))
#define HKEY_CLASSES_ROOT ZOR_REGISTRY_ROOT(0)
#define HKEY_CURRENT_USER ZOR_REGISTRY_ROOT(1)
#define HKEY_LOCAL_MACHINE ZOR_REGISTRY_ROOT(2)
#define HKEY_USERS ZOR_REGISTRY_ROOT(3)
#define HKEY_CURRENT_CONFIG ZOR_REGISTRY_ROOT(5)
#define KEY_QUERY_VALUE 0x0001
#define KEY_READ 0x20019
#define REG_NONE 0
#define REG_SZ 1
#define REG_EXPAND_SZ 2
#define REG_BINARY 3
#define REG_DWORD 4
#define REG_MULTI_SZ 7
#define REG_QWORD 11

// Every key may be read, whatever `access` is. Null and an empty path open the key itself.
LONG RegOpenKeyExW(HKEY key, LPCWSTR path, DWORD options, DWORD access, HKEY* opened);
LONG RegCloseKey(HKEY key);

// The name of the value or key at `index`. *size is in units, with room for the terminator before
// and without it after; ERROR_MORE_DATA if the name does not fit, ERROR_NO_MORE_ITEMS behind the
// last. The other arguments are null.
LONG RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD size, LPDWORD reserved, LPDWORD type,
                   BYTE* data, LPDWORD data_size);
LONG RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD size, LPDWORD reserved, LPWSTR cls,
                   LPDWORD class_size, FILETIME* written);

// A value's type and bytes; null and an empty name are the default value. *size is the room in
// `data` before, and the value's size after, with ERROR_MORE_DATA if that is more; `data` may be
// null to ask the size.
LONG RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, BYTE* data,
                      LPDWORD size);
