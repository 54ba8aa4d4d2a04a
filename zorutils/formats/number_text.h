// zorutils/formats/number_text.h: numbers to text and back.
//
//     zor_formats::DoubleToString(12.3456, 2)       // "12.35": for files, always with "."
//     zor_formats::ConvertFloat(12.3456, 2, false)  // "12,35" where the user's locale has ","
//     double value;
//     if (!zor_formats::StringToDouble(ZOR_W("12,5 m"), value)) ...  // true, 12.5
//
// Which decimal sign counts:
//
//     DoubleToString (both)    writes "."
//     ConvertFloat             writes the locale's sign
//     ConvertFloatEx           writes the sign given
//     StringToDouble           reads "." and the first ","; the locale's sign is not looked at
//     is_str_double            lets ".", "," and the locale's sign pass
//
// Digits are those of the exact value, halves away from zero, on every target.
//
// Errors: the readers return false and set their out-argument to zero; nothing throws but for
// std::bad_alloc, and no message is issued. All functions may be called from any thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/zortext/zor_string.h"

namespace zor_formats {

using zor_text::CZorStringT;

// --- Printing.

// The shortest plain form, with at most twelve decimals: "2.5", "2". Limited on purpose to 15
// characters with a decimal point and 14 without one, the minus sign counted: further digits are
// lost without rounding, so 123456789012345.0 gives "12345678901234".
ZOR_API CZorStringT<WCHAR> DoubleToString(double value);

// `prec` decimals. From 1 to 16 the value goes through round_prec first; for any other `prec` it
// does not, on purpose. A negative `prec` makes no number: -1 gives "-1lf".
ZOR_API CZorStringT<WCHAR> DoubleToString(double value, int prec);

// `prec` decimals with the locale's sign, or with `decimalSign`; a negative `prec` counts as 0. No
// minus in front of a zero.
//
// Keep `strip` false: with true a text that ends in "0" does not come back from the call, on
// purpose, unless it happens to be as long as the code of one of its own characters plus one.
ZOR_API CZorStringT<WCHAR> ConvertFloat(double value, int prec, bool strip);
ZOR_API CZorStringT<WCHAR> ConvertFloatEx(double value, int prec,
                                          const CZorStringT<WCHAR>& decimalSign, bool strip);

ZOR_API CZorStringT<WCHAR> IntToString(int value);
ZOR_API CZorStringT<WCHAR> UIntToString(unsigned int value);
ZOR_API CZorStringT<WCHAR> Int64ToString(INT64 value);

// --- Rounding.

// The value rounded to `prec` decimals, halves away from zero, then moved one representable step
// away from zero, so that a printer cannot show one unit less. Do not compare it with a plainly
// rounded value. Zero and NaN give 0.0.
ZOR_API double round_prec(double value, int prec);

// The value with its fraction rounded to `prec` decimals through 32-bit integers: positive halves
// go up, but negative values do not go away from zero, on purpose: -1.26 with 1 gives -1.2. A whole
// part or a scaled fraction outside 32 bits becomes -2147483648.
ZOR_API double FormatFloat(double value, int prec);

// The value plus half a unit of `prec` decimals, away from zero; the caller truncates. Zero gives
// minus the half.
ZOR_API double RoundDouble(double value, int prec);

// --- Reading. What follows the number is ignored: "12abc" is 12.

// The first "," counts as "."; the value is cleaned to twelve decimals.
ZOR_API bool StringToDouble(const CZorStringT<WCHAR>& text, double& out);

// A null text is a failure. No range check beyond the scanner's own.
ZOR_API bool StringToInt(const WCHAR* text, int& out);
ZOR_API bool StringToLong(const WCHAR* text, LONG& out);
ZOR_API bool StringToShort(const WCHAR* text, short& out);
ZOR_API bool StringToUint(const WCHAR* text, unsigned int& out);
ZOR_API bool StringToInt64(const WCHAR* text, INT64& out);

// --- Classifying: filters for text as it is being typed, which let unfinished input pass.

// "", "-", ".", "1e" and "1 2" pass; "1.2.3" and "1-2" do not.
ZOR_API bool is_str_double(const CZorStringT<WCHAR>& text, bool allowNegative, bool allowExponent);

// As is_str_double with an exponent allowed, and with at least one digit.
ZOR_API bool is_str_notempty_double(const CZorStringT<WCHAR>& text, bool allowNegative);

// Leading blanks, one "-" if allowed, digits; "" and a lone "-" pass. False for null.
ZOR_API bool is_str_int(const WCHAR* text, bool allowNegative);

// --- Signs. Both are read once and never refreshed.

// The decimal sign of the user's locale, up to four characters; "." if there is none.
ZOR_API CZorStringT<WCHAR> DecimalSignString();

// U+00B0.
ZOR_API CZorStringT<WCHAR> DegreeSignString();

// Every "," becomes ".", whatever the locale.
ZOR_API CZorStringT<WCHAR> ReplaceCommasWithDecPt(const CZorStringT<WCHAR>& text);

} // namespace zor_formats
