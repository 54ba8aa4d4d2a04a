// zorutils/formats/bignum_t.h: a signed decimal integer of a fixed number of digits.
//
//     bignum_t<255> number, step;
//     number = ZOR_W("99999999999999999999");
//     step = 1;
//     number += step;
//     WCHAR text[257];
//     unsigned int size = 257;
//     if (!number.isNaN() && number.cast2s(text, size)) // "100000000000000000000"
//
// Every failure makes a NaN, and NaN travels through every operation: test isNaN at the end. There
// is no heap, no exception and no message. Multiplication and division repeat full-width additions
// and subtractions, which suits short numbers.
//
// Only bignum_t<255> exists in the library.
//
// Capacity: a text of up to 255 digits can be assigned. A sum may have 256 digits: the highest one,
// always 0 or 1, then lies in `sign`, in place of the sign, on purpose. So a sum whose top reaches
// index 255 is positive whatever its operands were, and whether or not that digit is 0; changing
// the sign of a number of 256 digits destroys its highest digit.
//
// Threads: one object must not be used by two threads at once, not even for reading.
#pragma once

#include <type_traits>

#include "zorutils/core/zor_api.h"

template <int N>
struct ZOR_API bignum_t
{
    unsigned char digits[N]; // values 0 to 9, the least significant first
    unsigned char sign;      // 255 for negative; 1, or a 0 left by a sum, for positive
    short top;               // the index of the highest digit; below 0 is NaN

    // NaN, until something is assigned.
    bignum_t() { init(); }
    bignum_t(const bignum_t&) = default;

    // What the constructors do, for storage that was made without them.
    void constructor() { init(); }
    void constructor(const bignum_t& source) { *this = source; }
    void init();

    bignum_t& operator=(const bignum_t&) = default;

    // 1 to N characters: signs, of which the last counts, then at least one decimal digit; nothing
    // else. Any other text, and null, gives NaN.
    bignum_t& operator=(const char* text);
    bignum_t& operator=(const WCHAR* text);

    // T: char, short, int, long, long long, and their unsigned forms. The lowest value of a signed
    // type gives NaN, on purpose.
    template <class T>
    std::enable_if_t<std::is_integral_v<T>, bignum_t&> operator=(const T& value);

    bool isNaN() const { return top < 0; }
    bool isNegative() const { return !isNaN() && sign == 255; }
    // All digits are 0. False for NaN.
    bool isZero() const;
    void setNaN() { top = -1; }

    // -1, 0 or 1. Two NaNs are equal, and NaN is below every number.
    int compare(const bignum_t& other) const;
    bool operator==(const bignum_t& other) const { return compare(other) == 0; }
    bool operator<(const bignum_t& other) const { return compare(other) < 0; }

    bignum_t& operator+=(const bignum_t& other);
    bignum_t& operator-=(const bignum_t& other);
    bignum_t& operator*=(const bignum_t& other);
    // Truncates toward zero. A zero divisor gives NaN.
    bignum_t& operator/=(const bignum_t& other);
    bignum_t operator-() const;
    bignum_t& operator++();
    bignum_t operator++(int);
    bignum_t& operator--();
    bignum_t operator--(int);

    // False for NaN and for a value outside T, with `value` untouched; T as in assignment. The
    // range is tested in double, so the limits of the 64-bit types are only as sharp as a double.
    template <class T>
    bool cast2int(T& value) const;

    // Decimal text, with "-" in front of a negative number. C: char or WCHAR. `size` is the
    // capacity of `buffer` in characters, terminator included, and is not changed. NaN, or a size
    // of 1, gives the empty text and true. False for a null buffer, a size of 0, and a number that
    // does not fit; a buffer of 2 characters or more is then empty, except that one of 2 is left as
    // it was when the number is negative.
    template <class C>
    bool cast2s(C* buffer, unsigned int& size) const;

    // A floating-point NaN for NaN. Digits whose place is above 1e307 are left out.
    operator double() const;
};

template <int N>
ZOR_API bignum_t<N> operator+(const bignum_t<N>& a, const bignum_t<N>& b);
template <int N>
ZOR_API bignum_t<N> operator-(const bignum_t<N>& a, const bignum_t<N>& b);
template <int N>
ZOR_API bignum_t<N> operator*(const bignum_t<N>& a, const bignum_t<N>& b);
template <int N>
ZOR_API bignum_t<N> operator/(const bignum_t<N>& a, const bignum_t<N>& b);
