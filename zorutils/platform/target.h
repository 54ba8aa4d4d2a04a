// zorutils/platform/target.h: what differs between the two targets in the language itself.
//
// The library's wide character is one 16-bit UTF-16 unit on every target: `wchar_t` where that is
// 16 bits wide, `char16_t` elsewhere. Literals are written ZOR_W("text").
//
// INT64 and UINT64 are 64 bits wide, LONG and DWORD 32 bits, on every target.
#pragma once

#include <stdint.h>

#ifdef _WIN32

typedef wchar_t WCHAR;
#define ZOR_WIDE_LITERAL(text) L##text
#define ZOR_EXPORT __declspec(dllexport)
#define ZOR_IMPORT __declspec(dllimport)
typedef long LONG;
typedef unsigned long DWORD;
typedef long long INT64;
typedef unsigned long long UINT64;

#else

typedef char16_t WCHAR;
#define ZOR_WIDE_LITERAL(text) u##text
#define ZOR_EXPORT __attribute__((visibility("default")))
#define ZOR_IMPORT
typedef int LONG;
typedef unsigned int DWORD;
typedef long long INT64;
typedef unsigned long long UINT64;

#endif

// A literal of 16-bit units, from a narrow literal or a macro that expands to one.
#define ZOR_W(text) ZOR_WIDE_LITERAL(text)

static_assert(sizeof(WCHAR) == 2, "the wide character is one UTF-16 unit");
static_assert(sizeof(LONG) == 4 && sizeof(DWORD) == 4, "LONG and DWORD are 32 bits wide");
