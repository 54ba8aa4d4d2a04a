// zorutils/platform/posix/window.h: windows and menus, those of the host's window system.
//
// Without a window system no handle names anything: the calls fail with
// ERROR_INVALID_WINDOW_HANDLE and ERROR_INVALID_MENU_HANDLE.
#pragma once

#include "zorutils/platform/win_types.h"

#define GWL_STYLE (-16)
#define GW_HWNDNEXT 2
#define GW_CHILD 5
#define MF_BITMAP 0x00000004u
#define MF_POPUP 0x00000010u
#define MF_MENUBARBREAK 0x00000020u
#define MF_MENUBREAK 0x00000040u
#define MF_BYPOSITION 0x00000400u
#define MF_SEPARATOR 0x00000800u

int GetClassNameW(HWND window, LPWSTR buffer, int size);
LONG GetWindowLongW(HWND window, int index);
HWND GetWindow(HWND window, UINT relation);
int GetWindowTextLengthW(HWND window);
int GetWindowTextW(HWND window, LPWSTR buffer, int size);
BOOL SetWindowTextW(HWND window, LPCWSTR text);

int GetMenuItemCount(HMENU menu);
UINT GetMenuState(HMENU menu, UINT item, UINT flags);
int GetMenuStringW(HMENU menu, UINT item, LPWSTR buffer, int size, UINT flags);
UINT GetMenuItemID(HMENU menu, int position);
HMENU GetSubMenu(HMENU menu, int position);
BOOL ModifyMenuW(HMENU menu, UINT item, UINT flags, UINT_PTR id_or_menu, LPCWSTR text);

HWND GetActiveWindow();
HWND GetLastActivePopup(HWND owner);

namespace zor::platform {

class WindowSystem;

// The host's, or null.
WindowSystem* window_system();

} // namespace zor::platform
