// zorutils/formats/angle_text_internal.h: the printers behind the angle texts.
#pragma once

#include "zorutils/zortext/zor_string.h"

namespace zor_formats {

// Prints fields that are rounded already. The signs may have any length.
zor_text::CZorStringT<WCHAR> AngleFieldsToString(bool negative, int deg, int min, double sec,
                                                 const zor_text::CZorStringT<WCHAR>& degreeSign,
                                                 const zor_text::CZorStringT<WCHAR>& minuteSign,
                                                 const zor_text::CZorStringT<WCHAR>& secondSign,
                                                 const zor_text::CZorStringT<WCHAR>& decimalSign,
                                                 bool showSign, int prec);

// DegreeToStringEx for a packed angle.
zor_text::CZorStringT<WCHAR> DMSToStringEx(double packed,
                                           const zor_text::CZorStringT<WCHAR>& degreeSign,
                                           const zor_text::CZorStringT<WCHAR>& minuteSign,
                                           const zor_text::CZorStringT<WCHAR>& secondSign,
                                           const zor_text::CZorStringT<WCHAR>& decimalSign,
                                           bool showSign, int prec);

} // namespace zor_formats
