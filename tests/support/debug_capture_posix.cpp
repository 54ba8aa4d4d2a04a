#include "tests/support/debug_capture.h"

#include "zorutils/platform/posix/debug_stream.h"

#include <mutex>

namespace {

std::mutex g_mutex;
std::vector<std::u16string> g_texts;

void take(const WCHAR* text, void*)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    g_texts.emplace_back(text);
}

} // namespace

DebugCapture::DebugCapture()
{
    g_texts.clear();
    zor::platform::set_debug_stream(take, nullptr);
}

DebugCapture::~DebugCapture()
{
    zor::platform::set_debug_stream(nullptr, nullptr);
}

std::vector<std::u16string> DebugCapture::texts() const
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    return g_texts;
}
