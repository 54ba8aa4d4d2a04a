#include "zorutils/platform/posix/zone.h"

#include <initializer_list>
#include <time.h>

namespace zor::platform {

namespace {

constexpr INT64 seconds_per_day = 86400;
constexpr int search_step_days = 28; // shorter than any summer or winter time
constexpr int search_steps = 13;     // a year

} // namespace

ZoneState zone_state(INT64 time)
{
    const time_t seconds = static_cast<time_t>(time);
    tm local = {};
    if (!localtime_r(&seconds, &local))
        return {0, false};
    return {static_cast<int>(local.tm_gmtoff), local.tm_isdst > 0};
}

ZoneOffsets zone_offsets(INT64 time)
{
    const ZoneState here = zone_state(time);
    for (int step = 1; step <= search_steps; ++step) {
        const INT64 distance = step * search_step_days * seconds_per_day;
        for (const INT64 other_time : {time + distance, time - distance}) {
            const ZoneState other = zone_state(other_time);
            if (other.daylight == here.daylight)
                continue;
            const ZoneState& standard = here.daylight ? other : here;
            const ZoneState& daylight = here.daylight ? here : other;
            return {standard.seconds_east, daylight.seconds_east, true};
        }
    }
    return {here.seconds_east, here.seconds_east, false};
}

INT64 current_time()
{
    return time(nullptr);
}

// Counted in years that begin on 1 March, so that the leap day is a year's last.
INT64 days_of_date(INT64 year, int month, INT64 day)
{
    const INT64 shifted_year = month <= 2 ? year - 1 : year;
    const Division era = divide_down(shifted_year, 400);
    const int shifted_month = (month + 9) % 12;
    const INT64 day_of_year = (153 * shifted_month + 2) / 5 + day - 1;
    const INT64 y = era.remainder;
    return era.quotient * 146097 + y * 365 + y / 4 - y / 100 + day_of_year - 719468;
}

Date date_of_days(INT64 days)
{
    const Division era = divide_down(days + 719468, 146097);
    const INT64 d = era.remainder;
    const INT64 y = (d - d / 1460 + d / 36524 - d / 146096) / 365;
    const INT64 day_of_year = d - (365 * y + y / 4 - y / 100);
    const INT64 shifted_month = (5 * day_of_year + 2) / 153;

    Date date = {};
    date.month = static_cast<int>(shifted_month < 10 ? shifted_month + 3 : shifted_month - 9);
    date.day = static_cast<int>(day_of_year - (153 * shifted_month + 2) / 5 + 1);
    date.year = era.quotient * 400 + y + (date.month <= 2 ? 1 : 0);
    date.day_of_week = static_cast<int>(divide_down(days + 4, 7).remainder);
    date.day_of_year = static_cast<int>(days - days_of_date(date.year, 1, 1));
    return date;
}

Division divide_down(INT64 value, INT64 divisor)
{
    Division result = {value / divisor, value % divisor};
    if (result.remainder < 0) {
        --result.quotient;
        result.remainder += divisor;
    }
    return result;
}

} // namespace zor::platform
