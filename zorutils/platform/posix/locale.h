// zorutils/platform/posix/locale.h: the signs of the user's locale.
//
// The user's locale is the one that the environment names for numbers (LC_ALL, LC_NUMERIC, LANG),
// whatever locale the process has set; one that is not installed counts as the C locale. Any
// thread.
#pragma once

#include "zorutils/platform/win_types.h"

#define LOCALE_USER_DEFAULT 0x0400
#define LOCALE_SDECIMAL 14
#define LOCALE_STHOUSAND 15

// LOCALE_USER_DEFAULT, the only locale that there is.
LCID GetUserDefaultLCID();

// The decimal or thousands sign, read anew at each call, with its terminator. Returns the units
// written, or needed if `size` is 0. Failures give 0 and a last error: ERROR_INSUFFICIENT_BUFFER
// when the text does not fit, ERROR_INVALID_FLAGS for another `type`, ERROR_INVALID_PARAMETER for
// another locale, a negative size or a null buffer with a size.
int GetLocaleInfoW(LCID locale, LCTYPE type, WCHAR* buffer, int size);
