// zorutils/platform/posix/codepage.h: code pages, MultiByteToWideChar and its twin.
//
// Known pages: 437, 874, 932, 936, 949, 950, 1250 to 1258, 65001, and CP_ACP for the active one.
// A unit that a page lacks becomes the page's best fit, or its default character.
#pragma once

#include "zorutils/platform/posix/active_code_page.h"
#include "zorutils/platform/win_types.h"

#define CP_ACP 0
#define CP_UTF8 65001
#define MB_PRECOMPOSED 1
#define MB_ERR_INVALID_CHARS 8
#define WC_NO_BEST_FIT_CHARS 1024
#define WC_ERR_INVALID_CHARS 128

// Both return the characters written, or needed if `size` is 0; 0 is a failure, with the last error
// set. A length of -1 takes the text up to and with its terminator.
int MultiByteToWideChar(UINT page, DWORD flags, const char* source, int length, WCHAR* out,
                        int size);
int WideCharToMultiByte(UINT page, DWORD flags, const WCHAR* source, int length, char* out,
                        int size, const char* default_char, BOOL* used_default);

UINT GetACP();
BOOL IsValidCodePage(UINT page);
BOOL IsDBCSLeadByteEx(UINT page, BYTE byte);

// 0 for null.
int lstrlenA(const char* text);
int lstrlenW(const WCHAR* text);
