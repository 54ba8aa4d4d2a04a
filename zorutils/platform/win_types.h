// zorutils/platform/win_types.h: the system types that stand in exported signatures.
//
// On Windows they are the system's own. On POSIX they have the same names, layout and meaning.
#pragma once

#include "zorutils/platform/target.h"

#ifdef _WIN32

#include <windows.h>

#else

#include <stddef.h>

typedef void VOID;
typedef int BOOL;
typedef char CHAR;
typedef unsigned char BYTE;
typedef unsigned short WORD;
typedef short SHORT;
typedef unsigned short USHORT;
typedef int INT;
typedef unsigned int UINT;
typedef unsigned int ULONG;
typedef unsigned char UCHAR;
typedef INT64 LONGLONG;
typedef UINT64 ULONGLONG;
typedef UINT64 DWORD64;
typedef intptr_t INT_PTR;
typedef uintptr_t UINT_PTR;
typedef intptr_t LONG_PTR;
typedef uintptr_t ULONG_PTR;
typedef uintptr_t DWORD_PTR;
typedef size_t SIZE_T;
typedef void* PVOID;
typedef void* LPVOID;
typedef const void* LPCVOID;
typedef char* LPSTR;
typedef const char* LPCSTR;
typedef WCHAR* LPWSTR;
typedef const WCHAR* LPCWSTR;
typedef BOOL* LPBOOL;
typedef DWORD* LPDWORD;
typedef LONG* PLONG;
typedef LONG HRESULT;
typedef DWORD LCID;
typedef DWORD LCTYPE;
typedef WORD LANGID;

// A text allocated by SysAllocStringLen and its kin: its length stands in front of it.
typedef WCHAR* BSTR;

// Files, searches, mappings, threads and processes share one opaque handle type.
typedef void* HANDLE;
typedef HANDLE HLOCAL;
typedef struct HINSTANCE__* HINSTANCE;
typedef HINSTANCE HMODULE;
#define WINAPI
typedef INT_PTR (*FARPROC)(); // a module's function, to be cast to what it is
typedef struct HRSRC__* HRSRC;
typedef struct HWND__* HWND;
typedef struct HMENU__* HMENU;
typedef struct HKEY__* HKEY;
typedef struct HGLOBAL__* HGLOBAL;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif
#define MAX_PATH 260
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<intptr_t>(-1)))

#define MAKEINTRESOURCEW(number)                                                                   \
    (reinterpret_cast<LPCWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(number))))

// 100-nanosecond units since 1601-01-01 UTC.
struct FILETIME
{
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

struct SYSTEMTIME
{
    WORD wYear;
    WORD wMonth;     // 1 to 12
    WORD wDayOfWeek; // 0 is Sunday
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

struct WIN32_FIND_DATAW
{
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    WCHAR cFileName[MAX_PATH];
    WCHAR cAlternateFileName[14];
};

struct OVERLAPPED
{
    ULONG_PTR Internal;
    ULONG_PTR InternalHigh;
    DWORD Offset;
    DWORD OffsetHigh;
    HANDLE hEvent;
};

union LARGE_INTEGER {
    struct
    {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
};

// A fault. The codes are those of Windows.
struct EXCEPTION_RECORD
{
    DWORD ExceptionCode;
    DWORD ExceptionFlags;
    EXCEPTION_RECORD* ExceptionRecord;
    PVOID ExceptionAddress;
    DWORD NumberParameters;
    ULONG_PTR ExceptionInformation[15]; // of a wild access: 0 read, 1 write, 8 execute; the address
};

// The registers at the fault: a ucontext_t of the system.
struct CONTEXT;

struct _EXCEPTION_POINTERS
{
    EXCEPTION_RECORD* ExceptionRecord;
    CONTEXT* ContextRecord;
};
typedef _EXCEPTION_POINTERS EXCEPTION_POINTERS;

#endif
