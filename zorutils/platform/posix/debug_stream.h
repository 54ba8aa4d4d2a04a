// zorutils/platform/posix/debug_stream.h: where the debugger stream goes on POSIX.
//
// Windows has a debugger that listens; here the host names a function that takes each text:
//
//     void show(const WCHAR* text, void* context);
//     zor::platform::set_debug_stream(show, &my_window);
//
// Without one the stream is silent, unless the environment has ZOR_DEBUG_STREAM=stderr when the
// first text arrives: then the texts go to the standard error stream as UTF-8.
#pragma once

#include "zorutils/core/zor_api.h"

namespace zor::platform {

// Takes one text of 16-bit units, ended by a zero unit. The text is the library's.
typedef void (*DebugStream)(const WCHAR* text, void* context);

// Sets the stream; null goes back to the environment's choice. Calls of the stream are serialised,
// and once this returns no call of the former stream runs. A text that the stream itself gives rise
// to is dropped; the stream must not call set_debug_stream. Any thread may call.
ZOR_API void set_debug_stream(DebugStream stream, void* context);

} // namespace zor::platform
