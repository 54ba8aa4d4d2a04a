// zorutils/platform/window_text.h: how wide texts are in a window.
#pragma once

#include "zorutils/platform/win_types.h"

namespace zor::platform {

// Measures in the window's own font, from its making to its end; on the window's thread.
class WindowText
{
public:
    explicit WindowText(HWND window);
    ~WindowText();
    WindowText(const WindowText&) = delete;
    WindowText& operator=(const WindowText&) = delete;

    // Whether a text of `length` units fits the client area's width. True where it cannot be
    // measured.
    bool fits(const WCHAR* text, int length) const;

private:
    HWND m_window;
    void* m_context = nullptr;
    [[maybe_unused]] void* m_font = nullptr; // the one that was selected before
    [[maybe_unused]] int m_width = 0;
};

} // namespace zor::platform
