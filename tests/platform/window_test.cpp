// Windows and menus as the walkers ask for them.
#include <gtest/gtest.h>

#include "tests/support/ui.h"
#include "zorutils/platform/winapi.h"

using namespace zor_test;

TEST(Windows, ClassNamesAreCutToTheBuffer)
{
    Ui ui;
    HWND const child = ui.child(ui.dialog("d"), "AClassWithAVeryLongNameOfThirtyFive", 0, "");
    WCHAR name[40] = {};
    EXPECT_EQ(GetClassNameW(child, name, 40), 35);
    EXPECT_EQ(GetClassNameW(child, name, 32), 31);
    EXPECT_EQ(shown(name), "AClassWithAVeryLongNameOfThirty");
    EXPECT_EQ(GetClassNameW(child, name, 2), 1);
    EXPECT_EQ(shown(name), "A");
}

TEST(Windows, TextsAreCutToTheBuffer)
{
    Ui ui;
    HWND const dialog = ui.dialog("title");
    EXPECT_EQ(GetWindowTextLengthW(dialog), 5);
    WCHAR text[10] = {};
    EXPECT_EQ(GetWindowTextW(dialog, text, 10), 5);
    EXPECT_EQ(GetWindowTextW(dialog, text, 5), 4);
    EXPECT_EQ(shown(text), "titl");
    EXPECT_TRUE(SetWindowTextW(dialog, ZOR_W("other")));
    EXPECT_EQ(ui.text(dialog), "other");
}

TEST(Windows, ChildrenAreWalked)
{
    Ui ui;
    HWND const dialog = ui.dialog("d");
    EXPECT_EQ(GetWindow(dialog, GW_CHILD), nullptr);
    HWND const first = ui.child(dialog, "BUTTON", 0, "1");
    HWND const second = ui.child(dialog, "BUTTON", 3, "2");
    EXPECT_EQ(GetWindow(dialog, GW_CHILD), first);
    EXPECT_EQ(GetWindow(first, GW_HWNDNEXT), second);
    EXPECT_EQ(GetWindow(second, GW_HWNDNEXT), nullptr);
    EXPECT_EQ(GetWindow(second, GW_CHILD), nullptr);
    EXPECT_EQ(GetWindowLongW(second, GWL_STYLE) & 0xF, 3);
}

TEST(Menus, ItemsAreToldByPosition)
{
    Ui ui;
    HMENU const menu = ui.menu(), submenu = ui.menu();
    EXPECT_EQ(GetMenuItemCount(menu), 0);
    ui.item(menu, 7, "text");
    ui.item(menu, 8, "", MF_SEPARATOR);
    ui.item(submenu, 9, "inner");
    ui.item(submenu, 10, "inner");
    ui.popup(menu, submenu, "pop");
    EXPECT_EQ(GetMenuItemCount(menu), 3);
    EXPECT_EQ(GetMenuItemID(menu, 0), 7u);
    EXPECT_EQ(GetMenuItemID(menu, 2), ~0u) << "a pop-up has none";
    EXPECT_EQ(GetSubMenu(menu, 0), nullptr);
    EXPECT_EQ(GetSubMenu(menu, 2), submenu);
    EXPECT_EQ(GetMenuState(menu, 1, MF_BYPOSITION) & MF_SEPARATOR, MF_SEPARATOR);
    EXPECT_EQ(GetMenuState(menu, 2, MF_BYPOSITION) & 0xFF10, 0x0210u)
        << "the number of its items stands above its flags";
    EXPECT_EQ(GetMenuState(menu, 3, MF_BYPOSITION), ~0u);
    WCHAR text[10] = {};
    EXPECT_EQ(GetMenuStringW(menu, 0, text, 10, MF_BYPOSITION), 4);
    EXPECT_EQ(GetMenuStringW(menu, 0, text, 4, MF_BYPOSITION), 3);
    EXPECT_EQ(shown(text), "tex");
    EXPECT_EQ(GetMenuStringW(menu, 3, text, 10, MF_BYPOSITION), 0);
}

TEST(Menus, ModifyingReplacesTheItem)
{
    Ui ui;
    HMENU const menu = ui.menu(), submenu = ui.menu();
    ui.item(menu, 7, "text");
    ui.popup(menu, submenu, "pop");
    EXPECT_TRUE(ModifyMenuW(menu, 0, MF_BYPOSITION, 7, ZOR_W("other")));
    EXPECT_EQ(ui.item_text(menu, 0), "other");
    EXPECT_TRUE(ui.is_modified(menu, 0));
    EXPECT_FALSE(ui.is_modified(menu, 1));
    EXPECT_TRUE(ModifyMenuW(menu, 1, MF_BYPOSITION | MF_POPUP, reinterpret_cast<UINT_PTR>(submenu),
                            ZOR_W("up")));
    EXPECT_EQ(GetSubMenu(menu, 1), submenu);
    EXPECT_FALSE(ModifyMenuW(menu, 2, MF_BYPOSITION, 7, ZOR_W("other")));
}

TEST(Windows, HandlesOfNothingAreRefused)
{
    HWND const window = reinterpret_cast<HWND>(intptr_t{0x7770});
    HMENU const menu = reinterpret_cast<HMENU>(intptr_t{0x7770});
    WCHAR text[10] = {'x'};
    EXPECT_EQ(GetClassNameW(window, text, 10), 0);
    EXPECT_EQ(GetWindowLongW(window, GWL_STYLE), 0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
    EXPECT_EQ(GetWindow(window, GW_CHILD), nullptr);
    EXPECT_EQ(GetWindowTextLengthW(window), 0);
    EXPECT_EQ(GetWindowTextW(window, text, 10), 0);
    EXPECT_FALSE(SetWindowTextW(window, ZOR_W("x")));
    EXPECT_EQ(GetMenuItemCount(menu), -1);
    EXPECT_EQ(GetMenuState(menu, 0, MF_BYPOSITION), ~0u);
    EXPECT_EQ(GetMenuStringW(menu, 0, text, 10, MF_BYPOSITION), 0);
    EXPECT_EQ(GetMenuItemID(menu, 0), ~0u);
    EXPECT_EQ(GetSubMenu(menu, 0), nullptr);
    EXPECT_FALSE(ModifyMenuW(menu, 0, MF_BYPOSITION, 1, ZOR_W("x")));
}
