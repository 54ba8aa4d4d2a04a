#include "tests/support/ui.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace zor_test {

namespace {

std::map<HWND, WNDPROC> procedures; // of the windows whose texts are counted
std::map<HWND, int> text_sets;

LRESULT CALLBACK counting(HWND window, UINT message, WPARAM first, LPARAM second)
{
    if (message == WM_SETTEXT)
        ++text_sets[window];
    return CallWindowProcW(procedures.at(window), window, message, first, second);
}

HWND counted(HWND window)
{
    procedures[window] = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(counting)));
    return window;
}

INT_PTR CALLBACK dialog_procedure(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

// ModifyMenuW takes an item's check mark away.
void mark(HMENU menu, int position)
{
    CheckMenuItem(menu, static_cast<UINT>(position), MF_BYPOSITION | MF_CHECKED);
}

} // namespace

struct Ui::State
{
    std::vector<HWND> dialogs;
    std::vector<HMENU> menus;
};

Ui::Ui() : m_state(new State) {}

Ui::~Ui()
{
    for (HWND dialog : m_state->dialogs)
        DestroyWindow(dialog);
    for (HMENU menu : m_state->menus)
        DestroyMenu(menu);
    procedures.clear();
    text_sets.clear();
}

HWND Ui::dialog(const char* title)
{
    struct
    {
        DLGTEMPLATE head;
        WORD menu, window_class, title;
    } box = {};
    box.head.style = WS_POPUP | WS_CAPTION;
    box.head.cx = box.head.cy = 100;
    const HWND window = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &box.head, nullptr,
                                                   dialog_procedure, 0);
    EXPECT_NE(window, nullptr) << GetLastError();
    SetWindowTextA(window, title);
    m_state->dialogs.push_back(window);
    return counted(window);
}

HWND Ui::child(HWND parent, const char* class_name, LONG style, const char* text)
{
    WNDCLASSA own = {};
    if (GetClassInfoA(nullptr, class_name, &own) == 0) {
        own.lpfnWndProc = DefWindowProcA;
        own.hInstance = GetModuleHandleW(nullptr);
        own.lpszClassName = class_name;
        RegisterClassA(&own); // it may be there already
    }
    const HWND window =
        CreateWindowExA(0, class_name, text, WS_CHILD | static_cast<DWORD>(style), 0, 0, 50, 20,
                        parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    EXPECT_NE(window, nullptr) << class_name << ": " << GetLastError();
    return counted(window);
}

std::string Ui::text(HWND window) const
{
    wchar_t buffer[1000] = {};
    const int length = GetWindowTextW(window, buffer, 1000);
    return shown(buffer, static_cast<size_t>(length));
}

void Ui::set_text(HWND window, const Wide& text)
{
    const int before = sets(window);
    SetWindowTextW(window, text.c_str());
    text_sets[window] = before;
}

int Ui::sets(HWND window) const
{
    return text_sets[window];
}

HMENU Ui::menu()
{
    m_state->menus.push_back(CreatePopupMenu());
    return m_state->menus.back();
}

void Ui::item(HMENU menu, UINT id, const Wide& text, UINT flags)
{
    // A bitmap item takes a bitmap in the place of its text.
    static const HBITMAP bitmap = CreateBitmap(8, 8, 1, 1, nullptr);
    const wchar_t* const what =
        (flags & MF_BITMAP) != 0 ? reinterpret_cast<const wchar_t*>(bitmap) : text.c_str();
    EXPECT_TRUE(AppendMenuW(menu, flags, id, what));
    mark(menu, GetMenuItemCount(menu) - 1);
}

void Ui::popup(HMENU menu, HMENU submenu, const char* text)
{
    EXPECT_TRUE(AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(submenu), text));
    mark(menu, GetMenuItemCount(menu) - 1);
}

std::string Ui::item_text(HMENU menu, int position) const
{
    wchar_t buffer[1000] = {};
    const int length =
        GetMenuStringW(menu, static_cast<UINT>(position), buffer, 1000, MF_BYPOSITION);
    return shown(buffer, static_cast<size_t>(length));
}

UINT Ui::item_id(HMENU menu, int position) const
{
    return GetMenuItemID(menu, position);
}

HMENU Ui::submenu(HMENU menu, int position) const
{
    return GetSubMenu(menu, position);
}

bool Ui::is_modified(HMENU menu, int position) const
{
    return (GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION) & MF_CHECKED) == 0;
}

} // namespace zor_test
