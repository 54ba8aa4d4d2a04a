#include "zorutils/formats/date_time_text.h"

#include "zorutils/formats/number_text_internal.h"
#include "zorutils/platform/crt.h"

namespace zor_formats {

CZorStringT<WCHAR> TimeToString(double hours)
{
    const int h = truncate_to_int(hours);
    const double fraction = hours - h;
    const int m = truncate_to_int(fraction * 60.0);
    const double s = (fraction - m / 60.0) * 3600.0;
    CZorStringT<WCHAR> text;
    // Three decimals are five characters at least.
    text.Format(ZOR_W("%2d:%2d:%s"), h, m, fixed_decimals(s, 3).c_str());
    return text;
}

CZorStringT<WCHAR> TimeSpanToString(const base::CTimeSpan& span)
{
    CZorStringT<WCHAR> text;
    text.Format(ZOR_W("%02d:%02d:%02d"), static_cast<int>(span.GetTotalHours()),
                static_cast<int>(span.GetMinutes()), static_cast<int>(span.GetSeconds()));
    return text;
}

CZorStringT<WCHAR> TimeToXSString(base::CTime time, bool utc)
{
    return base::CTime::TimeToXSString(time, utc);
}

const CZorStringT<WCHAR> GetDateTimeAttrFormat()
{
    return ZOR_W("yyyy-MM-dd HH:mm:ss");
}

bool ParseDtTimeAttrFormatFromStr(const CZorStringT<WCHAR>& text, SYSTEMTIME& time)
{
    if (text.IsEmpty())
        return false;
    constexpr int field_count = 6;
    const int read = swscanf(text.c_str(), ZOR_W("%hd-%hd-%hd %hd:%hd:%hd"), &time.wYear,
                             &time.wMonth, &time.wDay, &time.wHour, &time.wMinute, &time.wSecond);
    time.wMilliseconds = time.wSecond / 1000;
    return read == field_count;
}

} // namespace zor_formats
