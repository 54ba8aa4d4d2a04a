#include "zorutils/platform/posix/crt_time.h"

#include "zorutils/platform/posix/zone.h"

#include <errno.h>
#include <string.h>

using namespace zor::platform;

namespace {

constexpr INT64 greatest_time = 32535244799;
constexpr int least_year = 70;
constexpr int greatest_year = 1100;

int invalid(tm* out)
{
    if (out) {
        *out = tm();
        out->tm_sec = out->tm_min = out->tm_hour = -1;
        out->tm_mday = out->tm_mon = out->tm_year = -1;
        out->tm_wday = out->tm_yday = out->tm_isdst = -1;
    }
    errno = EINVAL;
    return EINVAL;
}

bool is_in_range(INT64 time)
{
    return time >= 0 && time <= greatest_time;
}

void set_fields(tm& out, INT64 local_seconds, bool daylight)
{
    const Division day = divide_down(local_seconds, 86400);
    const Date date = date_of_days(day.quotient);
    const int second = static_cast<int>(day.remainder);
    out.tm_sec = second % 60;
    out.tm_min = second / 60 % 60;
    out.tm_hour = second / 3600;
    out.tm_mday = date.day;
    out.tm_mon = date.month - 1;
    out.tm_year = static_cast<int>(date.year - 1900);
    out.tm_wday = date.day_of_week;
    out.tm_yday = date.day_of_year;
    out.tm_isdst = daylight ? 1 : 0;
}

void set_local_fields(tm& out, INT64 time)
{
    const ZoneState zone = zone_state(time);
    set_fields(out, time + zone.seconds_east, zone.daylight);
}

// The UTC time of a local time.
INT64 time_of_local(INT64 local, int daylight)
{
    const ZoneOffsets zone = zone_offsets(local);
    const INT64 as_standard = local - zone.standard;
    if (!zone.has_daylight) {
        // The zone itself may have moved that day.
        return local - zone_state(as_standard).seconds_east;
    }
    const bool is_daylight = daylight < 0 ? zone_state(as_standard).daylight : daylight > 0;
    return is_daylight ? local - zone.daylight : as_standard;
}

} // namespace

INT64 _time64(INT64* out)
{
    const INT64 now = current_time();
    if (out)
        *out = now;
    return now;
}

int _gmtime64_s(tm* out, const INT64* time)
{
    if (!out || !time || !is_in_range(*time))
        return invalid(out);
    *out = tm();
    set_fields(*out, *time, false);
    return 0;
}

int _localtime64_s(tm* out, const INT64* time)
{
    if (!out || !time || !is_in_range(*time))
        return invalid(out);
    *out = tm();
    set_local_fields(*out, *time);
    return 0;
}

INT64 _mktime64(tm* fields)
{
    const Division month = divide_down(fields->tm_mon, 12);
    const INT64 year = fields->tm_year + month.quotient;
    if (year < least_year || year > greatest_year) {
        errno = EINVAL;
        return -1;
    }
    const int month_number = static_cast<int>(month.remainder) + 1;
    const INT64 days = days_of_date(year + 1900, month_number, fields->tm_mday);
    const INT64 minutes = (days * 24 + fields->tm_hour) * 60 + fields->tm_min;
    const INT64 time = time_of_local(minutes * 60 + fields->tm_sec, fields->tm_isdst);
    if (!is_in_range(time)) {
        errno = EINVAL;
        return -1;
    }
    set_local_fields(*fields, time);
    return time;
}
