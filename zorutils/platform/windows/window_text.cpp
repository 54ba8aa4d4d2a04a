#include "zorutils/platform/window_text.h"

#include "zorutils/platform/winapi.h"

namespace zor::platform {

WindowText::WindowText(HWND window) : m_window(window)
{
    RECT area;
    if (window == nullptr || !GetClientRect(window, &area))
        return;
    m_width = area.right - area.left;
    const HDC context = GetDC(window);
    m_context = context;
    const LRESULT font = SendMessageW(window, WM_GETFONT, 0, 0);
    if (context != nullptr && font != 0)
        m_font = SelectObject(context, reinterpret_cast<HFONT>(font));
}

WindowText::~WindowText()
{
    const HDC context = static_cast<HDC>(m_context);
    if (m_font != nullptr)
        SelectObject(context, m_font);
    if (context != nullptr)
        ReleaseDC(m_window, context);
}

bool WindowText::fits(const WCHAR* text, int length) const
{
    SIZE size;
    return m_context == nullptr ||
           !GetTextExtentPoint32W(static_cast<HDC>(m_context), text, length, &size) ||
           size.cx <= m_width;
}

} // namespace zor::platform
