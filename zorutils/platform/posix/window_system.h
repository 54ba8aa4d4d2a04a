// zorutils/platform/posix/window_system.h: windows and menus on POSIX, where the system has none.
//
// A host that has windows derives from WindowSystem and sets its object:
//
//     MyWindows windows;
//     zor::platform::set_window_system(&windows);
//     XlateWnd(windows.handle_of(dialog));
//
// tests/support/memory_windows.h is a model. Without one no window and no menu exists, and message
// boxes go to the terminal if there is one, and are else answered with the first button.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"

namespace zor::platform {

// Each operation does what the Win32 call of its name does, on handles that are the host's own;
// the library passes them on and never looks into them. Texts are of 16-bit units and terminated,
// sizes of buffers count units with the terminator. The library calls on the thread that called it,
// and lets an exception through.
class ZOR_API WindowSystem
{
public:
    virtual ~WindowSystem();

    // Windows.
    virtual int GetClassNameW(HWND window, LPWSTR buffer, int size) = 0;
    virtual LONG GetWindowLongW(HWND window, int index) = 0; // GWL_STYLE only
    virtual HWND GetWindow(HWND window, UINT relation) = 0;  // GW_CHILD and GW_HWNDNEXT only
    virtual int GetWindowTextLengthW(HWND window) = 0;
    virtual int GetWindowTextW(HWND window, LPWSTR buffer, int size) = 0;
    virtual BOOL SetWindowTextW(HWND window, LPCWSTR text) = 0;

    // Menus; items are told by their position, from 0.
    virtual int GetMenuItemCount(HMENU menu) = 0;
    virtual UINT GetMenuState(HMENU menu, UINT item, UINT flags) = 0;
    virtual int GetMenuStringW(HMENU menu, UINT item, LPWSTR buffer, int size, UINT flags) = 0;
    virtual UINT GetMenuItemID(HMENU menu, int position) = 0;
    virtual HMENU GetSubMenu(HMENU menu, int position) = 0;
    virtual BOOL ModifyMenuW(HMENU menu, UINT item, UINT flags, UINT_PTR id_or_menu,
                             LPCWSTR text) = 0;

    // Boxes. These ask the terminal, know no window, and take every text for one that fits.
    virtual int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT style);
    virtual HWND GetActiveWindow();
    virtual HWND GetLastActivePopup(HWND owner);
    // Whether a text of `length` units fits the window's width in the window's font.
    virtual bool TextFits(HWND window, LPCWSTR text, int length);
};

// Sets the window system; null takes it away. The object stays the caller's and must outlive its
// use. Must not overlap with a call that uses windows.
ZOR_API void set_window_system(WindowSystem* system);

} // namespace zor::platform
