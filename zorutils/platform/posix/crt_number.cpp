#include "zorutils/platform/posix/crt_number.h"

#include <locale.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

#include "zorutils/platform/decimal_digits.h"
#include "zorutils/platform/posix/crt_ctype.h"

namespace {

// The C locale as an object: the process' own locale may have a decimal comma.
locale_t c_locale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

// Where the decimal digits of the scripts begin that the run-time reads.
constexpr unsigned short zeros[] = {'0',   0x660, 0x6F0,  0x966,  0x9E6,  0xA66,
                                    0xAE6, 0xB66, 0xC66,  0xCE6,  0xD66,  0xE50,
                                    0xED0, 0xF20, 0x1040, 0x17E0, 0x1810, 0xFF10};

// -1 for what is no digit.
int digit_value(WCHAR unit)
{
    const auto* const above = std::upper_bound(std::begin(zeros), std::end(zeros), unit);
    if (above == std::begin(zeros))
        return -1;
    const int value = unit - *std::prev(above);
    return value <= 9 ? value : -1;
}

} // namespace

char* _fcvt(double value, int count, int* point, int* sign)
{
    thread_local std::string text;
    zor::platform::DecimalDigits digits = zor::platform::fixed_digits(value, std::max(count, 0));
    *sign = value < 0 ? 1 : 0;
    *point = digits.point;
    text = std::move(digits.digits);
    const size_t zeros_in_front = std::min(text.find_first_not_of('0'), text.size());
    if (digits.point == 0 && zeros_in_front != text.size()) {
        text.erase(0, zeros_in_front);
        *point = -static_cast<int>(zeros_in_front);
    }
    return text.data();
}

double _nextafter(double from, double towards)
{
    return nextafter(from, towards);
}

WCHAR* _itow(int value, WCHAR* buffer, int base)
{
    if (base != 10) {
        buffer[0] = 0;
        return buffer;
    }
    const std::string text = std::to_string(value);
    *std::copy(text.begin(), text.end(), buffer) = 0;
    return buffer;
}

int _wtoi(const WCHAR* text)
{
    while (iswspace(*text))
        ++text;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;
    INT64 value = 0;
    for (int digit; (digit = digit_value(*text)) >= 0; ++text)
        value = std::min<INT64>(value * 10 + digit, INT64{1} << 32);
    value = std::clamp<INT64>(negative ? -value : value, -2147483647 - 1, 2147483647);
    return static_cast<int>(value);
}

double wcstod(const WCHAR* text, WCHAR** end)
{
    // The characters that a number can have, as bytes; none is above 0x7F.
    const auto is_number_character = [](WCHAR unit) {
        return (unit >= '0' && unit <= '9') || ((unit | 0x20) >= 'a' && (unit | 0x20) <= 'z') ||
               unit == '+' || unit == '-' || unit == '.' || unit == '(' || unit == ')' ||
               unit == '_';
    };
    const WCHAR* start = text;
    while (*start == ' ' || (*start >= 0x09 && *start <= 0x0D))
        ++start;
    const WCHAR* stop = start;
    while (is_number_character(*stop))
        ++stop;
    const std::string bytes(start, stop);
    char* bytes_end = nullptr;
    const double value = strtod_l(bytes.c_str(), &bytes_end, c_locale());
    const auto used = bytes_end - bytes.c_str();
    if (end != nullptr)
        *end = const_cast<WCHAR*>(used == 0 ? text : start + used);
    return value;
}
