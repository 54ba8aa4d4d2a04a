// Numbers to text, rounding and signs.
#include "zorutils/formats/number_text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "zorutils/formats/number_text_internal.h"
#include "zorutils/platform/crt.h"
#include "zorutils/platform/decimal_digits.h"
#include "zorutils/platform/winapi.h"

namespace zor_formats {

namespace {

// The most characters that Format yields.
constexpr int longest_text = 131072;

CZorStringT<WCHAR> widened(const std::string& ascii)
{
    CZorStringT<WCHAR> wide;
    const int length = static_cast<int>(ascii.size());
    std::copy(ascii.begin(), ascii.end(), wide.GetBufferSetLength(length));
    return wide;
}

double power(double base, unsigned int exponent)
{
    double result = 1.0;
    for (; exponent != 0; exponent >>= 1, base *= base)
        if ((exponent & 1) != 0)
            result *= base;
    return result;
}

// The distance from zero, also of the lowest int.
unsigned int magnitude(int value)
{
    return value < 0 ? 0u - static_cast<unsigned int>(value) : static_cast<unsigned int>(value);
}

double decimal_scale(int prec)
{
    static const double exact[] = {1.0,      10.0,      100.0,      1000.0,      10000.0,
                                   100000.0, 1000000.0, 10000000.0, 100000000.0, 1000000000.0};
    if (prec >= 0 && prec <= 9)
        return exact[prec];
    const double scale = power(10.0, magnitude(prec));
    return prec < 0 ? 1.0 / scale : scale;
}

struct Digits
{
    CZorStringT<WCHAR> text; // neither sign nor point
    int point;               // where the point stands in it; below 0 for zeros in front
    bool negative;
};

Digits rounded_digits(double value, int prec)
{
    Digits digits;
    digits.negative = value < 0.0;
    const int places = std::clamp(prec, 0, longest_text);
    if (std::isfinite(value)) {
        const zor::platform::DecimalDigits exact = zor::platform::fixed_digits(value, places);
        digits.text = widened(exact.digits);
        digits.point = exact.point;
    } else {
        // The run-time's words for such values, such as "1.#INF", with their point taken out.
        digits.text = fixed_decimals(std::fabs(value), places);
        digits.text.Remove('.');
        digits.point = 1;
    }
    return digits;
}

// Drops zeros at the end, or so it was meant. Remove takes a character and not an index, so a text
// that ends in "0" normally stays as it is and the loop has no end. Kept on purpose.
void strip_zeros(CZorStringT<WCHAR>& text, const CZorStringT<WCHAR>& decimalSign)
{
    while (!text.IsEmpty() && text[text.GetLength() - 1] == '0')
        text.Remove(static_cast<WCHAR>(text.GetLength() - 1));
    const int sign_start = text.GetLength() - decimalSign.GetLength();
    if (sign_start >= 0 && text.Mid(sign_start).Compare(decimalSign) == 0)
        text.Remove(static_cast<WCHAR>(sign_start));
}

template <class Value>
CZorStringT<WCHAR> formatted(const WCHAR* format, Value value)
{
    CZorStringT<WCHAR> text;
    text.Format(format, value);
    return text;
}

CZorStringT<WCHAR> locale_sign(LCTYPE kind)
{
    constexpr int size = 5;
    WCHAR buffer[size] = {};
    GetLocaleInfoW(GetUserDefaultLCID(), kind, buffer, size);
    return buffer[0] == 0 ? ZOR_W(".") : buffer;
}

} // namespace

// --- Printing.

CZorStringT<WCHAR> fixed_decimals(double value, int prec)
{
    if (std::isfinite(value)) {
        const int places = std::min(prec, longest_text);
        return widened(zor::platform::fixed_text(value, places)).Left(longest_text);
    }
    CZorStringT<WCHAR> text;
    text.Format(ZOR_W("%.*lf"), prec, value);
    return text;
}

CZorStringT<WCHAR> DoubleToString(double value)
{
    CZorStringT<WCHAR> text = fixed_decimals(value, 12);
    int kept = text.GetLength();
    while (kept > 1 && text[kept - 1] == '0')
        --kept;
    if (kept > 1 && text[kept - 1] == '.')
        --kept;
    text = text.Left(kept);
    return text.Left(text.Find('.') >= 0 ? 15 : 14);
}

CZorStringT<WCHAR> DoubleToString(double value, int prec)
{
    if (prec < 0)
        return formatted(formatted(ZOR_W("%%.%dlf"), prec).c_str(), value);
    return fixed_decimals(prec >= 1 && prec <= 16 ? round_prec(value, prec) : value, prec);
}

CZorStringT<WCHAR> ConvertFloat(double value, int prec, bool strip)
{
    return ConvertFloatEx(value, prec, DecimalSignString(), strip);
}

CZorStringT<WCHAR> ConvertFloatEx(double value, int prec, const CZorStringT<WCHAR>& decimalSign,
                                  bool strip)
{
    Digits digits = rounded_digits(value, prec);
    CZorStringT<WCHAR>& text = digits.text;
    const bool all_zero = text.SpanIncluding(ZOR_W("0")).GetLength() == text.GetLength();
    for (; digits.point < 0; ++digits.point)
        text.Insert(0, WCHAR('0'));
    if (digits.point < text.GetLength()) {
        // A character again and not an index; the digits never exceed the places asked for.
        if (text.GetLength() - digits.point > prec)
            text.Remove(static_cast<WCHAR>(prec + digits.point));
        text.Insert(digits.point, decimalSign.c_str());
        if (strip)
            strip_zeros(text, decimalSign);
    }
    if (text.IsEmpty() || digits.point == 0)
        text.Insert(0, WCHAR('0'));
    if (digits.negative && !all_zero)
        text.Insert(0, WCHAR('-'));
    return text;
}

CZorStringT<WCHAR> IntToString(int value)
{
    return formatted(ZOR_W("%d"), value);
}

CZorStringT<WCHAR> UIntToString(unsigned int value)
{
    return formatted(ZOR_W("%u"), value);
}

CZorStringT<WCHAR> Int64ToString(INT64 value)
{
    return formatted(ZOR_W("%I64d"), value);
}

// --- Rounding.

double round_prec(double value, int prec)
{
    constexpr double largest = std::numeric_limits<double>::max();
    const double scale = decimal_scale(prec);
    if (value < 0.0)
        return _nextafter(std::ceil(value * scale - 0.5) / scale, -largest);
    if (value > 0.0)
        return _nextafter(std::floor(value * scale + 0.5) / scale, largest);
    return 0.0;
}

int truncate_to_int(double value)
{
    if (value > -2147483649.0 && value < 2147483648.0)
        return static_cast<int>(value);
    return std::numeric_limits<int>::min();
}

double FormatFloat(double value, int prec)
{
    double scale = 1.0;
    // An infinite scale stays what it is.
    for (int i = 0; i < prec && std::isfinite(scale); ++i)
        scale *= 10.0;
    const double whole = truncate_to_int(value);
    const double scaled = truncate_to_int((value - whole) * scale + 0.5);
    return scaled / scale + whole;
}

double RoundDouble(double value, int prec)
{
    const double tenths = power(0.1, magnitude(prec));
    const double half = (prec < 0 ? 1.0 / tenths : tenths) * 0.5;
    return value > 0.0 ? value + half : value - half;
}

// --- Signs.

CZorStringT<WCHAR> DecimalSignString()
{
    static const CZorStringT<WCHAR> sign = locale_sign(LOCALE_SDECIMAL);
    return sign;
}

CZorStringT<WCHAR> ThousandSignString()
{
    static const CZorStringT<WCHAR> sign = locale_sign(LOCALE_STHOUSAND);
    return sign;
}

CZorStringT<WCHAR> DegreeSignString()
{
    static const CZorStringT<WCHAR> sign(WCHAR(0xB0), 1);
    return sign;
}

CZorStringT<WCHAR> ReplaceCommasWithDecPt(const CZorStringT<WCHAR>& text)
{
    CZorStringT<WCHAR> replaced = text;
    replaced.Replace(WCHAR(','), WCHAR('.'));
    return replaced;
}

} // namespace zor_formats
