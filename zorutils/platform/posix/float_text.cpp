#include "zorutils/platform/posix/float_text.h"

#include <stdio.h>

#include <algorithm>
#include <cctype>
#include <cmath>

#include "zorutils/platform/decimal_digits.h"

namespace zor {
namespace platform {

namespace {

constexpr int default_precision = 6;

void strip_zeros(std::string& text)
{
    if (text.find('.') == std::string::npos)
        return;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
}

// The run-time spells what is no number as digits behind "1." and rounds them as if they were.
std::string special_digits(double value, int precision)
{
    std::string name = "#INF";
    if (std::isnan(value))
        name = std::signbit(value) ? "#IND" : "#QNAN";
    const auto places = static_cast<size_t>(precision);
    const bool up = places > 0 && places < name.size() && name[places] >= '5';
    name.resize(places, '0');
    if (up)
        ++name.back();
    return name.empty() ? "1" : "1." + name;
}

std::string exponent_text(int exponent)
{
    char text[16];
    snprintf(text, sizeof text, "e%c%03d", exponent < 0 ? '-' : '+', std::abs(exponent));
    return text;
}

std::string plain(double value, int precision, bool alternate)
{
    std::string text = std::isfinite(value) ? fixed_text(std::fabs(value), precision)
                                            : special_digits(value, precision);
    if (precision == 0 && alternate)
        text += '.';
    return text;
}

std::string scientific(double value, int precision, bool alternate, bool strip)
{
    std::string text;
    int exponent = 0;
    if (std::isfinite(value)) {
        ScientificDigits digits = scientific_digits(value, precision);
        exponent = digits.exponent;
        text = digits.digits.substr(0, 1);
        if (precision > 0 || alternate)
            text += '.' + digits.digits.substr(1);
    } else {
        text = special_digits(value, precision);
    }
    if (strip)
        strip_zeros(text);
    return text + exponent_text(exponent);
}

std::string general(double value, int precision, bool alternate)
{
    if (!std::isfinite(value)) {
        std::string text =
            special_digits(value, precision == 0 ? default_precision - 1 : precision - 1);
        strip_zeros(text);
        return text;
    }
    precision = std::max(precision, 1);
    const int exponent = scientific_digits(value, precision - 1).exponent;
    if (exponent < -4 || exponent >= precision)
        return scientific(value, precision - 1, alternate, !alternate);
    std::string text = plain(value, precision - 1 - exponent, alternate);
    if (!alternate)
        strip_zeros(text);
    return text;
}

std::string hexadecimal(double value, int precision)
{
    char text[1200];
    const int written = snprintf(text, sizeof text, "%.*a",
                                 precision < 0 ? 13 : std::min(precision, 1000), std::fabs(value));
    std::string result(text, static_cast<size_t>(written));
    // The point of the process' locale is not ours.
    std::replace(result.begin(), result.end(), ',', '.');
    return result;
}

} // namespace

std::string float_text(double value, char conversion, int precision, bool alternate)
{
    const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(conversion)));
    const int places = precision < 0 ? default_precision : precision;
    std::string text;
    switch (lower) {
    case 'e':
        text = scientific(value, places, alternate, false);
        break;
    case 'g':
        text = general(value, places, alternate);
        break;
    case 'a':
        text = hexadecimal(value, precision);
        break;
    default:
        text = plain(value, places, alternate);
    }
    if (conversion != lower && std::isfinite(value))
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

} // namespace platform
} // namespace zor
