// wcsftime: conversions as a table of the field that each one needs, and of how it is written.
#include "zorutils/platform/posix/crt_time.h"

#include <errno.h>
#include <new>
#include <stdio.h>
#include <string>

namespace {

using Text = std::basic_string<WCHAR>;

const char* const day_names[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                 "Thursday", "Friday", "Saturday"};
const char* const month_names[] = {"January",   "February", "March",    "April",
                                   "May",       "June",     "July",     "August",
                                   "September", "October",  "November", "December"};
constexpr size_t short_name = 3;

// A numeric conversion: its value, the range of the field behind it, and its digits.
struct Number
{
    char letter;
    int (*value)(const tm&);
    int (*field)(const tm&);
    int least;
    int greatest;
    int digits;
};

int sec(const tm& t)
{
    return t.tm_sec;
}
int min(const tm& t)
{
    return t.tm_min;
}
int hour(const tm& t)
{
    return t.tm_hour;
}
int hour_of_12(const tm& t)
{
    return (t.tm_hour + 11) % 12 + 1;
}
int mday(const tm& t)
{
    return t.tm_mday;
}
int mon(const tm& t)
{
    return t.tm_mon;
}
int month(const tm& t)
{
    return t.tm_mon + 1;
}
int year(const tm& t)
{
    return t.tm_year;
}
int full_year(const tm& t)
{
    return t.tm_year + 1900;
}
int year_of_century(const tm& t)
{
    return t.tm_year % 100;
}
int wday(const tm& t)
{
    return t.tm_wday;
}
int yday(const tm& t)
{
    return t.tm_yday;
}
int day_of_year(const tm& t)
{
    return t.tm_yday + 1;
}
int sunday_week(const tm& t)
{
    return (t.tm_yday + 7 - t.tm_wday) / 7;
}
int monday_week(const tm& t)
{
    return (t.tm_yday + 7 - (t.tm_wday + 6) % 7) / 7;
}

const Number numbers[] = {
    {'d', mday, mday, 1, 31, 2},
    {'H', hour, hour, 0, 23, 2},
    {'I', hour_of_12, hour, 0, 23, 2},
    {'j', day_of_year, yday, 0, 365, 3},
    {'m', month, mon, 0, 11, 2},
    {'M', min, min, 0, 59, 2},
    {'S', sec, sec, 0, 59, 2},
    {'U', sunday_week, yday, 0, 365, 2},
    {'w', wday, wday, 0, 6, 1},
    {'W', monday_week, yday, 0, 365, 2},
    {'y', year_of_century, year, 0, 0x7FFFFFFF, 2},
    {'Y', full_year, year, -1900, 8099, 4},
};

bool is_in(int value, int least, int greatest)
{
    return value >= least && value <= greatest;
}

void append(Text& out, const std::string& text)
{
    out.append(text.begin(), text.end());
}

bool append_number(Text& out, const Number& number, bool plain, const tm& fields)
{
    if (!is_in(number.field(fields), number.least, number.greatest))
        return false;
    const bool of_week = number.letter == 'U' || number.letter == 'W';
    if (of_week && !is_in(fields.tm_wday, 0, 6))
        return false;
    char text[16];
    snprintf(text, sizeof(text), "%0*d", plain ? 1 : number.digits, number.value(fields));
    append(out, text);
    return true;
}

bool append_name(Text& out, const char* const* names, int count, int index, size_t length)
{
    if (!is_in(index, 0, count - 1))
        return false;
    append(out, std::string(names[index]).substr(0, length));
    return true;
}

void append_zone(Text& out, const tm& fields)
{
    append(out, tzname[fields.tm_isdst > 0 ? 1 : 0]);
}

bool append_format(Text& out, const WCHAR* format, const tm& fields);

// Writes one conversion; false for an unknown one or a field out of its range.
bool append_conversion(Text& out, WCHAR letter, bool plain, const tm& fields)
{
    for (const Number& number : numbers) {
        if (letter == static_cast<unsigned char>(number.letter))
            return append_number(out, number, plain, fields);
    }
    switch (letter) {
    case u'a':
        return append_name(out, day_names, 7, fields.tm_wday, short_name);
    case u'A':
        return append_name(out, day_names, 7, fields.tm_wday, std::string::npos);
    case u'b':
        return append_name(out, month_names, 12, fields.tm_mon, short_name);
    case u'B':
        return append_name(out, month_names, 12, fields.tm_mon, std::string::npos);
    case u'p':
        append(out, fields.tm_hour < 12 ? "AM" : "PM");
        return is_in(fields.tm_hour, 0, 23);
    case u'c':
        return append_format(out, plain ? u"%A, %B %d, %Y %H:%M:%S" : u"%m/%d/%y %H:%M:%S", fields);
    case u'x':
        return append_format(out, plain ? u"%A, %B %d, %Y" : u"%m/%d/%y", fields);
    case u'X':
        return append_format(out, u"%H:%M:%S", fields);
    case u'z':
    case u'Z':
        append_zone(out, fields);
        return true;
    case u'%':
        out += letter;
        return true;
    default:
        return false;
    }
}

bool append_format(Text& out, const WCHAR* format, const tm& fields)
{
    while (*format) {
        if (*format != u'%') {
            out += *format++;
            continue;
        }
        ++format;
        const bool plain = *format == u'#';
        if (plain)
            ++format;
        if (!append_conversion(out, *format, plain, fields))
            return false;
        ++format;
    }
    return true;
}

size_t failed(WCHAR* out, size_t size, int error)
{
    if (size)
        *out = 0;
    errno = error;
    return 0;
}

} // namespace

size_t wcsftime(WCHAR* out, size_t size, const WCHAR* format, const tm* fields)
try {
    Text text;
    if (!append_format(text, format, *fields))
        return failed(out, size, EINVAL);
    if (text.size() >= size)
        return failed(out, size, ERANGE);
    text.copy(out, text.size());
    out[text.size()] = 0;
    return text.size();
} catch (const std::bad_alloc&) {
    return failed(out, size, ENOMEM);
}
