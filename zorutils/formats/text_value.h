// zorutils/formats/text_value.h: which kind of value a text holds.
//
//     zor_formats::getTextValType(ZOR_W(" 12,5 "))    // ttvReal
//
// The shape alone counts, in no locale; an exponent is text.
#pragma once

#include "zorutils/core/zor_api.h"

// The numbers are part of the interface.
enum TTextValType
{
    ttvText = 0,     // anything else
    ttvInteger = 1,  // an optional minus and digits; the digits may be missing behind the minus
    ttvReal = 2,     // digits with a decimal point or comma
    ttvEmpty = 3,    // null, empty, or white space only
    ttvDate = 4,     // 2013-10-01, a day of the calendar but for leap years and short months
    ttvDateTime = 5, // 2013-10-01 08:29:35, up to 24:59:59
};

namespace zor_formats {

// White space around numbers does not matter; dates and times stand alone. "-" is an integer, on
// purpose; ".5", "5." and "-." are reals, "." is text. Any thread.
ZOR_API TTextValType getTextValType(const WCHAR* text);

} // namespace zor_formats
