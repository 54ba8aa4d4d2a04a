// zorutils/platform/posix/crt_time.h: 64-bit time calls and wcsftime, with the Windows run-time's
// rules.
//
// Times are seconds since 1970 UTC, from 0 to 32535244799 (in 3001). Local time is by the zone that
// the C library has. Any thread may call.
#pragma once

#include "zorutils/platform/win_types.h"

#include <stddef.h>
#include <time.h>

// The current time, also stored at `out` if that isn't null.
INT64 _time64(INT64* out);

// Both return 0, or EINVAL, with errno set and every field of `out` -1, for a time out of range or
// null pointers.
int _gmtime64_s(tm* out, const INT64* time);
int _localtime64_s(tm* out, const INT64* time);

// The time of local fields, which may be out of their ranges; all of them are set anew. tm_isdst
// says how they are meant: positive for summer time, 0 for standard time, negative to find out.
// Then a time that the clock goes through twice is in standard time, and one that it leaps over
// counts as summer time, so it comes out an hour earlier. -1 with EINVAL in errno and the fields
// unchanged for years outside 1970 to 3000 and results out of range.
INT64 _mktime64(tm* fields);

// Writes `fields` by `format` with the names of the "C" locale. Conversions: a A b B c d H I j m M
// p S U w W x X y Y z Z and %, also with "#" (no leading zeros; long forms of c and x); z and Z are
// both the zone's name. Returns the length without the zero unit. 0 and an empty text, with errno,
// if the text doesn't fit in `size` (ERANGE), or for another conversion or a field out of its range
// (EINVAL).
size_t wcsftime(WCHAR* out, size_t size, const WCHAR* format, const tm* fields);
