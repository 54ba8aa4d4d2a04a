#include "tests/support/memory_windows.h"

#include <algorithm>

namespace zor_test {

namespace {

constexpr int style_index = -16;
constexpr UINT next_sibling = 2, first_child = 5;
constexpr UINT popup = 0x10;

// As much as a buffer of `size` units takes, terminated; the number of units without the end.
int copy_text(const std::u16string& text, LPWSTR buffer, int size)
{
    if (size <= 0)
        return 0;
    const size_t count = std::min(text.size(), static_cast<size_t>(size) - 1);
    std::copy_n(text.begin(), count, buffer);
    buffer[count] = 0;
    return static_cast<int>(count);
}

// A handle is the address of what it stands for.
template <class Handle, class Object>
Handle handle_of(const Object* object)
{
    return reinterpret_cast<Handle>(const_cast<Object*>(object));
}

} // namespace

HWND MemoryWindows::add_window(const std::u16string& class_name, LONG style,
                               const std::u16string& text, HWND parent)
{
    auto window = std::make_unique<MemoryWindow>();
    window->class_name = class_name;
    window->style = style;
    window->text = text;
    window->parent = find(parent);
    if (window->parent != nullptr)
        window->parent->children.push_back(window.get());
    HWND const handle = handle_of<HWND>(window.get());
    m_windows[handle] = std::move(window);
    return handle;
}

HMENU MemoryWindows::add_menu()
{
    auto menu = std::make_unique<MemoryMenu>();
    HMENU const handle = handle_of<HMENU>(menu.get());
    m_menus[handle] = std::move(menu);
    return handle;
}

void MemoryWindows::add_item(HMENU menu, UINT flags, UINT_PTR id, const std::u16string& text,
                             HMENU submenu)
{
    MemoryMenuItem item;
    item.flags = flags;
    item.id = id;
    item.text = text;
    item.submenu = submenu == nullptr ? nullptr : m_menus.at(submenu).get();
    m_menus.at(menu)->items.push_back(item);
}

MemoryWindow* MemoryWindows::find(HWND handle) const
{
    const auto found = m_windows.find(handle);
    return found == m_windows.end() ? nullptr : found->second.get();
}

MemoryMenuItem* MemoryWindows::find(HMENU menu, UINT position) const
{
    const auto found = m_menus.find(menu);
    if (found == m_menus.end() || position >= found->second->items.size())
        return nullptr;
    return &found->second->items[position];
}

int MemoryWindows::GetClassNameW(HWND window, LPWSTR buffer, int size)
{
    const MemoryWindow* const found = find(window);
    return found == nullptr ? 0 : copy_text(found->class_name, buffer, size);
}

LONG MemoryWindows::GetWindowLongW(HWND window, int index)
{
    const MemoryWindow* const found = find(window);
    return found == nullptr || index != style_index ? 0 : found->style;
}

HWND MemoryWindows::GetWindow(HWND window, UINT relation)
{
    const MemoryWindow* const found = find(window);
    if (found == nullptr)
        return nullptr;
    if (relation == first_child)
        return found->children.empty() ? nullptr : handle_of<HWND>(found->children.front());
    if (relation != next_sibling || found->parent == nullptr)
        return nullptr;
    const auto& siblings = found->parent->children;
    const auto next = std::find(siblings.begin(), siblings.end(), found) + 1;
    return next == siblings.end() ? nullptr : handle_of<HWND>(*next);
}

int MemoryWindows::GetWindowTextLengthW(HWND window)
{
    const MemoryWindow* const found = find(window);
    return found == nullptr ? 0 : static_cast<int>(found->text.size());
}

int MemoryWindows::GetWindowTextW(HWND window, LPWSTR buffer, int size)
{
    const MemoryWindow* const found = find(window);
    return found == nullptr ? 0 : copy_text(found->text, buffer, size);
}

BOOL MemoryWindows::SetWindowTextW(HWND window, LPCWSTR text)
{
    MemoryWindow* const found = find(window);
    if (found == nullptr)
        return FALSE;
    ++found->text_sets;
    found->text = text;
    return TRUE;
}

int MemoryWindows::GetMenuItemCount(HMENU menu)
{
    const auto found = m_menus.find(menu);
    return found == m_menus.end() ? -1 : static_cast<int>(found->second->items.size());
}

UINT MemoryWindows::GetMenuState(HMENU menu, UINT item, UINT)
{
    const MemoryMenuItem* const found = find(menu, item);
    if (found == nullptr)
        return ~0u;
    // The number of a pop-up's items stands above its flags.
    if (found->submenu != nullptr)
        return static_cast<UINT>(found->submenu->items.size()) << 8 |
               ((found->flags | popup) & 0xFF);
    return found->flags;
}

int MemoryWindows::GetMenuStringW(HMENU menu, UINT item, LPWSTR buffer, int size, UINT)
{
    const MemoryMenuItem* const found = find(menu, item);
    return found == nullptr ? 0 : copy_text(found->text, buffer, size);
}

UINT MemoryWindows::GetMenuItemID(HMENU menu, int position)
{
    const MemoryMenuItem* const found = find(menu, static_cast<UINT>(position));
    return found == nullptr || found->submenu != nullptr ? ~0u : static_cast<UINT>(found->id);
}

HMENU MemoryWindows::GetSubMenu(HMENU menu, int position)
{
    const MemoryMenuItem* const found = find(menu, static_cast<UINT>(position));
    return found == nullptr ? nullptr : handle_of<HMENU>(found->submenu);
}

BOOL MemoryWindows::ModifyMenuW(HMENU menu, UINT item, UINT flags, UINT_PTR id_or_menu,
                                LPCWSTR text)
{
    MemoryMenuItem* const found = find(menu, item);
    if (found == nullptr)
        return FALSE;
    ++found->modifications;
    found->text = text;
    found->flags = 0;
    if ((flags & popup) != 0)
        found->submenu = reinterpret_cast<MemoryMenu*>(id_or_menu);
    else
        found->id = id_or_menu;
    return TRUE;
}

} // namespace zor_test
