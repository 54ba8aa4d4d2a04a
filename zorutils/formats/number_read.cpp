// Text to numbers, and what may become one.
#include <cmath>

#include "zorutils/formats/number_text.h"
#include "zorutils/formats/number_text_internal.h"
#include "zorutils/platform/crt.h"

namespace zor_formats {

namespace {

// Halves away from zero; NaN stays NaN.
double round_away(double value)
{
    const double rounded = std::floor(std::fabs(value) + 0.5);
    return value < 0.0 ? -rounded : rounded;
}

template <class Value>
bool scan(const WCHAR* text, const WCHAR* format, Value& out)
{
    if (text != nullptr && text[0] != 0 && swscanf(text, format, &out) == 1)
        return true;
    out = 0;
    return false;
}

int skip_blanks(const WCHAR* text)
{
    int at = 0;
    while (text[at] == ' ' || text[at] == '\t')
        ++at;
    return at;
}

bool stands_at(const WCHAR* text, const CZorStringT<WCHAR>& sign)
{
    return wcsncmp(text, sign.c_str(), sign.length()) == 0;
}

} // namespace

bool StringToDouble(const CZorStringT<WCHAR>& text, double& out)
{
    CZorStringT<WCHAR> copy = text;
    // The first alone: "1,234.5" is 1.234, on purpose.
    const int comma = copy.Find(',');
    if (comma >= 0)
        copy.SetAt(comma, '.');
    if (!scan(copy.c_str(), ZOR_W("%lf"), out))
        return false;
    constexpr double twelve_decimals = 1000000000000.0;
    if (out != 0.0)
        out = round_away(out * twelve_decimals) / twelve_decimals;
    return true;
}

bool StringToInt(const WCHAR* text, int& out)
{
    return scan(text, ZOR_W("%d"), out);
}

bool StringToLong(const WCHAR* text, LONG& out)
{
    return scan(text, ZOR_W("%ld"), out);
}

bool StringToShort(const WCHAR* text, short& out)
{
    return scan(text, ZOR_W("%hd"), out);
}

bool StringToUint(const WCHAR* text, unsigned int& out)
{
    return scan(text, ZOR_W("%u"), out);
}

bool StringToInt64(const WCHAR* text, INT64& out)
{
    return scan(text, ZOR_W("%I64d"), out);
}

double text_to_double(const CZorStringT<WCHAR>& text, const CZorStringT<WCHAR>& decimalSign)
{
    CZorStringT<WCHAR> copy = text;
    for (int i = 0; i < copy.GetLength(); ++i) {
        const bool matches = stands_at(copy.c_str() + i, decimalSign);
        if (!matches && copy[i] != '.' && copy[i] != ',')
            continue;
        copy.Delete(i, matches ? decimalSign.GetLength() : 1);
        copy.Insert(i, WCHAR('.'));
    }
    WCHAR* end = nullptr;
    return wcstod(copy.c_str(), &end);
}

double LocalTextToDouble(const CZorStringT<WCHAR>& text)
{
    return text_to_double(text, DecimalSignString());
}

int TextToIntOrZero(const WCHAR* text)
{
    return text[0] == 0 ? 0 : _wtoi(text);
}

bool is_double_text(const CZorStringT<WCHAR>& text, bool allowNegative, bool allowExponent,
                    const CZorStringT<WCHAR>& decimalSign)
{
    // `count`: characters since the start or since the exponent, in front of which a sign may
    // stand.
    int count = 0, points = 0, exponents = 0;
    for (int i = skip_blanks(text.c_str()); i < text.GetLength(); ++i) {
        const WCHAR c = text[i];
        const bool matches = stands_at(text.c_str() + i, decimalSign);
        if (matches || c == '.' || c == ',') {
            if (++points > 1 || exponents != 0)
                return false;
            if (matches)
                i += decimalSign.GetLength() - 1;
        } else if (c == '-' || c == '+') {
            if (count > 0 || (c == '-' && exponents == 0 && !allowNegative))
                return false;
        } else if (c == 'e' || c == 'E') {
            if (exponents > 0 || !allowExponent)
                return false;
            ++exponents;
            count = 0;
            continue;
        } else if (iswdigit(c) == 0 && c != ' ' && c != '\t') {
            return false;
        }
        ++count;
    }
    return true;
}

bool is_str_double(const CZorStringT<WCHAR>& text, bool allowNegative, bool allowExponent)
{
    return is_double_text(text, allowNegative, allowExponent, DecimalSignString());
}

bool is_str_notempty_double(const CZorStringT<WCHAR>& text, bool allowNegative)
{
    if (!is_str_double(text, allowNegative, true))
        return false;
    for (int i = 0; i < text.GetLength(); ++i)
        if (iswdigit(text[i]) != 0)
            return true;
    return false;
}

bool is_str_int(const WCHAR* text, bool allowNegative)
{
    if (text == nullptr)
        return false;
    const WCHAR* const first = text + skip_blanks(text);
    for (const WCHAR* at = first; *at != 0; ++at) {
        const bool sign = *at == '-' && at == first && allowNegative;
        if (!sign && iswdigit(*at) == 0)
            return false;
    }
    return true;
}

} // namespace zor_formats
