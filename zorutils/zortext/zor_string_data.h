// zorutils/zortext/zor_string_data.h: the nil block of the string, one for both widths.
//
// The block and its addresses are exported data: modules that inline the string's readers rely on
// them, and a string is nil if it points at the block's fourth word, by address alone.
#pragma once

#include "zorutils/core/zor_api.h"

namespace zor_string_internal_data {

// The nil block: reference count -1, length 0, capacity 0, and the terminator of both widths.
// It lies in writable storage and is never counted nor freed.
extern ZOR_API LONG g_afxInitData[4];

// Holds the address of the nil block's fourth word. This pointer itself, seen as a string object,
// is the shared empty string.
extern ZOR_API void* g_afxNilStr;

// The empty texts.
extern ZOR_API char afxChNil;
extern ZOR_API WCHAR afxChNilW;

// The address of g_afxInitData, for modules that cannot import data.
ZOR_API LONG* get_afxInitData();

// The address of g_afxNilStr.
ZOR_API void** get_afxNilStr();

} // namespace zor_string_internal_data
