// tests/support/ui.h: windows and menus for tests: the system's own on Windows, else in memory.
#pragma once

#include <memory>
#include <string>

#include "tests/support/text.h"
#include "zorutils/platform/win_types.h"

namespace zor_test {

class Ui
{
public:
    Ui();
    ~Ui();
    Ui(const Ui&) = delete;
    Ui& operator=(const Ui&) = delete;

    // A dialog with that title.
    HWND dialog(const char* title);
    // A window below `parent`. A class that the system does not have is made.
    HWND child(HWND parent, const char* class_name, LONG style, const char* text);
    std::string text(HWND window) const;
    void set_text(HWND window, const Wide& text); // not counted
    // How often the window's text was set.
    int sets(HWND window) const;

    HMENU menu();
    // An item at the end, with flags of AppendMenuW; `text` is taken as it is.
    void item(HMENU menu, UINT id, const Wide& text, UINT flags = 0);
    void popup(HMENU menu, HMENU submenu, const char* text);
    std::string item_text(HMENU menu, int position) const;
    UINT item_id(HMENU menu, int position) const;
    HMENU submenu(HMENU menu, int position) const;
    // Whether ModifyMenuW was called for it.
    bool is_modified(HMENU menu, int position) const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace zor_test
