#include "zorutils/platform/posix/mapping.h"

#include <errno.h>

#include <map>

#include "zorutils/platform/posix/fault_mutex.h"
#include "zorutils/platform/posix/handle_table.h"
#include "zorutils/platform/posix/open_file.h"
#include "zorutils/platform/posix/system_calls.h"

using namespace zor::platform;

namespace {

class Mapping : public HandleObject
{
public:
    Mapping(std::shared_ptr<OpenFile> file, size_t size) : m_file(std::move(file)), m_size(size) {}

    int descriptor() const { return m_file->descriptor(); }
    size_t size() const { return m_size; }

private:
    std::shared_ptr<OpenFile> m_file;
    size_t m_size;
};

// Views and their sizes, which the system asks for again.
struct Views
{
    FaultMutex mutex;
    std::map<const void*, size_t> sizes;
};

Views& views()
{
    static Views* const all = new Views; // lives for ever: files are read while the process ends
    return *all;
}

} // namespace

HANDLE CreateFileMappingW(HANDLE handle, SECURITY_ATTRIBUTES*, DWORD protection, DWORD size_high,
                          DWORD size_low, LPCWSTR)
{
    return without_exceptions(static_cast<HANDLE>(nullptr), [&]() -> HANDLE {
        const auto file = handle_as<OpenFile>(handle);
        if (file == nullptr)
            return nullptr;
        if (protection != PAGE_READONLY || size_high != 0 || size_low != 0)
            return fail_with(ERROR_INVALID_PARAMETER, static_cast<HANDLE>(nullptr));
        struct stat status;
        if (system_calls().fstat(file->descriptor(), &status) != 0)
            return fail_with_errno(static_cast<HANDLE>(nullptr));
        if (status.st_size == 0)
            return fail_with(ERROR_FILE_INVALID, static_cast<HANDLE>(nullptr));
        return add_handle(std::make_shared<Mapping>(file, static_cast<size_t>(status.st_size)));
    });
}

void* MapViewOfFile(HANDLE handle, DWORD access, DWORD offset_high, DWORD offset_low, SIZE_T count)
{
    return without_exceptions(static_cast<void*>(nullptr), [&]() -> void* {
        const auto mapping = handle_as<Mapping>(handle);
        if (mapping == nullptr)
            return nullptr;
        if (access != FILE_MAP_READ || offset_high != 0 || offset_low != 0 || count != 0)
            return fail_with(ERROR_INVALID_PARAMETER, static_cast<void*>(nullptr));
        Views& all = views();
        const FaultLock guard(all.mutex);
        void* const view = system_calls().mmap(nullptr, mapping->size(), PROT_READ, MAP_PRIVATE,
                                               mapping->descriptor(), 0);
        if (view == MAP_FAILED)
            return fail_with_errno(static_cast<void*>(nullptr));
        all.sizes[view] = mapping->size();
        return view;
    });
}

BOOL UnmapViewOfFile(const void* view)
{
    Views& all = views();
    const FaultLock guard(all.mutex);
    const auto entry = all.sizes.find(view);
    if (entry == all.sizes.end())
        return fail_with(ERROR_INVALID_ADDRESS, FALSE);
    const size_t size = entry->second;
    all.sizes.erase(entry);
    return system_calls().munmap(const_cast<void*>(view), size) == 0 ? TRUE
                                                                     : fail_with_errno(FALSE);
}
