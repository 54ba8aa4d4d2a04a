#include "zorutils/zortext/resource_modules.h"

#include "zorutils/platform/winapi.h"
#include "zorutils/zortext/resource_modules_internal.h"

#include <algorithm>
#include <mutex>

namespace zor_text {

namespace {

constexpr unsigned int most_modules = 64;
constexpr unsigned int block_entries = 16;

// Nothing here is made at load time or destroyed at exit. The first member is the program.
std::mutex g_mutex;
HINSTANCE g_modules[most_modules];
unsigned int g_count = 1;

// Walks a block of 16 entries, each a length in units and the units, to the entry `index`.
StringEntry entry_of_block(const WCHAR* units, size_t count, unsigned int index)
{
    constexpr StringEntry none = {nullptr, 0};
    for (;; --index) {
        if (count == 0)
            return none;
        const unsigned int length = *units;
        ++units;
        --count;
        if (length > count)
            return none;
        if (index == 0)
            return length ? StringEntry{units, length} : none;
        units += length;
        count -= length;
    }
}

StringEntry entry_of_module(HINSTANCE module, unsigned int id)
{
    const unsigned int block = id / block_entries + 1;
    constexpr StringEntry none = {nullptr, 0};
    if (block > 0xFFFF) // such a number would be cut to another block's
        return none;
    HRSRC found = FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(block), 0);
    if (!found)
        return none;
    const void* data = LockResource(LoadResource(module, found));
    if (!data)
        return none;
    const size_t units = SizeofResource(module, found) / sizeof(WCHAR);
    return entry_of_block(static_cast<const WCHAR*>(data), units, id % block_entries);
}

} // namespace

HINSTANCE LoadResourceModule(const WCHAR* path)
{
    return LoadLibraryExW(path, nullptr, LOAD_LIBRARY_AS_DATAFILE);
}

bool AddResourceModule(HINSTANCE module, unsigned int position)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    HINSTANCE* const end = g_modules + g_count;
    if (g_count == most_modules || std::find(g_modules, end, module) != end)
        return false;
    HINSTANCE* const place = g_modules + std::min(position, g_count);
    std::copy_backward(place, end, end + 1);
    *place = module;
    ++g_count;
    return true;
}

bool RemoveResourceModule(HINSTANCE module)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    HINSTANCE* const end = g_modules + g_count;
    HINSTANCE* const place = std::find(g_modules, end, module);
    if (place == end)
        return false;
    std::copy(place + 1, end, place);
    --g_count;
    return true;
}

unsigned int GetResourceModuleCount()
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    return g_count;
}

StringEntry find_string_entry(unsigned int id)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    for (const HINSTANCE* module = g_modules; module != g_modules + g_count; ++module) {
        const StringEntry entry = entry_of_module(*module, id);
        if (entry.length != 0)
            return entry;
    }
    return {nullptr, 0};
}

} // namespace zor_text
