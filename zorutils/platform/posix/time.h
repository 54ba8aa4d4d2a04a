// zorutils/platform/posix/time.h: file times, system times, the time zone and tick counts.
//
// The zone is the C library's: TZ in the environment, else the machine's. Any thread may call.
#pragma once

#include "zorutils/platform/win_types.h"

#define TIME_ZONE_ID_UNKNOWN 0
#define TIME_ZONE_ID_STANDARD 1
#define TIME_ZONE_ID_DAYLIGHT 2

// Offsets in minutes, UTC minus local. The names and the dates of the changes are left empty.
struct TIME_ZONE_INFORMATION
{
    LONG Bias;
    WCHAR StandardName[32];
    SYSTEMTIME StandardDate;
    LONG StandardBias;
    WCHAR DaylightName[32];
    SYSTEMTIME DaylightDate;
    LONG DaylightBias;
};

// The zone as it is in these months. Returns TIME_ZONE_ID_STANDARD or TIME_ZONE_ID_DAYLIGHT for
// what is in force now, TIME_ZONE_ID_UNKNOWN in a zone without summer time (DaylightBias is then
// -60).
DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone);

// -1, 0 or 1 as `a` is before, the same as, or behind `b`.
LONG CompareFileTime(const FILETIME* a, const FILETIME* b);

// Both shift by the offset that is in force now, whatever `time` is; they never fail, and wrap
// around.
BOOL FileTimeToLocalFileTime(const FILETIME* time, FILETIME* local);
BOOL LocalFileTimeToFileTime(const FILETIME* local, FILETIME* time);

// False with ERROR_INVALID_PARAMETER and `fields` unchanged for a time with its top bit set.
BOOL FileTimeToSystemTime(const FILETIME* time, SYSTEMTIME* fields);

// wDayOfWeek is not looked at. False with ERROR_INVALID_PARAMETER and `time` unchanged for a year
// before 1601 or a field out of its range.
BOOL SystemTimeToFileTime(const SYSTEMTIME* fields, FILETIME* time);

void GetSystemTimeAsFileTime(FILETIME* time);

// The same in fields, to the millisecond.
void GetSystemTime(SYSTEMTIME* fields);

// Milliseconds since the machine's start; the first wraps around at 32 bits.
DWORD GetTickCount();
ULONGLONG GetTickCount64();
