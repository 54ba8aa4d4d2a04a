// Registry files: whatever they hold, they are refused whole, or what they list can be asked for.
#include "fuzz/posix/registry.h"

#include <stdlib.h>

#include "fuzz/input_file.h"
#include "fuzz/properties.h"
#include "zorutils/zorsys/registry.h"

using namespace zor_test;

namespace {

HKEY root(int number)
{
    return reinterpret_cast<HKEY>(
        static_cast<intptr_t>(static_cast<LONG>(0x80000000u + static_cast<unsigned>(number))));
}

// A key and all below it, so deep.
void walk(HKEY key_root, const Wide& path, int depth)
{
    using zor_fuzz::require;
    zor_vector<Wide> values, keys;
    require(zor_registry::EnumEntries(key_root, path.c_str(), values), "a listed key is there");
    require(zor_registry::EnumSections(key_root, path.c_str(), keys), "a listed key is there");
    for (const Wide& name : values) {
        require(name.GetLength() < 256, "names have at most 255 units");
        Wide first, second;
        const bool found =
            zor_registry::ReadStringValue(key_root, path.c_str(), name.c_str(), first);
        require(zor_registry::ReadStringValue(key_root, path.c_str(), name.c_str(), second) ==
                        found &&
                    first.Compare(second.c_str()) == 0,
                "a value is the same each time");
    }
    if (depth == 0)
        return;
    for (const Wide& name : keys) {
        // Such a name ends where the call's text does.
        if (std::char_traits<WCHAR>::length(name.c_str()) != name.length())
            continue;
        Wide below = path;
        if (!path.empty())
            below += ZOR_W("\\");
        below += name;
        walk(key_root, below, depth - 1);
    }
}

} // namespace

void zor_fuzz::registry(const unsigned char* data, size_t size)
{
    const InputFile input(".reg");
    input.write(bytes_of(data, size));
    setenv("ZOR_REGISTRY", input.path().c_str(), 1);
    zor_vector<Wide> names;
    for (const int number : {0, 1, 2, 3, 5}) {
        if (zor_registry::EnumSections(root(number), nullptr, names))
            walk(root(number), Wide(), 4);
        else
            require(names.size() == 0, "nothing is left of a broken file");
    }
    unsetenv("ZOR_REGISTRY");
}
