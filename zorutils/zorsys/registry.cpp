#include "zorutils/zorsys/registry.h"

#include <algorithm>

#include "zorutils/platform/winapi.h"

namespace zor_registry {

namespace {

typedef CZorStringT<WCHAR> String;

// The names that `next` gives for the indices from 0 on, until it refuses one.
template <class Next>
bool list(HKEY root, const WCHAR* path, zor_vector<String>& names, Next next)
{
    names.clear();
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path, 0, KEY_READ, &key) != 0)
        return false;
    WCHAR name[256];
    for (DWORD index = 0;; ++index) {
        DWORD size = 256;
        if (next(key, index, name, &size) != 0)
            break;
        names.push_back(String(name, static_cast<int>(size)));
    }
    RegCloseKey(key);
    return true;
}

} // namespace

bool EnumEntries(HKEY root, const WCHAR* subKey, zor_vector<String>& names)
{
    return list(root, subKey, names, [](HKEY key, DWORD index, WCHAR* name, DWORD* size) {
        return RegEnumValueW(key, index, name, size, nullptr, nullptr, nullptr, nullptr);
    });
}

bool EnumSections(HKEY root, const WCHAR* subKey, zor_vector<String>& names)
{
    return list(root, subKey, names, [](HKEY key, DWORD index, WCHAR* name, DWORD* size) {
        return RegEnumKeyExW(key, index, name, size, nullptr, nullptr, nullptr, nullptr);
    });
}

bool ReadStringValue(HKEY root, const WCHAR* subKey, const WCHAR* valueName, String& value)
{
    value.Empty();
    HKEY key = root;
    const bool opens = subKey != nullptr && subKey[0] != 0;
    if (opens && RegOpenKeyExW(root, subKey, 0, KEY_QUERY_VALUE, &key) != 0)
        return false;
    DWORD type = REG_NONE, size = 0;
    bool result = false;
    if (RegQueryValueExW(key, valueName, nullptr, &type, nullptr, &size) == 0) {
        // An odd last byte is half a unit, and values needn't end in a zero unit.
        const DWORD units = (size + 1) / 2;
        WCHAR* const buffer = value.GetBuffer(static_cast<int>(units) + 1);
        std::fill_n(buffer, units + 1, WCHAR{0});
        const LONG error = RegQueryValueExW(key, valueName, nullptr, &type,
                                            reinterpret_cast<BYTE*>(buffer), &size);
        result = error == 0 && (type == REG_SZ || type == REG_EXPAND_SZ);
        value.ReleaseBuffer(-1);
    }
    if (opens)
        RegCloseKey(key);
    return result;
}

} // namespace zor_registry
