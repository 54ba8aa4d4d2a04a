// zorutils/formats/number_text_internal.h: what the other value formats share with number text.
#pragma once

#include "zorutils/zortext/zor_string.h"

namespace zor_formats {

// What "%.<prec>lf" prints, on every target with the same digits; `prec` is 0 or more.
zor_text::CZorStringT<WCHAR> fixed_decimals(double value, int prec);

// The number that the text begins with; 0.0 if it begins with none. Every ".", "," and
// `decimalSign` counts as the decimal point, and reading stops at the second one.
double text_to_double(const zor_text::CZorStringT<WCHAR>& text,
                      const zor_text::CZorStringT<WCHAR>& decimalSign);

// text_to_double with the locale's sign: the one reader that takes all three spellings.
double LocalTextToDouble(const zor_text::CZorStringT<WCHAR>& text);

// is_str_double for a given sign.
bool is_double_text(const zor_text::CZorStringT<WCHAR>& text, bool allowNegative,
                    bool allowExponent, const zor_text::CZorStringT<WCHAR>& decimalSign);

// The whole number that the text, which is not null, begins with; 0 without one.
int TextToIntOrZero(const WCHAR* text);

// The thousands sign of the user's locale; "." if there is none. Nothing in the library reads it.
zor_text::CZorStringT<WCHAR> ThousandSignString();

// Truncated toward zero; -2147483648 for NaN and for what is outside 32 bits.
int truncate_to_int(double value);

} // namespace zor_formats
