#include "zorutils/platform/posix/debug_output.h"

#include "zorutils/platform/posix/debug_stream.h"

#include <mutex>
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

std::mutex g_sink_mutex;
Sink g_sink = {nullptr, nullptr};
thread_local bool t_in_stream = false;

void append_utf8(std::string& out, char32_t point)
{
    const auto byte = [&out](char32_t value) { out += static_cast<char>(value); };
    if (point < 0x80) {
        byte(point);
    } else if (point < 0x800) {
        byte(0xC0 | (point >> 6));
        byte(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        byte(0xE0 | (point >> 12));
        byte(0x80 | ((point >> 6) & 0x3F));
        byte(0x80 | (point & 0x3F));
    } else {
        byte(0xF0 | (point >> 18));
        byte(0x80 | ((point >> 12) & 0x3F));
        byte(0x80 | ((point >> 6) & 0x3F));
        byte(0x80 | (point & 0x3F));
    }
}

void write_to_stderr(const WCHAR* text, void*)
{
    std::string bytes;
    for (; *text; ++text) {
        char32_t point = *text;
        const bool high = point >= 0xD800 && point < 0xDC00;
        if (high && text[1] >= 0xDC00 && text[1] < 0xE000) {
            point = 0x10000 + ((point - 0xD800) << 10) + (text[1] - 0xDC00u);
            ++text;
        }
        append_utf8(bytes, point);
    }
    fwrite(bytes.data(), 1, bytes.size(), stderr);
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
    const std::lock_guard<std::mutex> lock(g_sink_mutex);
    g_sink = {stream, context};
}

void OutputDebugStringW(LPCWSTR text)
{
    if (t_in_stream)
        return;
    const std::lock_guard<std::mutex> lock(g_sink_mutex);
    const DebugStream stream = g_sink.stream ? g_sink.stream : stream_of_environment();
    if (!stream)
        return;
    t_in_stream = true;
    stream(text ? text : ZOR_W(""), g_sink.context);
    t_in_stream = false;
}

void OutputDebugStringA(LPCSTR text)
{
    std::basic_string<WCHAR> wide;
    for (; text && *text; ++text)
        wide += static_cast<WCHAR>(static_cast<unsigned char>(*text));
    OutputDebugStringW(wide.c_str());
}
