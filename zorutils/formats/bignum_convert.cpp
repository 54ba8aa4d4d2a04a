// Texts and machine integers into and out of the big number.
#include "zorutils/formats/bignum_internal.h"

#include <limits>

namespace {

// `number` holds nothing yet.
template <int N, class C>
bool read_text(bignum_t<N>& number, const C* text)
{
    int length = 0;
    while (length <= N && text[length] != 0)
        ++length;
    if (length > N)
        return false;
    int first = 0;
    for (; first < length && (text[first] == '+' || text[first] == '-'); ++first)
        set_negative(number, text[first] == '-');
    if (first == length)
        return false;
    for (int i = first; i < length; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return false;
        number.digits[length - 1 - i] = static_cast<unsigned char>(text[i] - '0');
    }
    number.top = static_cast<short>(length - 1 - first);
    normalise(number);
    return true;
}

template <int N, class C>
void assign_text(bignum_t<N>& number, const C* text)
{
    number.init();
    if (text == nullptr || !read_text(number, text))
        number.setNaN();
}

} // namespace

// --- Assignment.

template <int N>
bignum_t<N>& bignum_t<N>::operator=(const char* text)
{
    assign_text(*this, text);
    return *this;
}

template <int N>
bignum_t<N>& bignum_t<N>::operator=(const WCHAR* text)
{
    assign_text(*this, text);
    return *this;
}

template <int N>
template <class T>
std::enable_if_t<std::is_integral_v<T>, bignum_t<N>&> bignum_t<N>::operator=(const T& value)
{
    init();
    const bool negative = value < T(0);
    set_negative(*this, negative);
    // Negated in its own type, where the lowest value stays what it is: then no digit is made.
    typedef std::make_unsigned_t<T> U;
    const U bits = static_cast<U>(value);
    T magnitude = negative ? static_cast<T>(static_cast<U>(U(0) - bits)) : value;
    if (magnitude == 0)
        top = 0;
    for (; magnitude > 0; magnitude = static_cast<T>(magnitude / 10)) {
        ++top;
        digits[top] = static_cast<unsigned char>(magnitude % 10);
    }
    return *this;
}

// --- Conversion.

template <int N>
template <class T>
bool bignum_t<N>::cast2int(T& value) const
{
    if (isNaN())
        return false;
    const double lowest = static_cast<double>(std::numeric_limits<T>::min());
    const double highest = static_cast<double>(std::numeric_limits<T>::max());
    const double one = isNegative() ? -1.0 : 1.0;
    double sum = 0.0, scale = 1.0;
    UINT64 magnitude = 0;
    for (int i = 0; i <= top; ++i, scale *= 10.0) {
        const double term = digit_of(*this, i) * scale;
        const double with_digit = sum + term * one;
        if (scale > 1e307 || with_digit > highest || with_digit < lowest)
            return false;
        sum = with_digit;
        magnitude += static_cast<UINT64>(term);
    }
    value = static_cast<T>(isNegative() ? UINT64(0) - magnitude : magnitude);
    return true;
}

template <int N>
template <class C>
bool bignum_t<N>::cast2s(C* buffer, unsigned int& size) const
{
    if (buffer == nullptr || size == 0)
        return false;
    if (isNaN() || size < 2) {
        buffer[0] = 0;
        return true;
    }
    const unsigned int sign_length = isNegative() ? 1 : 0;
    if (isNegative() && size < 3)
        return false;
    const unsigned int count = static_cast<unsigned int>(top) + 1;
    bool fits = sign_length + count < size;
    for (unsigned int i = 0; fits && i < count; ++i) {
        const unsigned char value = digit_of(*this, static_cast<int>(i));
        fits = value <= 9;
        buffer[sign_length + count - 1 - i] = static_cast<C>('0' + value);
    }
    if (!fits) {
        buffer[0] = 0;
        return false;
    }
    if (isNegative())
        buffer[0] = '-';
    buffer[sign_length + count] = 0;
    return true;
}

template <int N>
bignum_t<N>::operator double() const
{
    if (isNaN())
        return std::numeric_limits<double>::quiet_NaN();
    double sum = 0.0, scale = 1.0;
    for (int i = 0; i <= top && scale <= 1e307; ++i, scale *= 10.0)
        sum += digit_of(*this, i) * scale;
    return isNegative() ? sum * -1.0 : sum;
}

// --- The one instantiation.

template struct bignum_t<255>;

#define ZOR_BIGNUM_INTEGER(T)                                                                      \
    template ZOR_API bignum_t<255>& bignum_t<255>::operator=<T>(const T&);                         \
    template ZOR_API bool bignum_t<255>::cast2int<T>(T&) const;

ZOR_BIGNUM_INTEGER(char)
ZOR_BIGNUM_INTEGER(unsigned char)
ZOR_BIGNUM_INTEGER(short)
ZOR_BIGNUM_INTEGER(unsigned short)
ZOR_BIGNUM_INTEGER(int)
ZOR_BIGNUM_INTEGER(unsigned int)
ZOR_BIGNUM_INTEGER(long)
ZOR_BIGNUM_INTEGER(unsigned long)
ZOR_BIGNUM_INTEGER(long long)
ZOR_BIGNUM_INTEGER(unsigned long long)

#undef ZOR_BIGNUM_INTEGER

template ZOR_API bool bignum_t<255>::cast2s(char*, unsigned int&) const;
template ZOR_API bool bignum_t<255>::cast2s(WCHAR*, unsigned int&) const;
