// zorutils/platform/posix/registry_file.h: a registry as the registry editor exports it.
//
//     std::unique_ptr<Registry> registry = parse_registry(bytes);
//     if (const RegistryKey* key = registry->root(0)->find(ZOR_W("Software\\Survey")))
//         ...
//
// The form is version 5: "Windows Registry Editor Version 5.00", then keys in brackets with their
// values, as UTF-16 little-endian with a mark or as UTF-8. All of it is understood: comments,
// strings with their escapes and over several lines, dword, hex of every type over several lines,
// the default value, and removals of keys and values.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "zorutils/platform/win_types.h"

namespace zor::platform {

struct RegistryValue
{
    std::u16string name;
    DWORD type = 0;
    std::vector<BYTE> data;
};

class RegistryKey
{
public:
    // Names don't know case.
    const RegistryKey* find(std::u16string_view path) const;
    const RegistryValue* find_value(std::u16string_view name) const;

    // Values in the order of the file, keys by their names.
    std::vector<RegistryValue> values;
    struct Named
    {
        std::u16string name;
        std::unique_ptr<RegistryKey> key;
    };
    std::map<std::u16string, Named> keys; // by the name in capitals

    // Both make what is missing.
    RegistryKey& make(std::u16string_view path);
    RegistryValue& make_value(std::u16string_view name);
    void remove(std::u16string_view path);
    void remove_value(std::u16string_view name);
};

// The roots in the order of their handles: HKEY_CLASSES_ROOT, HKEY_CURRENT_USER,
// HKEY_LOCAL_MACHINE, HKEY_USERS, HKEY_PERFORMANCE_DATA (always empty), HKEY_CURRENT_CONFIG.
struct Registry
{
    static constexpr size_t root_count = 6;
    RegistryKey roots[root_count];
};

// Null for anything else than a whole file of this form: nothing of a broken one is taken.
std::unique_ptr<Registry> parse_registry(std::string_view bytes);

} // namespace zor::platform
