// zorutils/formats/date_time_text.h: times as text, and a date and time read from an attribute.
//
//     zor_formats::TimeToString(1.5);                          // " 1:30:0.000"
//     zor_formats::TimeSpanToString(base::CTimeSpan(360000));  // "100:00:00"
//     SYSTEMTIME time = {};
//     zor_formats::ParseDtTimeAttrFormatFromStr(ZOR_W("2013-10-01 08:29:35"), time);
//
// Nothing here throws but for std::bad_alloc and what TimeToXSString says. Any thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zorsys/zor_time.h"
#include "zorutils/zortext/zor_string.h"

namespace zor_formats {

using zor_text::CZorStringT;

// Hours with decimals as hours:minutes:seconds with three decimals, padded with blanks. Nothing is
// carried, on purpose: a value just below a whole minute can print "60.000".
ZOR_API CZorStringT<WCHAR> TimeToString(double hours);

// hours:minutes:seconds, with as many digits of hours as the whole span takes.
ZOR_API CZorStringT<WCHAR> TimeSpanToString(const base::CTimeSpan& span);

// XML Schema dateTime, as base::CTime::TimeToXSString gives it, its behaviour around a new year and
// its errors included.
ZOR_API CZorStringT<WCHAR> TimeToXSString(base::CTime time, bool utc);

// The form that ParseDtTimeAttrFormatFromStr reads: "yyyy-MM-dd HH:mm:ss".
ZOR_API const CZorStringT<WCHAR> GetDateTimeAttrFormat();

// Reads the six fields, unchecked; true if all were there. The fields in front of the first that is
// missing are set even so. wMilliseconds becomes the seconds divided by 1000, on purpose: 0 for any
// real value. wDayOfWeek is left as it was; an empty text leaves everything.
ZOR_API bool ParseDtTimeAttrFormatFromStr(const CZorStringT<WCHAR>& text, SYSTEMTIME& time);

} // namespace zor_formats
