// zorutils/platform/posix/message.h: FormatMessageW with positional inserts.
#pragma once

#include "zorutils/platform/win_types.h"

#include <stdarg.h>

#define FORMAT_MESSAGE_ALLOCATE_BUFFER 0x00000100
#define FORMAT_MESSAGE_FROM_STRING 0x00000400

// Formats the text `source` with the inserts in `arguments`, which are integers and pointers only:
//
//     %1 to %99   the argument of that number, a wide text
//     %1!5d!      the argument by a printf conversion without its percent sign (d i u o x X p c C s
//     S);
//                 "*" takes the width or precision from the argument in the insert's place
//     %n %r %t    CR LF, CR, tab;   %0 ends the text;   % before another unit is that unit
//
// A line end of any form in `source` becomes CR LF. `flags` is FORMAT_MESSAGE_FROM_STRING, alone
// for a buffer of `size` units at `buffer`, or with FORMAT_MESSAGE_ALLOCATE_BUFFER, where `buffer`
// is the address of a pointer that takes a text to be released by LocalFree. `message` and
// `language` are not used. Returns the number of units without the zero behind them.
//
// Returns 0, and null in the allocated pointer, with the last error:
//     ERROR_INVALID_PARAMETER    a lone percent sign at the end, a conversion without its second
//     "!",
//                                an insert with no arguments given, other flags
//     235, no work done          the text is empty
//     ERROR_INSUFFICIENT_BUFFER  the text doesn't fit; the buffer has its beginning
//     ERROR_NOT_ENOUGH_MEMORY
DWORD FormatMessageW(DWORD flags, LPCVOID source, DWORD message, DWORD language, LPWSTR buffer,
                     DWORD size, va_list* arguments);
