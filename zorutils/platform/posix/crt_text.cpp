#include "zorutils/platform/posix/crt_text.h"

#include <algorithm>
#include <string>

#include "zorutils/platform/posix/crt_ctype.h"

namespace {

using Traits = std::char_traits<WCHAR>;

// The bytes of a narrow text fold as the ASCII units of the same value.
WCHAR unit_of(char c)
{
    return static_cast<unsigned char>(c);
}

WCHAR unit_of(WCHAR unit)
{
    return unit;
}

template <class T>
int compare_no_case(const T* a, const T* b)
{
    for (;; ++a, ++b) {
        const int difference = towlower(unit_of(*a)) - towlower(unit_of(*b));
        if (difference != 0 || *a == 0)
            return difference;
    }
}

template <class T>
T* map_case(T* text, WCHAR (*map)(WCHAR))
{
    for (T* at = text; *at != 0; ++at)
        *at = static_cast<T>(map(unit_of(*at)));
    return text;
}

bool is_one_of(WCHAR unit, const WCHAR* set)
{
    while (*set != 0 && *set != unit)
        ++set;
    return *set != 0;
}

} // namespace

size_t wcslen(const WCHAR* text)
{
    return Traits::length(text);
}

int wcscmp(const WCHAR* a, const WCHAR* b)
{
    while (*a != 0 && *a == *b) {
        ++a;
        ++b;
    }
    return (*a > *b) - (*a < *b);
}

int wcsncmp(const WCHAR* a, const WCHAR* b, size_t count)
{
    for (; count > 0; --count, ++a, ++b) {
        if (*a != *b || *a == 0)
            return (*a > *b) - (*a < *b);
    }
    return 0;
}

const WCHAR* wcschr(const WCHAR* text, WCHAR unit)
{
    // Only as far as the hit: callers walk long texts hit by hit. The terminator can be searched
    // for as well.
    for (;; ++text) {
        if (*text == unit)
            return text;
        if (*text == 0)
            return nullptr;
    }
}

const WCHAR* wcsrchr(const WCHAR* text, WCHAR unit)
{
    const WCHAR* found = nullptr;
    for (;; ++text) {
        if (*text == unit)
            found = text;
        if (*text == 0)
            return found;
    }
}

const WCHAR* wcsstr(const WCHAR* text, const WCHAR* sub)
{
    if (*sub == 0)
        return text;
    const size_t length = wcslen(sub);
    for (; (text = wcschr(text, *sub)) != nullptr; ++text) {
        if (wcsncmp(text, sub, length) == 0)
            return text;
    }
    return nullptr;
}

const WCHAR* wcspbrk(const WCHAR* text, const WCHAR* set)
{
    text += wcscspn(text, set);
    return *text == 0 ? nullptr : text;
}

size_t wcsspn(const WCHAR* text, const WCHAR* set)
{
    const WCHAR* at = text;
    while (*at != 0 && is_one_of(*at, set))
        ++at;
    return static_cast<size_t>(at - text);
}

size_t wcscspn(const WCHAR* text, const WCHAR* set)
{
    const WCHAR* at = text;
    while (*at != 0 && !is_one_of(*at, set))
        ++at;
    return static_cast<size_t>(at - text);
}

int wcscoll(const WCHAR* a, const WCHAR* b)
{
    return wcscmp(a, b);
}

int _wcsicmp(const WCHAR* a, const WCHAR* b)
{
    return compare_no_case(a, b);
}

int _wcsicoll(const WCHAR* a, const WCHAR* b)
{
    return compare_no_case(a, b);
}

WCHAR* _wcsupr(WCHAR* text)
{
    return map_case(text, towupper);
}

WCHAR* _wcslwr(WCHAR* text)
{
    return map_case(text, towlower);
}

WCHAR* _wcsrev(WCHAR* text)
{
    std::reverse(text, text + wcslen(text));
    return text;
}

int _stricmp(const char* a, const char* b)
{
    return compare_no_case(a, b);
}

int _stricoll(const char* a, const char* b)
{
    return compare_no_case(a, b);
}

char* _strupr(char* text)
{
    return map_case(text, towupper);
}

char* _strlwr(char* text)
{
    return map_case(text, towlower);
}

char* _strrev(char* text)
{
    std::reverse(text, text + strlen(text));
    return text;
}
