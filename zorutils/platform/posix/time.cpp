#include "zorutils/platform/posix/time.h"

#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/zone.h"

#include <time.h>

using namespace zor::platform;

namespace {

constexpr INT64 units_per_millisecond = 10000;
constexpr INT64 units_per_second = 1000 * units_per_millisecond;
constexpr INT64 units_per_day = 86400 * units_per_second;
constexpr INT64 days_to_1970 = 134774;

// Windows keeps an hour in zones that have no summer time.
constexpr LONG default_daylight_bias = -60;

UINT64 value_of(const FILETIME& time)
{
    return (static_cast<UINT64>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

FILETIME file_time_of(UINT64 value)
{
    return {static_cast<DWORD>(value), static_cast<DWORD>(value >> 32)};
}

UINT64 current_offset()
{
    return static_cast<UINT64>(zone_state(current_time()).seconds_east * units_per_second);
}

bool is_valid(const SYSTEMTIME& fields)
{
    if (fields.wYear < 1601 || fields.wMonth < 1 || fields.wMonth > 12 || fields.wDay < 1)
        return false;
    const INT64 next_month = fields.wMonth == 12 ? days_of_date(fields.wYear + 1, 1, 1)
                                                 : days_of_date(fields.wYear, fields.wMonth + 1, 1);
    return days_of_date(fields.wYear, fields.wMonth, fields.wDay) < next_month &&
           fields.wHour < 24 && fields.wMinute < 60 && fields.wSecond < 60 &&
           fields.wMilliseconds < 1000;
}

} // namespace

DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone)
{
    const INT64 now = current_time();
    const ZoneOffsets offsets = zone_offsets(now);
    *zone = TIME_ZONE_INFORMATION();
    zone->Bias = -offsets.standard / 60;
    zone->DaylightBias =
        offsets.has_daylight ? (offsets.standard - offsets.daylight) / 60 : default_daylight_bias;
    if (!offsets.has_daylight)
        return TIME_ZONE_ID_UNKNOWN;
    return zone_state(now).daylight ? TIME_ZONE_ID_DAYLIGHT : TIME_ZONE_ID_STANDARD;
}

BOOL FileTimeToLocalFileTime(const FILETIME* time, FILETIME* local)
{
    *local = file_time_of(value_of(*time) + current_offset());
    return TRUE;
}

BOOL LocalFileTimeToFileTime(const FILETIME* local, FILETIME* time)
{
    *time = file_time_of(value_of(*local) - current_offset());
    return TRUE;
}

BOOL FileTimeToSystemTime(const FILETIME* time, SYSTEMTIME* fields)
{
    const INT64 value = static_cast<INT64>(value_of(*time));
    if (value < 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const Date date = date_of_days(value / units_per_day - days_to_1970);
    const INT64 milliseconds = value % units_per_day / units_per_millisecond;
    const INT64 seconds = milliseconds / 1000;
    fields->wYear = static_cast<WORD>(date.year);
    fields->wMonth = static_cast<WORD>(date.month);
    fields->wDayOfWeek = static_cast<WORD>(date.day_of_week);
    fields->wDay = static_cast<WORD>(date.day);
    fields->wHour = static_cast<WORD>(seconds / 3600);
    fields->wMinute = static_cast<WORD>(seconds / 60 % 60);
    fields->wSecond = static_cast<WORD>(seconds % 60);
    fields->wMilliseconds = static_cast<WORD>(milliseconds % 1000);
    return TRUE;
}

BOOL SystemTimeToFileTime(const SYSTEMTIME* fields, FILETIME* time)
{
    if (!is_valid(*fields)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const INT64 days = days_of_date(fields->wYear, fields->wMonth, fields->wDay) + days_to_1970;
    const INT64 seconds = (fields->wHour * 60 + fields->wMinute) * 60 + fields->wSecond;
    const INT64 milliseconds = seconds * 1000 + fields->wMilliseconds;
    // Unsigned, since years beyond 30828 wrap around, as they do on Windows.
    *time = file_time_of(static_cast<UINT64>(days) * units_per_day +
                         static_cast<UINT64>(milliseconds * units_per_millisecond));
    return TRUE;
}

void GetSystemTimeAsFileTime(FILETIME* time)
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    const INT64 seconds = now.tv_sec + days_to_1970 * 86400;
    *time = file_time_of(static_cast<UINT64>(seconds * units_per_second + now.tv_nsec / 100));
}

LONG CompareFileTime(const FILETIME* a, const FILETIME* b)
{
    if (a->dwHighDateTime != b->dwHighDateTime)
        return a->dwHighDateTime < b->dwHighDateTime ? -1 : 1;
    return a->dwLowDateTime == b->dwLowDateTime ? 0 : a->dwLowDateTime < b->dwLowDateTime ? -1 : 1;
}

void GetSystemTime(SYSTEMTIME* fields)
{
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    FileTimeToSystemTime(&now, fields);
}

DWORD GetTickCount()
{
    return static_cast<DWORD>(GetTickCount64());
}

ULONGLONG GetTickCount64()
{
    timespec now = {};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<ULONGLONG>(now.tv_sec) * 1000 +
           static_cast<ULONGLONG>(now.tv_nsec / 1000000);
}
