// State, comparison and arithmetic of the big number.
#include "zorutils/formats/bignum_t.h"

#include <stddef.h>

#include <algorithm>

// --- State.

template <int N>
void bignum_t<N>::init()
{
    std::fill_n(digits, N, static_cast<unsigned char>(0));
    sign = 1;
    top = -1;
}

// Digits above `top` read as 0; index N lies in the sign.
template <int N>
unsigned char bignum_t<N>::digit(int index) const
{
    if (index > top)
        return 0;
    return index < N ? digits[index] : sign;
}

template <int N>
void bignum_t<N>::set_digit(int index, unsigned char value)
{
    (index < N ? digits[index] : sign) = value;
}

template <int N>
void bignum_t<N>::normalise()
{
    while (top > 0 && digit(top) == 0)
        --top;
    if (top == 0 && digit(0) == 0)
        sign = 1;
}

template <int N>
bool bignum_t<N>::isZero() const
{
    if (isNaN())
        return false;
    for (int i = 0; i <= top; ++i)
        if (digit(i) != 0)
            return false;
    return true;
}

// --- Comparison.

template <int N>
int bignum_t<N>::compare_magnitude(const bignum_t& other) const
{
    for (int i = std::max(top, other.top); i >= 0; --i)
        if (digit(i) != other.digit(i))
            return digit(i) < other.digit(i) ? -1 : 1;
    return 0;
}

template <int N>
int bignum_t<N>::compare(const bignum_t& other) const
{
    if (this == &other)
        return 0;
    if (isNaN() || other.isNaN())
        return (isNaN() ? 0 : 1) - (other.isNaN() ? 0 : 1);
    if (isNegative() != other.isNegative())
        return isNegative() ? -1 : 1;
    const int order = compare_magnitude(other);
    return isNegative() ? -order : order;
}

// --- Addition and subtraction.

template <int N>
bignum_t<N> bignum_t<N>::add_magnitudes(const bignum_t& a, const bignum_t& b, bool negative)
{
    bignum_t sum;
    const int top = std::max(a.top, b.top) + 1;
    if (top > N)
        return sum;
    sum.set_negative(negative);
    sum.top = static_cast<short>(top);
    int carry = 0;
    for (int i = 0; i <= top; ++i) {
        const int digit = a.digit(i) + b.digit(i) + carry;
        carry = digit / 10;
        // At index N this replaces the sign, on purpose.
        sum.set_digit(i, static_cast<unsigned char>(digit % 10));
    }
    sum.normalise();
    return sum;
}

// The sign of the result is that of |a| - |b|.
template <int N>
bignum_t<N> bignum_t<N>::subtract_magnitudes(const bignum_t& a, const bignum_t& b)
{
    const bool swapped = a.compare_magnitude(b) < 0;
    const bignum_t& larger = swapped ? b : a;
    const bignum_t& smaller = swapped ? a : b;
    bignum_t difference;
    difference.set_negative(swapped);
    difference.top = larger.top;
    int borrow = 0;
    for (int i = 0; i <= difference.top; ++i) {
        int digit = larger.digit(i) - smaller.digit(i) - borrow;
        borrow = digit < 0 ? 1 : 0;
        digit += borrow * 10;
        difference.set_digit(i, static_cast<unsigned char>(digit));
    }
    difference.normalise();
    return difference;
}

template <int N>
bignum_t<N> operator+(const bignum_t<N>& a, const bignum_t<N>& b)
{
    bignum_t<N> sum(a);
    return sum += b;
}

template <int N>
bignum_t<N> operator-(const bignum_t<N>& a, const bignum_t<N>& b)
{
    bignum_t<N> difference(a);
    return difference -= b;
}

template <int N>
bignum_t<N>& bignum_t<N>::operator+=(const bignum_t& other)
{
    if (isNaN() || other.isNaN())
        setNaN();
    else if (isNegative() == other.isNegative())
        *this = add_magnitudes(*this, other, isNegative());
    else if (isNegative())
        *this = subtract_magnitudes(other, *this);
    else
        *this = subtract_magnitudes(*this, other);
    return *this;
}

template <int N>
bignum_t<N>& bignum_t<N>::operator-=(const bignum_t& other)
{
    if (isNaN() || other.isNaN())
        setNaN();
    else if (isNegative() != other.isNegative())
        *this = add_magnitudes(*this, other, isNegative());
    else if (isNegative())
        *this = subtract_magnitudes(other, *this);
    else
        *this = subtract_magnitudes(*this, other);
    return *this;
}

template <int N>
bignum_t<N> bignum_t<N>::operator-() const
{
    bignum_t negated(*this);
    if (!negated.isNaN()) {
        negated.set_negative(!isNegative());
        negated.normalise();
    }
    return negated;
}

template <int N>
bignum_t<N>& bignum_t<N>::operator++()
{
    bignum_t one;
    one = 1;
    return *this += one;
}

template <int N>
bignum_t<N> bignum_t<N>::operator++(int)
{
    const bignum_t before(*this);
    ++*this;
    return before;
}

template <int N>
bignum_t<N>& bignum_t<N>::operator--()
{
    bignum_t one;
    one = 1;
    return *this -= one;
}

template <int N>
bignum_t<N> bignum_t<N>::operator--(int)
{
    const bignum_t before(*this);
    --*this;
    return before;
}

// --- Multiplication and division.

// Times ten to the power `places`.
template <int N>
void bignum_t<N>::shift_up(int places)
{
    if (places == 0 || isNaN() || isZero())
        return;
    const int new_top = top + places;
    if (new_top > N) {
        setNaN();
        return;
    }
    for (int i = new_top; i >= places; --i)
        set_digit(i, digit(i - places));
    for (int i = 0; i < places; ++i)
        set_digit(i, 0);
    top = static_cast<short>(new_top);
}

template <int N>
bignum_t<N> operator*(const bignum_t<N>& a, const bignum_t<N>& b)
{
    bignum_t<N> product(a);
    return product *= b;
}

template <int N>
bignum_t<N> operator/(const bignum_t<N>& a, const bignum_t<N>& b)
{
    bignum_t<N> quotient(a);
    return quotient /= b;
}

template <int N>
bignum_t<N>& bignum_t<N>::operator*=(const bignum_t& other)
{
    bignum_t product;
    if (!isNaN() && !other.isNaN()) {
        product = 0;
        bignum_t shifted(*this);
        for (int i = 0; i <= other.top && !product.isNaN(); ++i) {
            for (int n = other.digit(i); n > 0 && !product.isNaN(); --n)
                product = add_magnitudes(product, shifted, false);
            shifted.shift_up(1);
            if (shifted.isNaN())
                product.setNaN();
        }
    }
    if (!product.isNaN()) {
        product.set_negative(isNegative() != other.isNegative());
        product.normalise();
    }
    return *this = product;
}

template <int N>
bignum_t<N>& bignum_t<N>::operator/=(const bignum_t& other)
{
    bignum_t quotient;
    if (isNaN() || other.isNaN() || other.isZero())
        return *this = quotient;
    quotient.set_negative(isNegative() != other.isNegative());
    quotient.top = top;
    bignum_t remainder;
    remainder = 0;
    for (int i = top; i >= 0; --i) {
        remainder.shift_up(1);
        if (remainder.isNaN())
            return *this = remainder;
        remainder.set_digit(0, digit(i));
        unsigned char times = 0;
        for (; remainder.compare_magnitude(other) >= 0; ++times)
            remainder = subtract_magnitudes(remainder, other);
        quotient.set_digit(i, times);
    }
    quotient.normalise();
    return *this = quotient;
}

// --- The one instantiation.

template struct bignum_t<255>;

template ZOR_API bignum_t<255> operator+(const bignum_t<255>&, const bignum_t<255>&);
template ZOR_API bignum_t<255> operator-(const bignum_t<255>&, const bignum_t<255>&);
template ZOR_API bignum_t<255> operator*(const bignum_t<255>&, const bignum_t<255>&);
template ZOR_API bignum_t<255> operator/(const bignum_t<255>&, const bignum_t<255>&);
