// zorutils/zortext/resource_modules.h: where string resources are looked up.
//
//     HINSTANCE texts = zor_text::LoadResourceModule(ZOR_W("texts_cs.dll"));
//     zor_text::AddResourceModule(texts, 0); // in front of the program's own texts
//     zor_text::CZorStringT<WCHAR> title;
//     title.LoadStringW(100);
//
// The library keeps one list of modules for the process; a string number is given by the first
// module on it whose entry of that number isn't empty. The list starts with one member, the program
// itself, as the null handle. On Windows a module is a program or DLL with resources; on POSIX it
// is such a file or a compiled .res file, and the program's own is "<program>.res" beside it.
//
// Any thread may call; each lookup and each change sees the list as a whole. The list has room for
// 64 modules.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"

namespace zor_text {

// The position behind the last module of the list.
constexpr unsigned int behind_all_modules = ~0u;

// Loads a file for its resources only, without running code of it, and doesn't put it on the list.
// It stays loaded to the end of the process. Null, with the system's last error, on failure.
ZOR_API HINSTANCE LoadResourceModule(const WCHAR* path);

// Puts a module on the list at `position` (0 is the first to be asked); a position behind the end
// means the end. False if the module is on the list already, or the list is full. The module must
// stay loaded while the process looks up strings.
ZOR_API bool AddResourceModule(HINSTANCE module, unsigned int position = behind_all_modules);

// Takes a module off the list; null takes the program off. False if it isn't there.
ZOR_API bool RemoveResourceModule(HINSTANCE module);

// The number of modules on the list.
ZOR_API unsigned int GetResourceModuleCount();

} // namespace zor_text
