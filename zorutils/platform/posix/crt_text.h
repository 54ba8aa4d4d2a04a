// zorutils/platform/posix/crt_text.h: text calls on 16-bit units, and the narrow non-standard ones.
//
// The wide calls have the standard names and meaning on terminated texts of 16-bit units. Case and
// order are those of the C locale. Any thread.
#pragma once

// First, so that the standard library takes its own functions of these names alone into std.
#include <cwchar>
#include <cwctype>

#include <string.h>

#include "zorutils/platform/win_types.h"

size_t wcslen(const WCHAR* text);
int wcscmp(const WCHAR* a, const WCHAR* b);
int wcsncmp(const WCHAR* a, const WCHAR* b, size_t count);
const WCHAR* wcschr(const WCHAR* text, WCHAR unit);
const WCHAR* wcsrchr(const WCHAR* text, WCHAR unit);
const WCHAR* wcsstr(const WCHAR* text, const WCHAR* sub);
const WCHAR* wcspbrk(const WCHAR* text, const WCHAR* set);
size_t wcsspn(const WCHAR* text, const WCHAR* set);
size_t wcscspn(const WCHAR* text, const WCHAR* set);
int wcscoll(const WCHAR* a, const WCHAR* b);

int _wcsicmp(const WCHAR* a, const WCHAR* b);
int _wcsicoll(const WCHAR* a, const WCHAR* b);
WCHAR* _wcsupr(WCHAR* text);
WCHAR* _wcslwr(WCHAR* text);
WCHAR* _wcsrev(WCHAR* text);

int _stricmp(const char* a, const char* b);
int _stricoll(const char* a, const char* b);
char* _strupr(char* text);
char* _strlwr(char* text);
char* _strrev(char* text);
