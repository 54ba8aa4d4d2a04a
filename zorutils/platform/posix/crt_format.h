// zorutils/platform/posix/crt_format.h: the formatters, with the Windows run-time's rules.
//
// %s and %c are of the function's own width, %S and %C of the other; h makes narrow, l and w wide.
// A byte and a unit of the same value stand for each other. l is 32 bits wide for numbers, I64 and
// ll 64 bits. The decimal point is always ".". %n takes its argument and writes nothing.
//
// The result is the length, and a terminator is written if there is room for it. A text that does
// not fit fills the buffer and gives -1; so does a unit that has no byte in a narrow text. Any
// thread.
#pragma once

#include <stdarg.h>

#include "zorutils/platform/win_types.h"

int _vsnprintf(char* buffer, size_t size, const char* format, va_list arguments);
int _vsnwprintf(WCHAR* buffer, size_t size, const WCHAR* format, va_list arguments);
int _snprintf(char* buffer, size_t size, const char* format, ...);
int _snwprintf(WCHAR* buffer, size_t size, const WCHAR* format, ...);
