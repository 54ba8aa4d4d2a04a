#include "zorutils/zorsys/zor_time.h"

namespace base {

namespace {

constexpr INT64 seconds_per_minute = 60;
constexpr INT64 seconds_per_hour = 3600;
constexpr INT64 seconds_per_day = 86400;

} // namespace

CTimeSpan::CTimeSpan() : m_span(0) {}

CTimeSpan::CTimeSpan(INT64 seconds) : m_span(seconds) {}

CTimeSpan::CTimeSpan(LONG days, int hours, int minutes, int seconds)
    : m_span(seconds + 60 * (minutes + 60 * (hours + 24 * static_cast<INT64>(days))))
{
}

INT64 CTimeSpan::GetTimeSpan() const
{
    return m_span;
}

INT64 CTimeSpan::GetTotalSeconds() const
{
    return m_span;
}

INT64 CTimeSpan::GetTotalMinutes() const
{
    return m_span / seconds_per_minute;
}

INT64 CTimeSpan::GetTotalHours() const
{
    return m_span / seconds_per_hour;
}

INT64 CTimeSpan::GetDays() const
{
    return m_span / seconds_per_day;
}

LONG CTimeSpan::GetHours() const
{
    return static_cast<LONG>(GetTotalHours() - GetDays() * 24);
}

LONG CTimeSpan::GetMinutes() const
{
    return static_cast<LONG>(GetTotalMinutes() - GetTotalHours() * 60);
}

LONG CTimeSpan::GetSeconds() const
{
    return static_cast<LONG>(GetTotalSeconds() - GetTotalMinutes() * 60);
}

CTimeSpan CTimeSpan::operator+(CTimeSpan other) const
{
    return CTimeSpan(m_span + other.m_span);
}

CTimeSpan CTimeSpan::operator-(CTimeSpan other) const
{
    return CTimeSpan(m_span - other.m_span);
}

CTimeSpan& CTimeSpan::operator+=(CTimeSpan other)
{
    m_span += other.m_span;
    return *this;
}

CTimeSpan& CTimeSpan::operator-=(CTimeSpan other)
{
    m_span -= other.m_span;
    return *this;
}

bool CTimeSpan::operator==(CTimeSpan other) const
{
    return m_span == other.m_span;
}

bool CTimeSpan::operator!=(CTimeSpan other) const
{
    return m_span != other.m_span;
}

bool CTimeSpan::operator<(CTimeSpan other) const
{
    return m_span < other.m_span;
}

bool CTimeSpan::operator<=(CTimeSpan other) const
{
    return m_span <= other.m_span;
}

bool CTimeSpan::operator>(CTimeSpan other) const
{
    return m_span > other.m_span;
}

bool CTimeSpan::operator>=(CTimeSpan other) const
{
    return m_span >= other.m_span;
}

} // namespace base
