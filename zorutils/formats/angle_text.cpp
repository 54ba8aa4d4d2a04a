// Angles to text, and bearings.
#include "zorutils/formats/angle_text.h"

#include <algorithm>
#include <cmath>

#include "zorutils/formats/angle_text_internal.h"
#include "zorutils/formats/number_text.h"
#include "zorutils/formats/number_text_internal.h"
#include "zorutils/platform/crt.h"

namespace zor_formats {

namespace {

const WCHAR minute_sign[] = ZOR_W("'");
const WCHAR second_sign[] = ZOR_W("\"");

// Wraps at the end of the range, which only a meaningless angle reaches.
void increment(int& value)
{
    value = static_cast<int>(static_cast<unsigned int>(value) + 1u);
}

CZorStringT<WCHAR> int_text(int value)
{
    constexpr int longest_int = 12;
    WCHAR buffer[longest_int];
    return _itow(value, buffer, 10);
}

} // namespace

// --- Splitting.

void ParseDegree(double seconds, bool& negative, int& deg, int& min, double& sec, int prec)
{
    negative = 0.0 > seconds;
    double value = negative ? -seconds : seconds;
    double unit = 1.0;
    // A unit of 0 stays what it is.
    for (int i = 0; i < prec && unit > 0.0; ++i)
        unit /= 10.0;
    deg = truncate_to_int(value / 3600.0);
    value -= deg * 3600.0;
    min = truncate_to_int(value / 60.0);
    value -= min * 60.0;
    const double ratio = std::fmod(value, unit) / unit;
    if (0.5 > ratio) {
        sec = std::floor(value / unit) * unit;
        return;
    }
    // Only rounding up can carry.
    sec = std::ceil(value / unit) * unit;
    if (sec >= 60.0) {
        sec -= 60.0;
        increment(min);
        if (min >= 60) {
            min -= 60;
            increment(deg);
        }
    }
}

void ParseDMS(double packed, bool& negative, int& deg, int& min, double& sec, int prec)
{
    negative = 0.0 > packed;
    const double value = negative ? -packed : packed;
    double scale = 10000.0;
    for (int i = 0; i < prec && std::isfinite(scale); ++i)
        scale *= 10.0;
    const double rounded = std::floor(value * scale + 0.5) / scale;
    deg = truncate_to_int(rounded);
    const double small_scale = scale / 100.0;
    const double minutes = std::floor((rounded - deg) * 100.0 * small_scale + 0.5) / small_scale;
    min = truncate_to_int(minutes);
    sec = (minutes - min) * 100.0;
}

// --- Printing.

CZorStringT<WCHAR> AngleFieldsToString(bool negative, int deg, int min, double sec,
                                       const CZorStringT<WCHAR>& degreeSign,
                                       const CZorStringT<WCHAR>& minuteSign,
                                       const CZorStringT<WCHAR>& secondSign,
                                       const CZorStringT<WCHAR>& decimalSign, bool showSign,
                                       int prec)
{
    CZorStringT<WCHAR> text = int_text(deg);
    text += degreeSign;
    bool all_zero = deg == 0;
    if (prec > -4) {
        if (min < 10)
            text += WCHAR('0');
        text += int_text(min);
        text += minuteSign;
        all_zero = all_zero && min == 0;
    }
    if (prec > -2) {
        // Seconds this close to 10 print as 10.
        constexpr double margin = 1e-12;
        if (sec < 10.0 && !(10.0 - sec < margin))
            text += WCHAR('0');
        const CZorStringT<WCHAR> seconds =
            ConvertFloatEx(sec, std::max(prec, 0), decimalSign, false);
        text += seconds;
        text += secondSign;
        all_zero = all_zero && seconds.FindOneOf(ZOR_W("123456789")) < 0;
    }
    if (negative && showSign && !all_zero)
        text.Insert(0, WCHAR('-'));
    return text;
}

CZorStringT<WCHAR> DegreeToStringEx(double seconds, const CZorStringT<WCHAR>& degreeSign,
                                    const CZorStringT<WCHAR>& minuteSign,
                                    const CZorStringT<WCHAR>& secondSign,
                                    const CZorStringT<WCHAR>& decimalSign, bool showSign, int prec)
{
    bool negative;
    int deg, min;
    double sec;
    ParseDegree(seconds, negative, deg, min, sec, prec);
    return AngleFieldsToString(negative, deg, min, sec, degreeSign, minuteSign, secondSign,
                               decimalSign, showSign, prec);
}

CZorStringT<WCHAR> DMSToStringEx(double packed, const CZorStringT<WCHAR>& degreeSign,
                                 const CZorStringT<WCHAR>& minuteSign,
                                 const CZorStringT<WCHAR>& secondSign,
                                 const CZorStringT<WCHAR>& decimalSign, bool showSign, int prec)
{
    bool negative;
    int deg, min;
    double sec;
    ParseDMS(packed, negative, deg, min, sec, prec);
    return AngleFieldsToString(negative, deg, min, sec, degreeSign, minuteSign, secondSign,
                               decimalSign, showSign, prec);
}

CZorStringT<WCHAR> DegreeToString(double seconds, bool showSign, int prec)
{
    return DegreeToStringEx(seconds, DegreeSignString(), minute_sign, second_sign,
                            DecimalSignString(), showSign, prec);
}

CZorStringT<WCHAR> DMSToString(double packed, bool showSign, int prec)
{
    return DMSToStringEx(packed, DegreeSignString(), minute_sign, second_sign, DecimalSignString(),
                         showSign, prec);
}

// --- Bearings.

double DegreeToBearing(double degrees, CZorStringT<WCHAR>* prefix, CZorStringT<WCHAR>* suffix)
{
    // Once, on purpose.
    const double value = degrees < 0.0 ? degrees + 360.0 : degrees;
    const auto quadrant = [=](WCHAR axis, WCHAR side, double angle) {
        if (prefix != nullptr)
            *prefix = axis;
        if (suffix != nullptr)
            *suffix = side;
        return angle;
    };
    if (value >= 0.0 && value <= 90.0)
        return quadrant('N', 'E', value);
    // A value still below zero comes here.
    if (value <= 180.0)
        return quadrant('S', 'E', 180.0 - value);
    if (value <= 270.0)
        return quadrant('S', 'W', value - 180.0);
    if (value <= 360.0)
        return quadrant('N', 'W', 360.0 - value);
    return value;
}

} // namespace zor_formats
