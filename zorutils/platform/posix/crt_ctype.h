// zorutils/platform/posix/crt_ctype.h: character classes and case of 16-bit units.
//
// The answers are those of the Windows run-time in its C locale, whatever locale the process has
// set: classes know all of the basic plane, case knows ASCII alone. Any thread.
#pragma once

// First, so that the standard library takes its own functions of these names alone into std.
#include <cwchar>
#include <cwctype>

#include <ctype.h>

#include "zorutils/platform/win_types.h"

int iswspace(WCHAR unit);
int iswalpha(WCHAR unit);
int iswdigit(WCHAR unit);
WCHAR towupper(WCHAR unit);
WCHAR towlower(WCHAR unit);
