// tests/support/memory_windows.h: windows and menus that are in memory only.
//
// A complete window system for the library on POSIX (platform/posix/window_system.h), and a model
// for hosts that bring their own.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "zorutils/platform/posix/window_system.h"

namespace zor_test {

struct MemoryWindow
{
    std::u16string class_name, text;
    LONG style = 0;
    MemoryWindow* parent = nullptr;
    std::vector<MemoryWindow*> children; // in their order
    int text_sets = 0;                   // calls of SetWindowTextW
};

struct MemoryMenu;

struct MemoryMenuItem
{
    UINT flags = 0; // MF_SEPARATOR and its kin
    UINT_PTR id = 0;
    MemoryMenu* submenu = nullptr;
    std::u16string text;
    int modifications = 0; // calls of ModifyMenuW
};

struct MemoryMenu
{
    std::vector<MemoryMenuItem> items;
};

class MemoryWindows : public zor::platform::WindowSystem
{
public:
    // The handles stay good as long as this object.
    HWND add_window(const std::u16string& class_name, LONG style, const std::u16string& text,
                    HWND parent = nullptr);
    HMENU add_menu();
    void add_item(HMENU menu, UINT flags, UINT_PTR id, const std::u16string& text,
                  HMENU submenu = nullptr);
    const MemoryWindow& window(HWND handle) const { return *m_windows.at(handle); }
    const MemoryMenuItem& item(HMENU menu, size_t position) const
    {
        return m_menus.at(menu)->items.at(position);
    }

    int GetClassNameW(HWND window, LPWSTR buffer, int size) override;
    LONG GetWindowLongW(HWND window, int index) override;
    HWND GetWindow(HWND window, UINT relation) override;
    int GetWindowTextLengthW(HWND window) override;
    int GetWindowTextW(HWND window, LPWSTR buffer, int size) override;
    BOOL SetWindowTextW(HWND window, LPCWSTR text) override;
    int GetMenuItemCount(HMENU menu) override;
    UINT GetMenuState(HMENU menu, UINT item, UINT flags) override;
    int GetMenuStringW(HMENU menu, UINT item, LPWSTR buffer, int size, UINT flags) override;
    UINT GetMenuItemID(HMENU menu, int position) override;
    HMENU GetSubMenu(HMENU menu, int position) override;
    BOOL ModifyMenuW(HMENU menu, UINT item, UINT flags, UINT_PTR id_or_menu, LPCWSTR text) override;

private:
    MemoryWindow* find(HWND handle) const;
    MemoryMenuItem* find(HMENU menu, UINT position) const;

    std::map<HWND, std::unique_ptr<MemoryWindow>> m_windows;
    std::map<HMENU, std::unique_ptr<MemoryMenu>> m_menus;
};

} // namespace zor_test
