// zorutils/formats/angle_text.h: angles as degrees, minutes and seconds, and bearings.
//
//     double degrees;
//     zor_formats::StringToDegree(ZOR_W("12.3045"), degrees, nullptr); // 12 deg 30' 45", as
//     decimal zor_formats::DegreeToString(degrees * 3600.0, true, 2);          // 12°30'45.00"
//
// Three units are in play, and each function is fixed to one:
//
//     decimal degrees   12.5 is 12 degrees 30 minutes      given by StringToDegree, taken by
//                                                          DegreeToBearing
//     arc seconds       45000.0 is 12 degrees 30 minutes   taken by ParseDegree, DegreeToString and
//                                                          DegreeToStringEx
//     packed DD.MMSSsss 12.3 is 12 degrees 30 minutes      taken by ParseDMS, DMSToString
//
// Reading and printing are thus no inverses without the caller's factor of 3600.
//
// Printed angles use the user's decimal sign; readers take ".", "," and that sign.
//
// Nothing here throws but for std::bad_alloc, and no message is issued. All functions may be called
// from any thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/zortext/zor_string.h"

namespace zor_formats {

using zor_text::CZorStringT;

// --- Reading.

// Reads the first angle of the text; what stands in front of its first digit, "-" or "." is passed
// over. A "-" counts only there. There are two forms:
//
//     packed   runs of digits with anything but letters between: degrees, two digits of minutes,
//              two of seconds, and the rest a fraction of a second. A single digit at the very end
//              is the tens: "12.3" is 12 deg 30'. "12 30 45.5" and "12.30455" are the same angle.
//     marked   with one of the signs °, ' and " in the text: 12.5°, 12°30.5', 12°30'45.05"
//
// Minutes and seconds of 60 and more carry; degrees have no limit. `out` is in decimal degrees. If
// `rest` is not null, *rest becomes the place where reading stopped: at a letter or the end of the
// packed form, behind the last sign of the marked form.
//
// False, with `out` 0.0 and *rest untouched: a text without a digit, "-" or ".", signs out of
// order, a part that doesn't begin with a number below 2147483648.
ZOR_API bool StringToDegree(const WCHAR* text, double& out, const WCHAR** rest);

// Whether StringToDegree reads an angle.
ZOR_API bool is_str_degree(const CZorStringT<WCHAR>& text);

// Whether the text's last letter, behind which only blanks stand, is one of `allowed`; a text that
// does not end in a letter passes. `isFlagged` tells whether that letter is also in `flagged`. Null
// sets match nothing. A text of one character passes, and so does one of which only the first two
// are left in front of its blanks.
ZOR_API bool CheckDegreeSuffix(const WCHAR* text, const WCHAR* allowed, const WCHAR* flagged,
                               bool& isFlagged);

// --- Splitting.

// Splits arc seconds and rounds the seconds to `prec` decimals, with carry: 59.999 seconds never
// become 60. Halves go up, so far as the unit of the last decimal is exact in binary: 0.5 at whole
// seconds does, 0.25 at tenths does not.
ZOR_API void ParseDegree(double seconds, bool& negative, int& deg, int& min, double& sec, int prec);

// Splits a packed angle rounded to `prec` decimals of a second. Nothing is carried: digits that say
// 60 give 60. `sec` is close to the number meant, within 1e-12.
ZOR_API void ParseDMS(double packed, bool& negative, int& deg, int& min, double& sec, int prec);

// --- Printing. An angle that prints as zero has no minus; `showSign` false leaves it out always.
//
//     prec         12 degrees 5 minutes 7.25 seconds
//     2            12°05'07.25"
//     0 or -1      12°05'07"
//     -2 or -3     12°05'   the seconds, rounded to whole ones, are dropped and not rounded into
//     -4 or less   12°      the minutes

ZOR_API CZorStringT<WCHAR> DegreeToString(double seconds, bool showSign, int prec);
ZOR_API CZorStringT<WCHAR> DegreeToStringEx(double seconds, const CZorStringT<WCHAR>& degreeSign,
                                            const CZorStringT<WCHAR>& minuteSign,
                                            const CZorStringT<WCHAR>& secondSign,
                                            const CZorStringT<WCHAR>& decimalSign, bool showSign,
                                            int prec);
ZOR_API CZorStringT<WCHAR> DMSToString(double packed, bool showSign, int prec);

// --- Bearings.

// Folds a circle angle from -360 to 360 degrees into the angle from the north or south axis; the
// strings, each of which may be null, get "N" or "S" and "E" or "W". On an axis the earlier
// quadrant has it: 90.0 is N 90 E. Above 360.0 the value comes back with the strings untouched.
// Only one turn is added to a negative value, on purpose: -400.0 gives 220.0, "S", "E".
ZOR_API double DegreeToBearing(double degrees, CZorStringT<WCHAR>* prefix,
                               CZorStringT<WCHAR>* suffix);

} // namespace zor_formats
