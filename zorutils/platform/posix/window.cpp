#include "zorutils/platform/posix/window.h"

#include <atomic>

#include "zorutils/platform/posix/message_box.h"
#include "zorutils/platform/posix/system_error.h"
#include "zorutils/platform/posix/window_system.h"
#include "zorutils/platform/window_text.h"

using namespace zor::platform;

namespace {

std::atomic<WindowSystem*> the_system{nullptr};

// The operation of the window system; without one, `failure` with the last error.
template <class Result, class Operation>
Result on_window(Result failure, Operation operation)
{
    WindowSystem* const system = window_system();
    return system != nullptr ? operation(*system) : fail_with(ERROR_INVALID_WINDOW_HANDLE, failure);
}

template <class Result, class Operation>
Result on_menu(Result failure, Operation operation)
{
    WindowSystem* const system = window_system();
    return system != nullptr ? operation(*system) : fail_with(ERROR_INVALID_MENU_HANDLE, failure);
}

} // namespace

int GetClassNameW(HWND window, LPWSTR buffer, int size)
{
    return on_window(0, [=](WindowSystem& s) { return s.GetClassNameW(window, buffer, size); });
}

LONG GetWindowLongW(HWND window, int index)
{
    return on_window(LONG{0}, [=](WindowSystem& s) { return s.GetWindowLongW(window, index); });
}

HWND GetWindow(HWND window, UINT relation)
{
    return on_window(HWND{}, [=](WindowSystem& s) { return s.GetWindow(window, relation); });
}

int GetWindowTextLengthW(HWND window)
{
    return on_window(0, [=](WindowSystem& s) { return s.GetWindowTextLengthW(window); });
}

int GetWindowTextW(HWND window, LPWSTR buffer, int size)
{
    return on_window(0, [=](WindowSystem& s) { return s.GetWindowTextW(window, buffer, size); });
}

BOOL SetWindowTextW(HWND window, LPCWSTR text)
{
    return on_window(FALSE, [=](WindowSystem& s) { return s.SetWindowTextW(window, text); });
}

int GetMenuItemCount(HMENU menu)
{
    return on_menu(-1, [=](WindowSystem& s) { return s.GetMenuItemCount(menu); });
}

UINT GetMenuState(HMENU menu, UINT item, UINT flags)
{
    return on_menu(~0u, [=](WindowSystem& s) { return s.GetMenuState(menu, item, flags); });
}

int GetMenuStringW(HMENU menu, UINT item, LPWSTR buffer, int size, UINT flags)
{
    return on_menu(
        0, [=](WindowSystem& s) { return s.GetMenuStringW(menu, item, buffer, size, flags); });
}

UINT GetMenuItemID(HMENU menu, int position)
{
    return on_menu(~0u, [=](WindowSystem& s) { return s.GetMenuItemID(menu, position); });
}

HMENU GetSubMenu(HMENU menu, int position)
{
    return on_menu(HMENU{}, [=](WindowSystem& s) { return s.GetSubMenu(menu, position); });
}

BOOL ModifyMenuW(HMENU menu, UINT item, UINT flags, UINT_PTR id_or_menu, LPCWSTR text)
{
    return on_menu(
        FALSE, [=](WindowSystem& s) { return s.ModifyMenuW(menu, item, flags, id_or_menu, text); });
}

HWND GetActiveWindow()
{
    WindowSystem* const system = window_system();
    return system != nullptr ? system->GetActiveWindow() : nullptr;
}

HWND GetLastActivePopup(HWND owner)
{
    WindowSystem* const system = window_system();
    return system != nullptr ? system->GetLastActivePopup(owner) : owner;
}

namespace zor::platform {

WindowSystem::~WindowSystem() = default;

int WindowSystem::MessageBoxW(HWND, LPCWSTR text, LPCWSTR caption, UINT style)
{
    return message_box_on_terminal(text, caption, style);
}

HWND WindowSystem::GetActiveWindow()
{
    return nullptr;
}

HWND WindowSystem::GetLastActivePopup(HWND owner)
{
    return owner;
}

bool WindowSystem::TextFits(HWND, LPCWSTR, int)
{
    return true;
}

WindowSystem* window_system()
{
    return the_system.load(std::memory_order_acquire);
}

void set_window_system(WindowSystem* system)
{
    the_system.store(system, std::memory_order_release);
}

// --- Widths of texts.

WindowText::WindowText(HWND window) : m_window(window), m_context(window_system()) {}

WindowText::~WindowText() = default;

bool WindowText::fits(const WCHAR* text, int length) const
{
    auto* const system = static_cast<WindowSystem*>(m_context);
    return system == nullptr || m_window == nullptr || system->TextFits(m_window, text, length);
}

} // namespace zor::platform
