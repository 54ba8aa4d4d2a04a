#include "zorutils/platform/decimal_digits.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace zor {
namespace platform {

namespace {

// Whether the value lies exactly between two texts of `precision` places: its product with
// 10^precision ends in one half, and so its product with 2^(precision + 1) is an odd whole number.
bool is_exact_half(double value, int precision)
{
    if (precision > 1100)
        return false; // no double has that many places
    const double scaled = std::ldexp(value, precision + 1);
    return std::fabs(scaled) < 9007199254740992.0 && std::fmod(std::fabs(scaled), 2.0) == 1.0;
}

std::string exact_text(double value, int precision)
{
    constexpr size_t longest_head = 1 + 309 + 1;
    std::string text(longest_head + static_cast<size_t>(precision), '\0');
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value,
                                      std::chars_format::fixed, precision);
    text.resize(static_cast<size_t>(result.ptr - text.data()));
    return text;
}

// Adds one unit of the last place to the magnitude of a decimal text.
void count_up(std::string& text)
{
    const size_t first = text[0] == '-' ? 1 : 0;
    for (size_t at = text.size(); at-- > first;) {
        if (text[at] == '.')
            continue;
        if (text[at] != '9') {
            ++text[at];
            return;
        }
        text[at] = '0';
    }
    text.insert(first, 1, '1');
}

} // namespace

std::string fixed_text(double value, int precision)
{
    if (!is_exact_half(value, precision))
        return exact_text(value, precision);
    // The standard conversion takes halves to the even digit. One place more shows the half as a
    // last digit 5, and it goes outwards.
    std::string text = exact_text(value, precision + 1);
    text.pop_back();
    if (text.back() == '.')
        text.pop_back();
    count_up(text);
    return text;
}

DecimalDigits fixed_digits(double value, int precision)
{
    DecimalDigits result;
    std::string text = fixed_text(value, precision);
    result.negative = text[0] == '-';
    if (result.negative)
        text.erase(0, 1);
    const size_t point = std::min(text.find('.'), text.size());
    result.point = static_cast<int>(point);
    if (point < text.size())
        text.erase(point, 1);
    if (text[0] == '0') {
        text.erase(0, 1);
        result.point = 0;
    }
    result.digits = std::move(text);
    return result;
}

ScientificDigits scientific_digits(double value, int precision)
{
    // No double has more than 767 significant digits: the exact ones are cut here by hand, as
    // halves go away from zero.
    constexpr int exact_precision = 766;
    char exact[exact_precision + 16];
    const auto written = std::to_chars(exact, exact + sizeof exact, std::fabs(value),
                                       std::chars_format::scientific, exact_precision);
    const std::string_view text(exact, static_cast<size_t>(written.ptr - exact));
    const size_t e = text.find('e');

    ScientificDigits result;
    result.negative = std::signbit(value);
    result.exponent = std::stoi(std::string(text.substr(e + 1)));
    result.digits = text[0];
    result.digits += text.substr(2, e - 2);
    const auto wanted = static_cast<size_t>(precision) + 1;
    if (wanted >= result.digits.size()) {
        result.digits.resize(wanted, '0');
        return result;
    }
    const bool up = result.digits[wanted] >= '5';
    result.digits.resize(wanted);
    if (!up)
        return result;
    size_t at = wanted;
    while (at > 0 && result.digits[at - 1] == '9')
        result.digits[--at] = '0';
    if (at > 0) {
        ++result.digits[at - 1];
    } else {
        result.digits.insert(0, "1");
        result.digits.pop_back();
        ++result.exponent;
    }
    return result;
}

} // namespace platform
} // namespace zor
