// zorutils/zortext/xlateWnd.h: the program's translation, of texts, windows and menus.
//
//     LoadTranslateFile(path);              // once, at the start
//     SetTitle(Xlate(ZOR_W("Open@@Title")));
//     XlateWnd(dialog);
//     XlateMenu(menu, nullptr);
//
// There is one table for the process (xlateTable.h). The walkers put translations in place, so a
// second walk translates what is translated already. Windows and menus belong on the thread that
// owns them; loading and unloading must not overlap with a use of the table.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zortext/zor_string.h"

// Makes the table. A file that cannot be read leaves one that translates nothing, unreported. A
// table that was loaded before is not released, on purpose: texts of it may be in use. Call
// UnloadTranslateFile first where they are not.
ZOR_API void LoadTranslateFile(const zor_text::CZorStringT<WCHAR>& path);
ZOR_API void UnloadTranslateFile();

// CXlateTable::Xlate of the table; without one the text without its context.
ZOR_API zor_text::CZorStringT<WCHAR> Xlate(const WCHAR* text);

// Translates the title and the texts of the window's own children, not of theirs. Combo boxes, edit
// and list boxes, buttons without a text and statics that show a picture are left alone; every
// other child's text is set, also where it did not change. The number of children, those left alone
// included; -1 for null, which is reported.
ZOR_API int XlateWnd(HWND window);

// Translates the window's own text, which is set only if it changed. 0; -1 for null, which is
// reported.
ZOR_API int XlateWndTitle(HWND window);

// Translates the items of a menu by `translate`, or by Xlate for null, up to 254 units of each.
// Separators, bitmaps and items that begin a column are left alone. A submenu is visited only if
// its own title changed, and by Xlate, whatever `translate` is: hosts rely on both. A pop-up of 8
// to 15 items, whose number the system tells in the place of the separator's mark, is left alone
// too. 0; null is reported.
ZOR_API int XlateMenu(HMENU menu, zor_text::CZorStringT<WCHAR> (*translate)(const WCHAR*));
