// zorutils/formats/bignum_internal.h: digits and sign of a big number.
#pragma once

#include "zorutils/formats/bignum_t.h"

// Digits above `top` read as 0; index N lies in the sign.
template <int N>
unsigned char digit_of(const bignum_t<N>& number, int index)
{
    if (index > number.top)
        return 0;
    return index < N ? number.digits[index] : number.sign;
}

template <int N>
void set_digit(bignum_t<N>& number, int index, unsigned char value)
{
    (index < N ? number.digits[index] : number.sign) = value;
}

template <int N>
void set_negative(bignum_t<N>& number, bool negative)
{
    number.sign = negative ? 255 : 1;
}

// Drops leading zeros; zero is positive.
template <int N>
void normalise(bignum_t<N>& number)
{
    while (number.top > 0 && digit_of(number, number.top) == 0)
        --number.top;
    if (number.top == 0 && digit_of(number, 0) == 0)
        number.sign = 1;
}
