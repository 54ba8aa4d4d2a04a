// zorutils/platform/posix/debug_output.h: the debugger stream.
//
// debug_stream.h sets where the texts go. Both calls return nothing, leave the last error as it
// was, take null as an empty text and may be called by any thread; texts come out whole and in
// order.
#pragma once

#include "zorutils/platform/win_types.h"

// `text` is in the active code page.
void OutputDebugStringA(LPCSTR text);
void OutputDebugStringW(LPCWSTR text);
