// zorutils/platform/posix/sys_string.h: counted system strings, shared with the host.
//
// A BSTR points at its first unit; the byte count stands in the 32 bits in front of it, and a zero
// unit that isn't counted stands behind it. Null is a valid empty string. Made and released only by
// these calls, which are exported, since a text made by the library is released by its host.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"

// A copy of the text up to its zero unit. Null for null or when there is no memory.
ZOR_API BSTR SysAllocString(LPCWSTR text);

// A string of `length` units copied from `text`, zero units included. A null `text` leaves the
// units as they come, with the zero behind them. Null when there is no memory or `length` is too
// great to count in 32 bits of bytes.
ZOR_API BSTR SysAllocStringLen(LPCWSTR text, UINT length);

// Replaces *string by `length` units of `text`, which may lie in *string; a null `text` keeps what
// *string had. False when there is no memory, with *string unchanged.
ZOR_API BOOL SysReAllocStringLen(BSTR* string, LPCWSTR text, UINT length);

// Releases a string; null is fine.
ZOR_API void SysFreeString(BSTR string);

// Length in units and in bytes, 0 for null.
ZOR_API UINT SysStringLen(BSTR string);
ZOR_API UINT SysStringByteLen(BSTR string);
