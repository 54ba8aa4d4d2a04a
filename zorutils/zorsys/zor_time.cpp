#include "zorutils/zorsys/zor_time.h"

#include "zorutils/core/atl_exception.h"
#include "zorutils/platform/crt.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/zor_check.h"

namespace base {

namespace {

using String = zor_text::CZorStringT<WCHAR>;

constexpr const char* source_path = "zorsys\\zor_time";
constexpr size_t text_buffer_size = 128;
constexpr int least_year = 1900;
constexpr int days_of_leap_year = 366;
constexpr INT64 seconds_1601_to_1970 = 11644473600;
constexpr INT64 file_time_units = 10000000; // in a second

// Unsigned, so that a negative number is out of range too.
void require_below(unsigned int value, unsigned int limit)
{
    if (value >= limit)
        throw CAtlException();
}

// The time of local fields, or zor_enforce with the caller's line.
INT64 time_of_fields(tm& fields, int line)
{
    const INT64 time = _mktime64(&fields);
    if (time == -1)
        zor_logging::zor_enforce(source_path, line, "Illegal input time");
    return time;
}

// What GetLocalTm and GetGmtTm share.
template <class Convert>
tm* break_time(INT64 time, tm* out, Convert convert)
{
    if (!out)
        throw CAtlException();
    return convert(out, &time) == 0 ? out : nullptr;
}

String format_fields(const WCHAR* format, const tm* fields)
{
    if (!format || !fields)
        return String();
    WCHAR text[text_buffer_size];
    const size_t length = wcsftime(text, text_buffer_size, format, fields);
    // Some run-times fill the buffer and return its size where the text doesn't fit.
    if (length == 0 || length >= text_buffer_size)
        return String();
    return String(text);
}

String load_format(unsigned int id)
{
    String format;
    if (!format.LoadStringW(id))
        throw CAtlException();
    return format;
}

// Minutes by which local time is ahead of UTC.
int offset_in_minutes(const tm& local, const tm& utc)
{
    // Required as it stands: 366 for 1 January is right behind a leap year, and a day too much
    // behind a common one. Files were written and read with it.
    const int local_day = local.tm_yday ? local.tm_yday : days_of_leap_year;
    const int utc_day = utc.tm_yday ? utc.tm_yday : days_of_leap_year;
    const int hours = (local_day - utc_day) * 24 + local.tm_hour - utc.tm_hour;
    return hours * 60 + local.tm_min - utc.tm_min;
}

} // namespace

// --- Construction.

CTime::CTime() : m_time(0) {}

CTime::CTime(INT64 time) : m_time(time) {}

CTime::CTime(int year, int month, int day, int hour, int minute, int second, int dst)
{
    if (year < least_year)
        throw CAtlException();
    require_below(static_cast<unsigned int>(month) - 1, 12);
    require_below(static_cast<unsigned int>(day) - 1, 31);
    require_below(static_cast<unsigned int>(hour), 24);
    require_below(static_cast<unsigned int>(minute), 60);
    require_below(static_cast<unsigned int>(second), 60);

    tm fields = {};
    fields.tm_sec = second;
    fields.tm_min = minute;
    fields.tm_hour = hour;
    fields.tm_mday = day;
    fields.tm_mon = month - 1;
    fields.tm_year = year - 1900;
    fields.tm_isdst = dst;
    m_time = time_of_fields(fields, 185);
}

CTime::CTime(unsigned short dosDate, unsigned short dosTime, int dst)
{
    tm fields = {};
    fields.tm_sec = (dosTime & 31) * 2;
    fields.tm_min = (dosTime >> 5) & 63;
    fields.tm_hour = dosTime >> 11;
    fields.tm_mday = dosDate & 31;
    fields.tm_mon = ((dosDate >> 5) & 15) - 1;
    fields.tm_year = (dosDate >> 9) + 80;
    fields.tm_isdst = dst;
    m_time = time_of_fields(fields, 203);
}

CTime::CTime(const SYSTEMTIME& fields, int dst) : m_time(0)
{
    if (fields.wYear < least_year)
        return;
    *this = CTime(fields.wYear, fields.wMonth, fields.wDay, fields.wHour, fields.wMinute,
                  fields.wSecond, dst);
}

CTime::CTime(const FILETIME& time, int dst) : m_time(0)
{
    FILETIME local = {};
    if (!FileTimeToLocalFileTime(&time, &local))
        zor_logging::zor_enforce(source_path, 232, "Invalid argument");
    SYSTEMTIME fields = {};
    if (!FileTimeToSystemTime(&local, &fields))
        zor_logging::zor_enforce(source_path, 241, "Invalid argument");
    *this = CTime(fields, dst);
}

CTime& CTime::operator=(INT64 time)
{
    m_time = time;
    return *this;
}

// --- Fields.

INT64 CTime::GetTime() const
{
    return m_time;
}

CTime CTime::GetTickCount()
{
    return CTime(_time64(nullptr));
}

tm* CTime::GetLocalTm(tm* out) const
{
    return break_time(m_time, out,
                      [](tm* to, const INT64* time) { return _localtime64_s(to, time); });
}

tm* CTime::GetGmtTm(tm* out) const
{
    return break_time(m_time, out, [](tm* to, const INT64* time) { return _gmtime64_s(to, time); });
}

int CTime::GetYear() const
{
    tm fields;
    return GetLocalTm(&fields) ? fields.tm_year + 1900 : 0;
}

int CTime::GetMonth() const
{
    tm fields;
    return GetLocalTm(&fields) ? fields.tm_mon + 1 : 0;
}

int CTime::GetDay() const
{
    tm fields;
    return GetLocalTm(&fields) ? fields.tm_mday : 0;
}

int CTime::GetHour() const
{
    tm fields;
    return GetLocalTm(&fields) ? fields.tm_hour : 0;
}

int CTime::GetMinute() const
{
    tm fields;
    return GetLocalTm(&fields) ? fields.tm_min : 0;
}

int CTime::GetSecond() const
{
    tm fields;
    return GetLocalTm(&fields) ? fields.tm_sec : 0;
}

int CTime::GetDayOfWeek() const
{
    tm fields;
    return GetLocalTm(&fields) ? fields.tm_wday + 1 : 0;
}

bool CTime::GetAsSystemTime(SYSTEMTIME& fields) const
{
    tm local;
    if (!GetLocalTm(&local))
        return false;
    fields.wYear = static_cast<WORD>(local.tm_year + 1900);
    fields.wMonth = static_cast<WORD>(local.tm_mon + 1);
    fields.wDayOfWeek = static_cast<WORD>(local.tm_wday);
    fields.wDay = static_cast<WORD>(local.tm_mday);
    fields.wHour = static_cast<WORD>(local.tm_hour);
    fields.wMinute = static_cast<WORD>(local.tm_min);
    fields.wSecond = static_cast<WORD>(local.tm_sec);
    fields.wMilliseconds = 0;
    return true;
}

int CTime::IsValidFILETIME(const FILETIME& time)
{
    FILETIME local = {};
    SYSTEMTIME fields = {};
    return FileTimeToLocalFileTime(&time, &local) && FileTimeToSystemTime(&local, &fields);
}

// --- Text.

String CTime::Format(const WCHAR* format) const
{
    tm fields;
    return format_fields(format, GetLocalTm(&fields));
}

String CTime::Format(unsigned int id) const
{
    return Format(load_format(id).c_str());
}

String CTime::FormatGmt(const WCHAR* format) const
{
    tm fields;
    return format_fields(format, GetGmtTm(&fields));
}

String CTime::FormatGmt(unsigned int id) const
{
    return FormatGmt(load_format(id).c_str());
}

String CTime::TimeToXSString(CTime time, bool utc)
{
    tm local_fields;
    tm utc_fields;
    int offset = 0;
    if (!utc && time.GetLocalTm(&local_fields) && time.GetGmtTm(&utc_fields))
        offset = offset_in_minutes(local_fields, utc_fields);
    if (offset == 0)
        return time.FormatGmt(ZOR_W("%Y-%m-%dT%H:%M:%SZ"));

    const int minutes = offset < 0 ? -offset : offset;
    String text;
    text.Format(ZOR_W("%s%c%02d:%02d"), time.Format(ZOR_W("%Y-%m-%dT%H:%M:%S")).c_str(),
                offset > 0 ? '+' : '-', minutes / 60, minutes % 60);
    return text;
}

int CTime::GetBias(int& id, int& bias, int& standardBias, int& daylightBias)
{
    TIME_ZONE_INFORMATION zone = {};
    const DWORD kind = GetTimeZoneInformation(&zone);
    id = static_cast<int>(kind);
    bias = zone.Bias;
    standardBias = zone.StandardBias;
    daylightBias = zone.DaylightBias;
    switch (kind) {
    case TIME_ZONE_ID_UNKNOWN:
        return bias;
    case TIME_ZONE_ID_STANDARD:
        return bias + standardBias;
    case TIME_ZONE_ID_DAYLIGHT:
        return bias + daylightBias;
    default:
        return 0;
    }
}

// --- File times.

void to_FILETIME(INT64 time, FILETIME& out)
{
    // Unsigned, so that a time far outside wraps around.
    const UINT64 units = (static_cast<UINT64>(time) + seconds_1601_to_1970) * file_time_units;
    out.dwLowDateTime = static_cast<DWORD>(units);
    out.dwHighDateTime = static_cast<DWORD>(units >> 32);
}

INT64 to_time_t(const FILETIME& time)
{
    const UINT64 units = (static_cast<UINT64>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    const UINT64 since_1970 = units - static_cast<UINT64>(seconds_1601_to_1970 * file_time_units);
    return static_cast<INT64>(since_1970) / file_time_units;
}

// --- Arithmetic.

CTime CTime::operator+(CTimeSpan span) const
{
    return CTime(m_time + span.GetTimeSpan());
}

CTime CTime::operator-(CTimeSpan span) const
{
    return CTime(m_time - span.GetTimeSpan());
}

CTimeSpan CTime::operator-(CTime other) const
{
    return CTimeSpan(m_time - other.m_time);
}

CTime& CTime::operator+=(CTimeSpan span)
{
    return *this = *this + span;
}

CTime& CTime::operator-=(CTimeSpan span)
{
    return *this = *this - span;
}

bool CTime::operator==(CTime other) const
{
    return m_time == other.m_time;
}

bool CTime::operator!=(CTime other) const
{
    return m_time != other.m_time;
}

bool CTime::operator<(CTime other) const
{
    return m_time < other.m_time;
}

bool CTime::operator<=(CTime other) const
{
    return m_time <= other.m_time;
}

bool CTime::operator>(CTime other) const
{
    return m_time > other.m_time;
}

bool CTime::operator>=(CTime other) const
{
    return m_time >= other.m_time;
}

} // namespace base
