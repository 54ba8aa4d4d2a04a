// State, comparison and arithmetic of the big number.
#include "zorutils/formats/bignum_internal.h"

#include <stddef.h>

#include <algorithm>

namespace {

template <int N>
int compare_magnitudes(const bignum_t<N>& a, const bignum_t<N>& b)
{
    for (int i = std::max(a.top, b.top); i >= 0; --i)
        if (digit_of(a, i) != digit_of(b, i))
            return digit_of(a, i) < digit_of(b, i) ? -1 : 1;
    return 0;
}

template <int N>
bignum_t<N> add_magnitudes(const bignum_t<N>& a, const bignum_t<N>& b, bool negative)
{
    bignum_t<N> sum;
    const int top = std::max(a.top, b.top) + 1;
    if (top > N)
        return sum;
    set_negative(sum, negative);
    sum.top = static_cast<short>(top);
    int carry = 0;
    for (int i = 0; i <= top; ++i) {
        const int digit = digit_of(a, i) + digit_of(b, i) + carry;
        carry = digit / 10;
        // At index N this replaces the sign, on purpose.
        set_digit(sum, i, static_cast<unsigned char>(digit % 10));
    }
    normalise(sum);
    return sum;
}

// The sign of the result is that of |a| - |b|.
template <int N>
bignum_t<N> subtract_magnitudes(const bignum_t<N>& a, const bignum_t<N>& b)
{
    const bool swapped = compare_magnitudes(a, b) < 0;
    const bignum_t<N>& larger = swapped ? b : a;
    const bignum_t<N>& smaller = swapped ? a : b;
    bignum_t<N> difference;
    set_negative(difference, swapped);
    difference.top = larger.top;
    int borrow = 0;
    for (int i = 0; i <= difference.top; ++i) {
        int digit = digit_of(larger, i) - digit_of(smaller, i) - borrow;
        borrow = digit < 0 ? 1 : 0;
        digit += borrow * 10;
        set_digit(difference, i, static_cast<unsigned char>(digit));
    }
    normalise(difference);
    return difference;
}

// Times ten to the power `places`.
template <int N>
void shift_up(bignum_t<N>& number, int places)
{
    if (places == 0 || number.isNaN() || number.isZero())
        return;
    const int new_top = number.top + places;
    if (new_top > N) {
        number.setNaN();
        return;
    }
    for (int i = new_top; i >= places; --i)
        set_digit(number, i, digit_of(number, i - places));
    for (int i = 0; i < places; ++i)
        set_digit(number, i, 0);
    number.top = static_cast<short>(new_top);
}

} // namespace

// --- State.

template <int N>
void bignum_t<N>::init()
{
    std::fill_n(digits, N, static_cast<unsigned char>(0));
    sign = 1;
    top = -1;
}

template <int N>
bool bignum_t<N>::isZero() const
{
    if (isNaN())
        return false;
    for (int i = 0; i <= top; ++i)
        if (digit_of(*this, i) != 0)
            return false;
    return true;
}

// --- Comparison.

template <int N>
int bignum_t<N>::compare(const bignum_t& other) const
{
    if (this == &other)
        return 0;
    if (isNaN() || other.isNaN())
        return (isNaN() ? 0 : 1) - (other.isNaN() ? 0 : 1);
    if (isNegative() != other.isNegative())
        return isNegative() ? -1 : 1;
    const int order = compare_magnitudes(*this, other);
    return isNegative() ? -order : order;
}

// --- Addition and subtraction.

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
        set_negative(negated, !isNegative());
        normalise(negated);
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
            for (int n = digit_of(other, i); n > 0 && !product.isNaN(); --n)
                product = add_magnitudes(product, shifted, false);
            shift_up(shifted, 1);
            if (shifted.isNaN())
                product.setNaN();
        }
    }
    if (!product.isNaN()) {
        set_negative(product, isNegative() != other.isNegative());
        normalise(product);
    }
    return *this = product;
}

template <int N>
bignum_t<N>& bignum_t<N>::operator/=(const bignum_t& other)
{
    bignum_t quotient;
    if (isNaN() || other.isNaN() || other.isZero())
        return *this = quotient;
    set_negative(quotient, isNegative() != other.isNegative());
    quotient.top = top;
    bignum_t remainder;
    remainder = 0;
    for (int i = top; i >= 0; --i) {
        shift_up(remainder, 1);
        if (remainder.isNaN())
            return *this = remainder;
        set_digit(remainder, 0, digit_of(*this, i));
        unsigned char times = 0;
        for (; compare_magnitudes(remainder, other) >= 0; ++times)
            remainder = subtract_magnitudes(remainder, other);
        set_digit(quotient, i, times);
    }
    normalise(quotient);
    return *this = quotient;
}

// --- The one instantiation.

template struct bignum_t<255>;

template ZOR_API bignum_t<255> operator+(const bignum_t<255>&, const bignum_t<255>&);
template ZOR_API bignum_t<255> operator-(const bignum_t<255>&, const bignum_t<255>&);
template ZOR_API bignum_t<255> operator*(const bignum_t<255>&, const bignum_t<255>&);
template ZOR_API bignum_t<255> operator/(const bignum_t<255>&, const bignum_t<255>&);
