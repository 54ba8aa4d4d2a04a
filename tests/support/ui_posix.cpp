#include <string.h>

#include "tests/support/memory_windows.h"
#include "tests/support/ui.h"

namespace zor_test {

namespace {

std::u16string wide(const char* text)
{
    return std::u16string(text, text + strlen(text));
}

std::string plain(const std::u16string& text)
{
    return shown(text.data(), text.size());
}

} // namespace

struct Ui::State : MemoryWindows
{
};

Ui::Ui() : m_state(new State)
{
    zor::platform::set_window_system(m_state.get());
}

Ui::~Ui()
{
    zor::platform::set_window_system(nullptr);
}

HWND Ui::dialog(const char* title)
{
    return m_state->add_window(u"#32770", 0, wide(title));
}

HWND Ui::child(HWND parent, const char* class_name, LONG style, const char* text)
{
    constexpr LONG child_style = 0x40000000;
    return m_state->add_window(wide(class_name), child_style | style, wide(text), parent);
}

std::string Ui::text(HWND window) const
{
    return plain(m_state->window(window).text);
}

void Ui::set_text(HWND window, const Wide& text)
{
    const_cast<MemoryWindow&>(m_state->window(window)).text = text.c_str();
}

int Ui::sets(HWND window) const
{
    return m_state->window(window).text_sets;
}

HMENU Ui::menu()
{
    return m_state->add_menu();
}

void Ui::item(HMENU menu, UINT id, const Wide& text, UINT flags)
{
    m_state->add_item(menu, flags, id, text.c_str());
}

void Ui::popup(HMENU menu, HMENU submenu, const char* text)
{
    m_state->add_item(menu, 0, 0, wide(text), submenu);
}

std::string Ui::item_text(HMENU menu, int position) const
{
    return plain(m_state->item(menu, static_cast<size_t>(position)).text);
}

UINT Ui::item_id(HMENU menu, int position) const
{
    return m_state->GetMenuItemID(menu, position);
}

HMENU Ui::submenu(HMENU menu, int position) const
{
    return m_state->GetSubMenu(menu, position);
}

bool Ui::is_modified(HMENU menu, int position) const
{
    return m_state->item(menu, static_cast<size_t>(position)).modifications > 0;
}

} // namespace zor_test
