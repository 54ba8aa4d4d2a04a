// zorutils/zortext/zor_string_traits_internal.h: the run-time's text calls by character width, so
// that one body serves both widths of the string.
#pragma once

#include <type_traits>

#include "zorutils/platform/crt.h"
#include "zorutils/platform/winapi.h"

namespace zor_text {

template <class T>
struct TextCalls;

template <>
struct TextCalls<char>
{
    static int length(const char* text) { return lstrlenA(text); }
    static const char* find(const char* text, char c) { return strchr(text, c); }
    static const char* find_last(const char* text, char c) { return strrchr(text, c); }
    static const char* find(const char* text, const char* sub) { return strstr(text, sub); }
    static const char* find_any(const char* text, const char* set) { return strpbrk(text, set); }
    static size_t span(const char* text, const char* set) { return strspn(text, set); }
    static size_t span_not(const char* text, const char* set) { return strcspn(text, set); }
    static int compare(const char* a, const char* b) { return strcmp(a, b); }
    static int compare_no_case(const char* a, const char* b) { return _stricmp(a, b); }
    static int collate(const char* a, const char* b) { return strcoll(a, b); }
    static int collate_no_case(const char* a, const char* b) { return _stricoll(a, b); }
    static void upper(char* text) { _strupr(text); }
    static void lower(char* text) { _strlwr(text); }
    static void reverse(char* text) { _strrev(text); }
    // The byte is sign-extended on purpose: bytes from 0x80 up are tested as units from 0xFF80 up.
    static bool is_space(char c)
    {
        return iswspace(static_cast<WCHAR>(static_cast<short>(static_cast<signed char>(c)))) != 0;
    }
    static int format(char* buffer, size_t size, const char* format, va_list arguments)
    {
        return _vsnprintf(buffer, size, format, arguments);
    }
};

template <>
struct TextCalls<WCHAR>
{
    static int length(const WCHAR* text) { return lstrlenW(text); }
    static const WCHAR* find(const WCHAR* text, WCHAR c) { return wcschr(text, c); }
    static const WCHAR* find_last(const WCHAR* text, WCHAR c) { return wcsrchr(text, c); }
    // The empty text is found everywhere, also at the end, where run-times disagree.
    static const WCHAR* find(const WCHAR* text, const WCHAR* sub)
    {
        return *sub == 0 ? text : wcsstr(text, sub);
    }
    static const WCHAR* find_any(const WCHAR* text, const WCHAR* set) { return wcspbrk(text, set); }
    static size_t span(const WCHAR* text, const WCHAR* set) { return wcsspn(text, set); }
    static size_t span_not(const WCHAR* text, const WCHAR* set) { return wcscspn(text, set); }
    static int compare(const WCHAR* a, const WCHAR* b) { return wcscmp(a, b); }
    static int compare_no_case(const WCHAR* a, const WCHAR* b) { return _wcsicmp(a, b); }
    static int collate(const WCHAR* a, const WCHAR* b) { return wcscoll(a, b); }
    static int collate_no_case(const WCHAR* a, const WCHAR* b) { return _wcsicoll(a, b); }
    static void upper(WCHAR* text) { _wcsupr(text); }
    static void lower(WCHAR* text) { _wcslwr(text); }
    static void reverse(WCHAR* text) { _wcsrev(text); }
    static bool is_space(WCHAR c) { return iswspace(c) != 0; }
    static int format(WCHAR* buffer, size_t size, const WCHAR* format, va_list arguments)
    {
        return _vsnwprintf(buffer, size, format, arguments);
    }
};

// The other width.
template <class T>
using OtherWidth = std::conditional_t<std::is_same_v<T, char>, WCHAR, char>;

// Converts `length` characters (-1: up to and with the terminator) through the active code page.
// Without an output buffer the count needed is returned; 0 is a failure.
inline int convert(const WCHAR* source, int length, char* out, int size)
{
    return WideCharToMultiByte(CP_ACP, 0, source, length, out, size, nullptr, nullptr);
}

inline int convert(const char* source, int length, WCHAR* out, int size)
{
    return MultiByteToWideChar(CP_ACP, 0, source, length, out, size);
}

} // namespace zor_text
