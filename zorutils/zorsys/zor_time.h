// zorutils/zorsys/zor_time.h: absolute times and intervals in whole seconds.
//
//     const base::CTime start(2024, 6, 1, 8, 30, 0, -1);         // local time
//     const base::CTime end = start + base::CTimeSpan(0, 1, 30, 0);
//     end.Format(ZOR_W("%d.%m.%Y %H:%M"));                        // "01.06.2024 10:00"
//     base::CTime::TimeToXSString(end, true);                     // "2024-06-01T08:00:00Z"
//
// Both are plain values of 64 bits. Local time is by the system's time zone.
//
// Errors: CAtlException with 0x80004005 for an argument that breaks the contract, zor_enforce's
// exception, which is reported first, for a time that the system refuses. Times that can be broken
// into fields go from 1970 into 3001; outside, getters give 0 and texts are empty.
//
// Threads: the classes share nothing; one object is not protected.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zortext/zor_string.h"

#include <time.h>

namespace base {

// A signed interval in seconds. Parts are truncated toward zero, so those of a negative interval
// are all zero or negative. Nothing checks for overflow.
class ZOR_API CTimeSpan
{
public:
    CTimeSpan();
    CTimeSpan(INT64 seconds);
    CTimeSpan(LONG days, int hours, int minutes, int seconds);

    INT64 GetTimeSpan() const; // the stored seconds

    // The whole interval in one unit.
    INT64 GetTotalSeconds() const;
    INT64 GetTotalMinutes() const;
    INT64 GetTotalHours() const;
    INT64 GetDays() const;

    // What is left of it beside the next greater unit.
    LONG GetHours() const;
    LONG GetMinutes() const;
    LONG GetSeconds() const;

    CTimeSpan operator+(CTimeSpan other) const;
    CTimeSpan operator-(CTimeSpan other) const;
    CTimeSpan& operator+=(CTimeSpan other);
    CTimeSpan& operator-=(CTimeSpan other);

    bool operator==(CTimeSpan other) const;
    bool operator!=(CTimeSpan other) const;
    bool operator<(CTimeSpan other) const;
    bool operator<=(CTimeSpan other) const;
    bool operator>(CTimeSpan other) const;
    bool operator>=(CTimeSpan other) const;

private:
    INT64 m_span;
};

// Seconds since 1970-01-01 00:00:00 UTC. 0 also stands for "no time" where a source date is too
// early.
class ZOR_API CTime
{
public:
    CTime(); // 0
    CTime(INT64 time);

    // Local fields. `dst` is positive for summer time in force, 0 for standard time, negative to
    // let the system find out. CAtlException for a year before 1900, a month outside 1 to 12, a day
    // outside 1 to 31, or a time of day outside 0:00:00 to 23:59:59; a day behind its month's end
    // runs on into the next month. zor_enforce for a time that the system refuses.
    CTime(int year, int month, int day, int hour, int minute, int second, int dst);

    // A packed DOS date and time of local fields, unchecked; zor_enforce as above.
    CTime(unsigned short dosDate, unsigned short dosTime, int dst);

    // Local fields as above, but a year before 1900 gives time 0.
    CTime(const SYSTEMTIME& fields, int dst);

    // Through local fields: the offset in force now turns `time` into them, the offset that belongs
    // to them and `dst` turns them back. zor_enforce for a time that the system refuses.
    CTime(const FILETIME& time, int dst);

    CTime& operator=(INT64 time);

    INT64 GetTime() const;

    // The current time; not a tick count, in spite of its name.
    static CTime GetTickCount();

    // Breaks the time into local or UTC fields. Returns `out`, or null if the time can't be broken;
    // CAtlException for a null `out`.
    tm* GetLocalTm(tm* out) const;
    tm* GetGmtTm(tm* out) const;

    // Local fields, 0 if the time can't be broken.
    int GetYear() const;
    int GetMonth() const; // 1 to 12
    int GetDay() const;   // 1 to 31
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;
    int GetDayOfWeek() const; // 1 is Sunday

    // Local fields with 0 milliseconds. False if the time can't be broken.
    bool GetAsSystemTime(SYSTEMTIME& fields) const;

    // Text by the conversions of wcsftime, in local time or UTC. Empty for a null format, a time
    // that can't be broken, a bad conversion, or more than 127 units. A number is a string resource
    // that holds the format; CAtlException if there is none.
    zor_text::CZorStringT<WCHAR> Format(const WCHAR* format) const;
    zor_text::CZorStringT<WCHAR> Format(unsigned int id) const;
    zor_text::CZorStringT<WCHAR> FormatGmt(const WCHAR* format) const;
    zor_text::CZorStringT<WCHAR> FormatGmt(unsigned int id) const;

    // Non-zero if the constructor from FILETIME can turn `time` into fields.
    static int IsValidFILETIME(const FILETIME& time);

    // XML Schema dateTime: UTC with "Z", or local time with its offset "+hh:mm"; "Z" too where the
    // offset is zero. In the hours around a new year when local time and UTC are in different
    // years, the first of them not a leap year, the offset is 24 hours too great.
    static zor_text::CZorStringT<WCHAR> TimeToXSString(CTime time, bool utc);

    CTime operator+(CTimeSpan span) const;
    CTime operator-(CTimeSpan span) const;
    CTimeSpan operator-(CTime other) const;
    CTime& operator+=(CTimeSpan span);
    CTime& operator-=(CTimeSpan span);

    bool operator==(CTime other) const;
    bool operator!=(CTime other) const;
    bool operator<(CTime other) const;
    bool operator<=(CTime other) const;
    bool operator>(CTime other) const;
    bool operator>=(CTime other) const;

private:
    // The zone's identification and offsets as the system gives them. Returns what is in force now,
    // in minutes, UTC minus local; 0 for an unknown identification.
    static int GetBias(int& id, int& bias, int& standardBias, int& daylightBias);

    INT64 m_time;
};

// File time of seconds since 1970, and back; fractions are dropped toward 1970.
ZOR_API void to_FILETIME(INT64 time, FILETIME& out);
ZOR_API INT64 to_time_t(const FILETIME& time);

} // namespace base
