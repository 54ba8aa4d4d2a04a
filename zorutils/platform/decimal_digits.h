// zorutils/platform/decimal_digits.h: the library's one digit generator.
//
//     fixed_digits(-62.125, 2)   digits "6213", point 2, negative
//
// Digits are those of the exact binary value, rounded to the places asked for; an exact half goes
// away from zero. Run-times differ in this, and in how many digits they give at all, so every
// number that the library prints for a file or a user comes from here, on every target.
#pragma once

#include <string>
#include <string_view>

namespace zor {
namespace platform {

// A finite value's digits, with neither sign nor decimal point.
struct DecimalDigits
{
    std::string digits;
    int point = 0; // how many of the digits stand before the decimal point
    bool negative = false;
};

// `precision` of 0 or more places behind the point. A magnitude below 1 has point 0 and its zeros
// behind the point among the digits; with precision 0 a value that rounds to nothing has no digits.
DecimalDigits fixed_digits(double value, int precision);

// The plain text of a finite value, such as "-12.50", with "." and `precision` of 0 or more places.
std::string fixed_text(double value, int precision);

// The digits of a finite value in scientific form: `precision` + 1 significant ones, and the power
// of ten of the first.
struct ScientificDigits
{
    std::string digits;
    int exponent = 0;
    bool negative = false;
};
ScientificDigits scientific_digits(double value, int precision);

} // namespace platform
} // namespace zor
