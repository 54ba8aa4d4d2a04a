// tests/formats/bignum_text.h: big numbers from and to ASCII in tests; "NaN" is a NaN.
#pragma once

#include <string>

#include "zorutils/formats/bignum_t.h"

typedef bignum_t<255> Big;

inline Big big(const char* text)
{
    Big number;
    number = text;
    return number;
}

inline std::string text_of(const Big& number)
{
    if (number.isNaN())
        return "NaN";
    char buffer[300];
    unsigned int size = sizeof buffer;
    return number.cast2s(buffer, size) ? buffer : "(refused)";
}
