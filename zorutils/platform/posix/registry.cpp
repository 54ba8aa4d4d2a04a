#include "zorutils/platform/posix/registry.h"

#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <mutex>

#include "zorutils/platform/posix/descriptor.h"
#include "zorutils/platform/posix/handle_table.h"
#include "zorutils/platform/posix/registry_file.h"
#include "zorutils/platform/posix/system_calls.h"

using namespace zor::platform;

namespace {

// --- The file in use.

// What tells one state of a file from the next.
struct FileState
{
    std::string path;
    dev_t device = 0;
    ino_t node = 0;
    off_t size = 0;
    timespec written = {};

    bool operator==(const FileState& other) const
    {
        return path == other.path && device == other.device && node == other.node &&
               size == other.size && written.tv_sec == other.written.tv_sec &&
               written.tv_nsec == other.written.tv_nsec;
    }
};

struct Current
{
    std::mutex mutex;
    FileState state;
    std::shared_ptr<const Registry> registry;
};

Current& current()
{
    static Current* const one = new Current; // lives for ever: hosts read settings at exit too
    return *one;
}

// The whole file; false if it cannot be read.
bool read_all(int descriptor, std::string& bytes)
{
    char block[65536];
    for (size_t count = sizeof block; count == sizeof block;) {
        count = 0;
        if (!read_bytes(descriptor, block, sizeof block, -1, count))
            return false;
        bytes.append(block, count);
    }
    return true;
}

// Null with the error.
std::shared_ptr<const Registry> registry_in_use(LONG& error)
{
    error = ERROR_FILE_NOT_FOUND;
    const char* const path = getenv("ZOR_REGISTRY");
    if (path == nullptr || *path == '\0')
        return nullptr;
    const Descriptor file = open_descriptor(path, O_RDONLY | O_CLOEXEC);
    if (!file.valid())
        return nullptr;
    struct stat status = {};
    Current& now = current();
    const std::lock_guard<std::mutex> guard(now.mutex);
    const bool known = system_calls().fstat(file.get(), &status) == 0;
    const FileState state = {path, status.st_dev, status.st_ino, status.st_size, status.st_mtim};
    if (!known || now.registry == nullptr || !(now.state == state)) {
        std::string bytes;
        now.registry = known && read_all(file.get(), bytes) ? parse_registry(bytes) : nullptr;
        now.state = state;
    }
    error = now.registry != nullptr ? ERROR_SUCCESS : ERROR_BADDB;
    return now.registry;
}

// --- Keys.

class OpenKey : public HandleObject
{
public:
    OpenKey(std::shared_ptr<const Registry> registry, const RegistryKey& key)
        : m_registry(std::move(registry)), m_key(key)
    {
    }
    const std::shared_ptr<const Registry>& registry() const { return m_registry; }
    const RegistryKey& key() const { return m_key; }

private:
    std::shared_ptr<const Registry> m_registry;
    const RegistryKey& m_key; // in the registry
};

bool is_root(HKEY key, size_t& root)
{
    root = static_cast<size_t>(reinterpret_cast<intptr_t>(key) -
                               reinterpret_cast<intptr_t>(HKEY_CLASSES_ROOT));
    return root < Registry::root_count;
}

// An open key or a root; null with the error.
std::shared_ptr<OpenKey> key_of(HKEY handle, LONG& error)
{
    size_t root = 0;
    if (is_root(handle, root)) {
        auto registry = registry_in_use(error);
        return registry == nullptr ? nullptr
                                   : std::make_shared<OpenKey>(registry, registry->roots[root]);
    }
    auto key = std::dynamic_pointer_cast<OpenKey>(find_handle(reinterpret_cast<HANDLE>(handle)));
    error = key != nullptr ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
    return key;
}

// Runs `body` on a key; a failed allocation is an error like any other.
template <class Body>
LONG on_key(HKEY handle, Body body)
{
    try {
        LONG error = ERROR_SUCCESS;
        const std::shared_ptr<OpenKey> key = key_of(handle, error);
        return key == nullptr ? error : body(*key);
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

LONG give_name(const std::u16string& text, LPWSTR name, LPDWORD size)
{
    if (text.size() >= *size)
        return ERROR_MORE_DATA;
    std::copy_n(text.c_str(), text.size() + 1, name);
    *size = static_cast<DWORD>(text.size());
    return ERROR_SUCCESS;
}

} // namespace

LONG RegOpenKeyExW(HKEY key, LPCWSTR path, DWORD, DWORD, HKEY* opened)
{
    return on_key(key, [&](const OpenKey& from) -> LONG {
        const RegistryKey* const found = from.key().find(path == nullptr ? u"" : path);
        if (found == nullptr)
            return ERROR_FILE_NOT_FOUND;
        *opened =
            reinterpret_cast<HKEY>(add_handle(std::make_shared<OpenKey>(from.registry(), *found)));
        return ERROR_SUCCESS;
    });
}

LONG RegCloseKey(HKEY key)
{
    size_t root = 0;
    if (is_root(key, root))
        return ERROR_SUCCESS;
    LONG error = ERROR_SUCCESS;
    if (key_of(key, error) != nullptr)
        remove_handle(reinterpret_cast<HANDLE>(key));
    return error;
}

LONG RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD size, LPDWORD, LPDWORD, BYTE*,
                   LPDWORD)
{
    return on_key(key, [&](const OpenKey& from) -> LONG {
        const auto& values = from.key().values;
        return index < values.size() ? give_name(values[index].name, name, size)
                                     : ERROR_NO_MORE_ITEMS;
    });
}

LONG RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD size, LPDWORD, LPWSTR, LPDWORD,
                   FILETIME*)
{
    return on_key(key, [&](const OpenKey& from) -> LONG {
        const auto& keys = from.key().keys;
        if (index >= keys.size())
            return ERROR_NO_MORE_ITEMS;
        return give_name(std::next(keys.begin(), static_cast<ptrdiff_t>(index))->second.name, name,
                         size);
    });
}

LONG RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD, LPDWORD type, BYTE* data, LPDWORD size)
{
    return on_key(key, [&](const OpenKey& from) -> LONG {
        const RegistryValue* const value = from.key().find_value(name == nullptr ? u"" : name);
        if (value == nullptr)
            return ERROR_FILE_NOT_FOUND;
        if (type != nullptr)
            *type = value->type;
        if (size == nullptr)
            return ERROR_SUCCESS;
        const DWORD room = *size;
        *size = static_cast<DWORD>(value->data.size());
        if (data == nullptr)
            return ERROR_SUCCESS;
        if (room < *size)
            return ERROR_MORE_DATA;
        if (*size > 0)
            memcpy(data, value->data.data(), *size);
        return ERROR_SUCCESS;
    });
}
