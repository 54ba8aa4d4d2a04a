// zorutils/platform/posix/crt_number.h: numbers from and to text, with the Windows run-time's
// limits.
//
// No call looks at the process' locale: the decimal point is ".". Any thread.
#pragma once

// First, so that the standard library takes its own functions of these names alone into std.
#include <cwchar>
#include <cwctype>

#include <math.h>
#include <stdlib.h>

#include "zorutils/platform/win_types.h"

// The digits of the magnitude rounded to `count` places, halves away from zero, without leading
// zeros; *point is where the decimal point stands among them, negative for zeros in front. The text
// is the thread's and lives until its next call. The value is finite.
char* _fcvt(double value, int count, int* point, int* sign);

double _nextafter(double from, double towards);

// `base` is 10. The buffer holds 12 units at least. Returns it.
WCHAR* _itow(int value, WCHAR* buffer, int base);

// White space, a sign and decimal digits of any script; held to the range of int. 0 without digits.
int _wtoi(const WCHAR* text);

// The nearest double of the number that the text begins with behind ASCII white space; *end is
// where it ends, or the text if there is none. Infinity beyond the range.
double wcstod(const WCHAR* text, WCHAR** end);
