#include "zorutils/platform/posix/resource.h"

#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/resource_file.h"

#include <algorithm>
#include <atomic>
#include <limits.h>
#include <memory>
#include <new>
#include <stdio.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using zor::platform::ResourceEntry;

struct Module
{
    std::vector<BYTE> bytes;
    std::vector<ResourceEntry> entries;
    Module* next = nullptr;
};

// All modules, the latest first. None is ever taken off, so that it is read without a lock.
std::atomic<Module*> g_modules;

constexpr WORD language_english = 0x0409;
constexpr WORD primary_mask = 0x03FF;

template <class T>
T failed(DWORD error)
{
    SetLastError(error);
    return T();
}

std::string to_utf8_path(LPCWSTR path)
{
    std::string bytes;
    for (; *path; ++path)
        bytes += *path == u'\\' ? '/' : static_cast<char>(*path);
    return bytes;
}

DWORD read_file(const std::string& path, std::vector<BYTE>& bytes)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> file(fopen(path.c_str(), "rb"), fclose);
    if (!file)
        return ERROR_FILE_NOT_FOUND;
    BYTE piece[4096];
    size_t count = 0;
    while ((count = fread(piece, 1, sizeof(piece), file.get())) != 0)
        bytes.insert(bytes.end(), piece, piece + count);
    return ferror(file.get()) ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
}

HMODULE load_module(const std::string& path)
{
    auto module = std::make_unique<Module>();
    const DWORD error = read_file(path, module->bytes);
    if (error != ERROR_SUCCESS)
        return failed<HMODULE>(error);
    if (!zor::platform::read_resources(module->bytes, module->entries))
        return failed<HMODULE>(ERROR_BAD_EXE_FORMAT);
    Module* added = module.release();
    added->next = g_modules.load();
    while (!g_modules.compare_exchange_weak(added->next, added)) {
    }
    return reinterpret_cast<HMODULE>(added);
}

std::string path_of_program()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof(path));
    return std::string(path, length > 0 ? static_cast<size_t>(length) : 0);
}

const Module* module_of(HMODULE handle)
{
    if (!handle) {
        static const HMODULE program = load_module(path_of_program() + ".res");
        handle = program;
    }
    for (const Module* module = g_modules.load(); module; module = module->next) {
        if (reinterpret_cast<HMODULE>(const_cast<Module*>(module)) == handle)
            return module;
    }
    return nullptr;
}

// The number that stands in the place of a text; 0, which nothing has, for a text.
WORD number_of(LPCWSTR text)
{
    const auto value = reinterpret_cast<uintptr_t>(text);
    return value <= 0xFFFF ? static_cast<WORD>(value) : WORD(0);
}

HRSRC handle_of(const ResourceEntry& entry)
{
    return reinterpret_cast<HRSRC>(const_cast<ResourceEntry*>(&entry));
}

const ResourceEntry* entry_of(HRSRC handle)
{
    return reinterpret_cast<const ResourceEntry*>(handle);
}

const ResourceEntry* choose_language(const std::vector<const ResourceEntry*>& entries,
                                     WORD language)
{
    const bool neutral = (language & primary_mask) == 0;
    const WORD wanted[] = {language, static_cast<WORD>(language & primary_mask), 0,
                           language_english};
    const size_t count = neutral ? 4 : 3;
    for (size_t i = 0; i < count; ++i) {
        for (const ResourceEntry* entry : entries) {
            if (entry->language == wanted[i])
                return entry;
        }
    }
    return neutral && !entries.empty() ? entries.front() : nullptr;
}

} // namespace

HMODULE LoadLibraryExW(LPCWSTR path, HANDLE file, DWORD flags)
try {
    if (!path || file || flags != LOAD_LIBRARY_AS_DATAFILE)
        return failed<HMODULE>(ERROR_INVALID_PARAMETER);
    return load_module(to_utf8_path(path));
} catch (const std::bad_alloc&) {
    return failed<HMODULE>(ERROR_NOT_ENOUGH_MEMORY);
}

HRSRC FindResourceExW(HMODULE handle, LPCWSTR type, LPCWSTR name, WORD language)
try {
    const Module* module = module_of(handle);
    if (!module || module->entries.empty())
        return failed<HRSRC>(ERROR_RESOURCE_DATA_NOT_FOUND);
    bool has_type = false;
    std::vector<const ResourceEntry*> found;
    for (const ResourceEntry& entry : module->entries) {
        if (entry.type != number_of(type))
            continue;
        has_type = true;
        if (entry.name == number_of(name))
            found.push_back(&entry);
    }
    if (!has_type)
        return failed<HRSRC>(ERROR_RESOURCE_TYPE_NOT_FOUND);
    if (found.empty())
        return failed<HRSRC>(ERROR_RESOURCE_NAME_NOT_FOUND);
    const ResourceEntry* chosen = choose_language(found, language);
    return chosen ? handle_of(*chosen) : failed<HRSRC>(ERROR_RESOURCE_LANG_NOT_FOUND);
} catch (const std::bad_alloc&) {
    return failed<HRSRC>(ERROR_NOT_ENOUGH_MEMORY);
}

HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type)
{
    return FindResourceExW(module, type, name, 0);
}

HGLOBAL LoadResource(HMODULE, HRSRC entry)
{
    if (!entry)
        return failed<HGLOBAL>(ERROR_INVALID_PARAMETER);
    return reinterpret_cast<HGLOBAL>(const_cast<BYTE*>(entry_of(entry)->data));
}

LPVOID LockResource(HGLOBAL data)
{
    return data;
}

DWORD SizeofResource(HMODULE, HRSRC entry)
{
    if (!entry)
        return failed<DWORD>(ERROR_INVALID_PARAMETER);
    return entry_of(entry)->size;
}
