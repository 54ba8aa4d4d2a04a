#include "zorutils/platform/posix/resource.h"

#include "zorutils/platform/posix/files.h"
#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/module.h"
#include "zorutils/platform/posix/resource_file.h"
#include "zorutils/platform/posix/system_error.h"

#include <atomic>
#include <memory>
#include <stdlib.h>
#include <string>
#include <unicode/uloc.h>
#include <vector>

using namespace zor::platform;

namespace {

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

constexpr DWORD program_path_size = 32768;
constexpr LONGLONG greatest_file = 0x7FFFFFFF;

struct CloseFile
{
    void operator()(void* file) const { CloseHandle(file); }
};

// Reads a whole file; false with the last error.
bool read_file(LPCWSTR path, std::vector<BYTE>& bytes)
{
    HANDLE handle = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const std::unique_ptr<void, CloseFile> file(handle);
    LARGE_INTEGER size = {};
    if (!GetFileSizeEx(handle, &size))
        return false;
    if (size.QuadPart > greatest_file)
        return fail_with(ERROR_BAD_EXE_FORMAT, false);
    bytes.resize(static_cast<size_t>(size.QuadPart));
    DWORD done = 0;
    if (!ReadFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr))
        return false;
    return done == bytes.size() || fail_with(ERROR_BAD_EXE_FORMAT, false);
}

HMODULE load_module(LPCWSTR path)
{
    auto module = std::make_unique<Module>();
    if (!read_file(path, module->bytes))
        return nullptr;
    if (!read_resources(module->bytes, module->entries))
        return fail_with(ERROR_BAD_EXE_FORMAT, HMODULE());
    Module* added = module.release();
    added->next = g_modules.load();
    while (!g_modules.compare_exchange_weak(added->next, added)) {
    }
    return reinterpret_cast<HMODULE>(added);
}

HMODULE load_program_module()
{
    std::basic_string<WCHAR> path(program_path_size, 0);
    path.resize(GetModuleFileNameW(nullptr, path.data(), program_path_size));
    return load_module((path + ZOR_W(".res")).c_str());
}

const Module* module_of(HMODULE handle)
{
    if (!handle) {
        static const HMODULE program = load_program_module();
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

// The language that the environment names for messages, 0 if there is none.
WORD language_of_user()
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = getenv(variable);
        if (!value || !*value)
            continue;
        const std::string locale = std::string(value).substr(0, std::string(value).find('.'));
        const bool plain = locale == "C" || locale == "POSIX";
        return plain ? WORD(0) : static_cast<WORD>(uloc_getLCID(locale.c_str()));
    }
    return 0;
}

WORD primary(WORD language)
{
    return language & primary_mask;
}

const ResourceEntry* choose_language(const std::vector<const ResourceEntry*>& entries,
                                     WORD language)
{
    std::vector<WORD> wanted = {language, primary(language), 0};
    const bool any = primary(language) == 0;
    if (any) {
        static const WORD user = language_of_user();
        wanted.insert(wanted.end(), {user, primary(user), language_english});
    }
    for (const WORD candidate : wanted) {
        for (const ResourceEntry* entry : entries) {
            if (entry->language == candidate)
                return entry;
        }
    }
    return any && !entries.empty() ? entries.front() : nullptr;
}

HRSRC find_resource(HMODULE handle, WORD type, WORD name, WORD language)
{
    const Module* module = module_of(handle);
    if (!module || module->entries.empty())
        return fail_with(ERROR_RESOURCE_DATA_NOT_FOUND, HRSRC());
    bool has_type = false;
    std::vector<const ResourceEntry*> found;
    for (const ResourceEntry& entry : module->entries) {
        if (entry.type != type)
            continue;
        has_type = true;
        if (entry.name == name)
            found.push_back(&entry);
    }
    if (!has_type)
        return fail_with(ERROR_RESOURCE_TYPE_NOT_FOUND, HRSRC());
    if (found.empty())
        return fail_with(ERROR_RESOURCE_NAME_NOT_FOUND, HRSRC());
    const ResourceEntry* chosen = choose_language(found, language);
    return chosen ? handle_of(*chosen) : fail_with(ERROR_RESOURCE_LANG_NOT_FOUND, HRSRC());
}

} // namespace

HMODULE LoadLibraryExW(LPCWSTR path, HANDLE file, DWORD flags)
{
    if (!path || file || flags != LOAD_LIBRARY_AS_DATAFILE)
        return fail_with(ERROR_INVALID_PARAMETER, HMODULE());
    return without_exceptions(HMODULE(), [path] { return load_module(path); });
}

HRSRC FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language)
{
    return without_exceptions(
        HRSRC(), [=] { return find_resource(module, number_of(type), number_of(name), language); });
}

HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type)
{
    return FindResourceExW(module, type, name, 0);
}

HGLOBAL LoadResource(HMODULE, HRSRC entry)
{
    if (!entry)
        return fail_with(ERROR_INVALID_PARAMETER, HGLOBAL());
    return reinterpret_cast<HGLOBAL>(const_cast<BYTE*>(entry_of(entry)->data));
}

LPVOID LockResource(HGLOBAL data)
{
    return data;
}

DWORD SizeofResource(HMODULE, HRSRC entry)
{
    return entry ? entry_of(entry)->size : fail_with(ERROR_INVALID_PARAMETER, DWORD());
}
