// zorutils/platform/posix/crt_scan.h: the scanner on 16-bit units.
//
// Conversions: d i u x o, f e g, s c [ n and %%, with a width, "*", and the sizes h l ll I64 I32 L.
// %s, %c and %[ store units. l is 32 bits wide for whole numbers and a double for the others.
// Whole numbers are held to the range of 32 or 64 bits, then cut to the size. Any thread.
#pragma once

// First, so that the standard library takes its own functions of these names alone into std.
#include <cwchar>
#include <cwctype>

#include "zorutils/platform/win_types.h"

// The number of conversions stored; -1 if the text ends before the first.
int swscanf(const WCHAR* text, const WCHAR* format, ...);
