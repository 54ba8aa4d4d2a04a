// The system tells a debugger of a text by raising an exception; a handler in front of all others
// takes the place of the debugger.
#include "tests/support/debug_capture.h"

#include <mutex>
#include <windows.h>

namespace {

constexpr DWORD narrow_text = 0x40010006; // DBG_PRINTEXCEPTION_C
constexpr DWORD wide_text = 0x4001000A;   // DBG_PRINTEXCEPTION_WIDE_C

std::mutex g_mutex;
std::vector<std::u16string> g_texts;
void* g_handler;

std::u16string from_narrow(const char* text)
{
    wchar_t units[4096];
    const int count = MultiByteToWideChar(CP_ACP, 0, text, -1, units, 4096);
    return {reinterpret_cast<const char16_t*>(units),
            count > 0 ? static_cast<size_t>(count - 1) : 0};
}

LONG CALLBACK take(EXCEPTION_POINTERS* pointers)
{
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode != narrow_text && record.ExceptionCode != wide_text)
        return EXCEPTION_CONTINUE_SEARCH;
    const ULONG_PTR text = record.ExceptionInformation[1];
    const std::lock_guard<std::mutex> lock(g_mutex);
    if (record.ExceptionCode == wide_text)
        g_texts.emplace_back(reinterpret_cast<const char16_t*>(text));
    else
        g_texts.push_back(from_narrow(reinterpret_cast<const char*>(text)));
    return EXCEPTION_CONTINUE_EXECUTION;
}

} // namespace

DebugCapture::DebugCapture()
{
    g_texts.clear();
    g_handler = AddVectoredExceptionHandler(1, take);
}

DebugCapture::~DebugCapture()
{
    RemoveVectoredExceptionHandler(g_handler);
}

std::vector<std::u16string> DebugCapture::texts() const
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    return g_texts;
}
