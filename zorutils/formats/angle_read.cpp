// Text to angles.
#include <algorithm>
#include <climits>
#include <cmath>

#include "zorutils/formats/angle_text.h"
#include "zorutils/formats/number_text_internal.h"
#include "zorutils/platform/crt.h"

namespace zor_formats {

namespace {

constexpr WCHAR degree_sign = 0xB0;

bool is_ascii_digit(WCHAR c)
{
    return c >= '0' && c <= '9';
}

bool is_ascii_letter(WCHAR c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Moves `p` over at most `limit` digits, or over other characters. A letter ends either run.
void SkipRun(const WCHAR*& p, bool digits, int limit)
{
    for (int passed = 0; passed < limit; ++passed, ++p)
        if (*p == 0 || is_ascii_letter(*p) || is_ascii_digit(*p) != digits)
            return;
}

// The digits at `p`, which moves behind them.
CZorStringT<WCHAR> take_digits(const WCHAR*& p)
{
    const WCHAR* const start = p;
    SkipRun(p, true, INT_MAX);
    return CZorStringT<WCHAR>(start, static_cast<int>(p - start));
}

// At most two digits at `p`. One alone at the end of the text is the tens.
int take_two_digits(const WCHAR*& p, bool tens_at_end)
{
    constexpr int width = 2;
    const WCHAR* const start = p;
    SkipRun(p, true, width);
    const int value = TextToIntOrZero(CZorStringT<WCHAR>(start, static_cast<int>(p - start)));
    return p - start == 1 && *p == 0 && tens_at_end ? value * 10 : value;
}

double degrees_of(double deg, double min, double sec)
{
    return (sec / 60.0 + min) / 60.0 + deg;
}

// Reads at `p`, which moves to where reading stops.
double read_packed(const WCHAR*& p)
{
    double deg = TextToIntOrZero(take_digits(p));
    SkipRun(p, false, INT_MAX);
    int min = take_two_digits(p, true);
    const WCHAR* const behind_minutes = p;
    SkipRun(p, false, INT_MAX);
    int sec = take_two_digits(p, p == behind_minutes);
    min += sec / 60;
    sec %= 60;
    deg += min / 60;
    min %= 60;
    SkipRun(p, false, INT_MAX);
    CZorStringT<WCHAR> digits = take_digits(p);
    double fraction = 0.0;
    if (!digits.IsEmpty()) {
        digits.Insert(0, WCHAR('.'));
        fraction = LocalTextToDouble(digits);
    }
    return degrees_of(deg, min, sec + fraction);
}

// A whole number from 0 to 2147483647 at the start of the text.
bool begins_with_number(const WCHAR* text, int& number)
{
    unsigned int value = 0;
    if (swscanf(text, ZOR_W("%u"), &value) != 1 || value > static_cast<unsigned int>(INT_MAX))
        return false;
    number = static_cast<int>(value);
    return true;
}

// The number, with decimals, between `start` and `end`.
bool read_decimal(const CZorStringT<WCHAR>& text, int start, int end, double& value)
{
    int whole = 0;
    if (!begins_with_number(text.c_str() + start, whole))
        return false;
    value = LocalTextToDouble(text.Mid(start, end - start));
    return true;
}

struct Seconds
{
    int whole = 0;
    int fraction = 0; // its digits as a number, behind `leading_zeros` zeros
    int leading_zeros = 0;
};

bool read_seconds(const WCHAR* text, Seconds& seconds)
{
    // The separator is looked for in all the rest, also behind the sign, on purpose.
    const WCHAR* const separator = wcspbrk(text, ZOR_W(",."));
    if (separator != text && !begins_with_number(text, seconds.whole))
        return false;
    if (separator == nullptr)
        return true;
    const WCHAR* at = separator + 1;
    for (; *at == '0'; ++at)
        ++seconds.leading_zeros;
    if (*at == 0)
        seconds.leading_zeros = 0;
    return *at == 0 || *at == '"' || begins_with_number(at, seconds.fraction);
}

double fraction_of(const Seconds& seconds)
{
    double fraction = seconds.fraction;
    while (fraction >= 1.0)
        fraction /= 10.0;
    for (int i = 0; i < seconds.leading_zeros && fraction > 0.0; ++i)
        fraction /= 10.0;
    return fraction;
}

void carry_minutes(double& deg, double& min)
{
    // One degree at a time, so that a degree with decimals rounds in each sum; so many that this
    // would take long come at once.
    constexpr double most_minutes = 6e6;
    if (!std::isfinite(min) || min > most_minutes) {
        const double rest = std::isfinite(min) ? std::fmod(min, 60.0) : 0.0;
        deg += (min - rest) / 60.0;
        min = rest;
    }
    for (; min >= 60.0; min -= 60.0)
        deg += 1.0;
}

// `end` becomes the index behind the last sign.
bool read_marked(const CZorStringT<WCHAR>& text, double& degrees, int& end)
{
    const int deg_at = text.Find(degree_sign);
    const int min_at = text.Find('\'');
    const int sec_at = text.Find('"');
    double deg = 0.0, min = 0.0;
    Seconds seconds;
    if (deg_at > 0 && !read_decimal(text, 0, deg_at, deg))
        return false;
    if (min_at > 0) {
        const int start = deg_at + 1;
        if (min_at < start || (min_at > start && !read_decimal(text, start, min_at, min)))
            return false;
    }
    if (sec_at > 0) {
        const int start = (min_at >= 0 ? min_at : deg_at) + 1;
        if (sec_at < start || (sec_at > start && !read_seconds(text.c_str() + start, seconds)))
            return false;
    }
    min += seconds.whole / 60;
    carry_minutes(deg, min);
    degrees = degrees_of(deg, min, seconds.whole % 60 + fraction_of(seconds));
    end = std::max({deg_at, min_at, sec_at}) + 1;
    return true;
}

} // namespace

bool StringToDegree(const WCHAR* text, double& out, const WCHAR** rest)
{
    out = 0.0;
    if (text == nullptr)
        return false;
    const WCHAR* start = text;
    while (*start != 0 && iswdigit(*start) == 0 && *start != '-' && *start != '.')
        ++start;
    if (*start == 0)
        return false;
    const bool negative = *start == '-';
    if (negative)
        ++start;
    const WCHAR* stop = start;
    double degrees = 0.0;
    if (wcspbrk(start, ZOR_W("\u00B0'\"")) == nullptr) {
        degrees = read_packed(stop);
    } else {
        int end = 0;
        if (!read_marked(start, degrees, end))
            return false;
        stop = start + end;
    }
    out = negative ? -degrees : degrees;
    if (rest != nullptr)
        *rest = stop;
    return true;
}

bool is_str_degree(const CZorStringT<WCHAR>& text)
{
    double degrees = 0.0;
    return StringToDegree(text.c_str(), degrees, nullptr);
}

bool CheckDegreeSuffix(const WCHAR* text, const WCHAR* allowed, const WCHAR* flagged,
                       bool& isFlagged)
{
    isFlagged = false;
    const int length = text == nullptr ? 0 : static_cast<int>(wcslen(text));
    if (length <= 1)
        return true;
    int at = length - 1;
    while (iswspace(text[at]) != 0) {
        --at;
        if (at <= 1)
            return true;
    }
    if (iswalpha(text[at]) == 0)
        return true;
    if (allowed == nullptr || wcschr(allowed, text[at]) == nullptr)
        return false;
    isFlagged = flagged != nullptr && wcschr(flagged, text[at]) != nullptr;
    return true;
}

} // namespace zor_formats
