#include "zorutils/platform/posix/debug_output.h"

#include "zorutils/platform/posix/codepage.h"
#include "zorutils/platform/posix/debug_stream.h"
#include "zorutils/platform/posix/fault_mutex.h"
#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/utf8.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <string>

namespace {

using zor::platform::DebugStream;

struct Sink
{
    DebugStream stream;
    void* context;
};

zor::platform::FaultMutex g_sink_mutex;
Sink g_sink = {nullptr, nullptr};
thread_local bool t_in_stream = false;

void write_to_stderr(const WCHAR* text, void*)
{
    const int length = lstrlenW(text);
    std::string bytes(static_cast<size_t>(length) * 3, '\0'); // a unit has at most 3 bytes
    const int size = static_cast<int>(bytes.size());
    const int count = zor::platform::wide_to_utf8(text, length, bytes.data(), size, false);
    fwrite(bytes.data(), 1, static_cast<size_t>(count), stderr);
}

// Read once: the environment may change later on another thread.
DebugStream stream_of_environment()
{
    static const DebugStream stream = [] {
        const char* choice = getenv("ZOR_DEBUG_STREAM");
        return choice && strcmp(choice, "stderr") == 0 ? write_to_stderr : DebugStream();
    }();
    return stream;
}

} // namespace

void zor::platform::set_debug_stream(DebugStream stream, void* context)
{
    const zor::platform::FaultLock lock(g_sink_mutex);
    g_sink = {stream, context};
}

void OutputDebugStringW(LPCWSTR text)
{
    if (t_in_stream)
        return;
    const zor::platform::FaultLock lock(g_sink_mutex);
    const DebugStream stream = g_sink.stream ? g_sink.stream : stream_of_environment();
    if (!stream)
        return;
    t_in_stream = true;
    stream(text ? text : ZOR_W(""), g_sink.context);
    t_in_stream = false;
}

void OutputDebugStringA(LPCSTR text)
{
    const DWORD error = GetLastError();
    const int length = lstrlenA(text);
    std::basic_string<WCHAR> wide(static_cast<size_t>(length), 0);
    if (length != 0) {
        const int units = MultiByteToWideChar(CP_ACP, 0, text, length, wide.data(), length);
        wide.resize(static_cast<size_t>(units));
    }
    SetLastError(error);
    OutputDebugStringW(wide.c_str());
}
