// zorutils/platform/posix/zone.h: the time zone of the C library, in the terms of Windows.
#pragma once

#include "zorutils/platform/target.h"

namespace zor::platform {

// What is in force at one time: local time is UTC plus `seconds_east`.
struct ZoneState
{
    int seconds_east;
    bool daylight;
};

// The standard and the summer offset that belong to one time; equal without summer time.
struct ZoneOffsets
{
    int standard;
    int daylight;
    bool has_daylight;
};

// The state at `time`, in seconds since 1970 UTC.
ZoneState zone_state(INT64 time);

// The offsets in the year around `time`.
ZoneOffsets zone_offsets(INT64 time);

// Seconds since 1970 UTC.
INT64 current_time();

// Days since 1970-01-01 of a day of the Gregorian calendar; `month` is 1 to 12, `day` any number.
INT64 days_of_date(INT64 year, int month, INT64 day);

// A day of the calendar.
struct Date
{
    INT64 year;
    int month;       // 1 to 12
    int day;         // 1 to 31
    int day_of_week; // 0 is Sunday
    int day_of_year; // 0 is 1 January
};

Date date_of_days(INT64 days);

// Quotient and remainder that is never negative.
struct Division
{
    INT64 quotient;
    INT64 remainder;
};

Division divide_down(INT64 value, INT64 divisor);

} // namespace zor::platform
