#include "zorutils/zortext/xlateWnd.h"

#include <iterator>
#include <memory>

#include "zorutils/platform/crt.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/zor_check.h"
#include "zorutils/zortext/xlateTable.h"

namespace {

typedef zor_text::CZorStringT<WCHAR> String;

constexpr const char* source_path = "zortext\\xlateWnd";

CXlateTable* g_xlateTable = nullptr;

String text_of(HWND window)
{
    const int length = GetWindowTextLengthW(window);
    String text;
    WCHAR* const buffer = text.GetBuffer(length + 1);
    buffer[0] = 0;
    GetWindowTextW(window, buffer, length + 1);
    text.ReleaseBuffer(-1);
    return text;
}

bool has_text(HWND window)
{
    return GetWindowTextLengthW(window) > 0;
}

bool never(HWND)
{
    return false;
}

// By the bits of the style and not by a list of styles, as hosts know it.
bool shows_text(HWND window)
{
    const LONG style = GetWindowLongW(window, GWL_STYLE);
    return (style & 0xE) != 0xE && (style & 3) != 3;
}

struct ClassRule
{
    const WCHAR* name;
    bool (*translates)(HWND window);
};

constexpr ClassRule class_rules[] = {
    {ZOR_W("button"), has_text}, {ZOR_W("combobox"), never},    {ZOR_W("edit"), never},
    {ZOR_W("listbox"), never},   {ZOR_W("static"), shows_text},
};

// Whether the walk over a window's children sets this one's text.
bool translates(HWND window)
{
    if (window == nullptr) {
        zor_logging::zor_err_log(source_path, 183, "");
        return false;
    }
    WCHAR name[32] = {};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    for (const ClassRule& rule : class_rules) {
        if (_wcsicmp(name, rule.name) == 0)
            return rule.translates(window);
    }
    return true;
}

} // namespace

void LoadTranslateFile(const String& path)
{
    g_xlateTable = std::make_unique<CXlateTable>(path.c_str()).release();
}

void UnloadTranslateFile()
{
    const std::unique_ptr<CXlateTable> ended(g_xlateTable);
    g_xlateTable = nullptr;
}

String Xlate(const WCHAR* text)
{
    return g_xlateTable != nullptr ? g_xlateTable->Xlate(text) : CXlateTable::RemoveContext(text);
}

int XlateWndTitle(HWND window)
{
    if (window == nullptr) {
        zor_logging::zor_err_log(source_path, 234, "");
        return -1;
    }
    const String text = text_of(window);
    const String translated = Xlate(text.c_str());
    if (translated.Compare(text.c_str()) != 0)
        SetWindowTextW(window, translated.c_str());
    return 0;
}

int XlateWnd(HWND window)
{
    if (window == nullptr) {
        zor_logging::zor_err_log(source_path, 157, "");
        return -1;
    }
    XlateWndTitle(window);
    int children = 0;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        ++children;
        if (translates(child))
            SetWindowTextW(child, Xlate(text_of(child).c_str()).c_str());
    }
    return children;
}

int XlateMenu(HMENU menu, String (*translate)(const WCHAR*))
{
    if (menu == nullptr) {
        zor_logging::zor_err_log(source_path, 102, "");
        return 0;
    }
    const int count = GetMenuItemCount(menu);
    for (int i = 0; i < count; ++i) {
        const auto position = static_cast<UINT>(i);
        const UINT state = GetMenuState(menu, position, MF_BYPOSITION);
        if ((state & (MF_SEPARATOR | MF_BITMAP | MF_MENUBARBREAK | MF_MENUBREAK)) != 0)
            continue;
        WCHAR buffer[256] = {};
        GetMenuStringW(menu, position, buffer, 255, MF_BYPOSITION);
        if (buffer[0] == 0)
            continue;
        const String translated = translate != nullptr ? translate(buffer) : Xlate(buffer);
        if (translated.Compare(buffer) == 0)
            continue;
        if ((state & MF_POPUP) == 0) {
            ModifyMenuW(menu, position, MF_BYPOSITION, GetMenuItemID(menu, i), translated.c_str());
            continue;
        }
        HMENU const submenu = GetSubMenu(menu, i);
        ModifyMenuW(menu, position, MF_BYPOSITION | MF_POPUP, reinterpret_cast<UINT_PTR>(submenu),
                    translated.c_str());
        XlateMenu(submenu, nullptr);
    }
    return 0;
}
