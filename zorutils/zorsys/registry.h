// zorutils/zorsys/registry.h: reads of the registry.
//
//     zor_text::CZorStringT<WCHAR> folder;
//     if (zor_registry::ReadStringValue(HKEY_CURRENT_USER, ZOR_W("Software\\Survey"),
//                                       ZOR_W("Folder"), folder))
//         ...
//
// Nothing is written, reported or raised but a failed allocation. On POSIX the registry is the file
// that ZOR_REGISTRY names (platform/posix/registry.h). Any thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/core/zor_vector.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zortext/zor_string.h"

namespace zor_registry {

using zor_text::CZorStringT;

// The names of a key's values, or of its sub-keys, in the registry's order, in place of what
// `names` held. The default value's name is empty. A name of 256 units or more ends the list, on
// purpose: what stands in front of it counts. False, with no names, if the key cannot be opened.
ZOR_API bool EnumEntries(HKEY root, const WCHAR* subKey, zor_vector<CZorStringT<WCHAR>>& names);
ZOR_API bool EnumSections(HKEY root, const WCHAR* subKey, zor_vector<CZorStringT<WCHAR>>& names);

// A text of a key, or of `root` itself for a null or empty `subKey`. References to the environment
// stay as they are. False with an empty `value` if there is none; false for a value that is no
// text, and `value` is then what its bytes spell up to the first zero unit, on purpose.
ZOR_API bool ReadStringValue(HKEY root, const WCHAR* subKey, const WCHAR* valueName,
                             CZorStringT<WCHAR>& value);

} // namespace zor_registry
