#include "zorutils/platform/window_text.h"

namespace zor::platform {

// There are no windows to measure in.
WindowText::WindowText(HWND window) : m_window(window) {}

WindowText::~WindowText() = default;

bool WindowText::fits(const WCHAR*, int) const
{
    return m_context == nullptr || m_font == nullptr || m_window == nullptr || m_width == 0;
}

} // namespace zor::platform
