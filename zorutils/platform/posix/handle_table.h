// zorutils/platform/posix/handle_table.h: opaque handles for files, searches, mappings, threads and
// processes.
//
//     HANDLE handle = add_handle(std::make_shared<OpenFile>(...));
//     if (const auto file = handle_as<OpenFile>(handle))
//         file->...                      // stays alive while it is held, even if closed meanwhile
//
// A handle is never null and never all ones, and its value is not used again soon: a closed handle
// is refused with ERROR_INVALID_HANDLE and never names what was opened after it. Any thread may
// call these.
#pragma once

#include "zorutils/platform/posix/system_error.h"
#include "zorutils/platform/win_types.h"

#include <memory>

namespace zor::platform {

// What a handle stands for. The last holder's release destroys it.
class HandleObject
{
public:
    HandleObject() = default;
    HandleObject(const HandleObject&) = delete;
    HandleObject& operator=(const HandleObject&) = delete;
    virtual ~HandleObject() = default;

    // Releases what it holds, and tells the Win32 error of doing so. Called at most once, by the
    // close of the handle, when nobody else uses the object; the destructor releases otherwise.
    virtual DWORD close() noexcept { return ERROR_SUCCESS; }
};

// A new handle. Throws std::bad_alloc.
HANDLE add_handle(std::shared_ptr<HandleObject> object);

// The object of a handle; null for one that is not open. Leaves the last error alone.
std::shared_ptr<HandleObject> find_handle(HANDLE handle) noexcept;

// The same, and the handle is no more.
std::shared_ptr<HandleObject> remove_handle(HANDLE handle) noexcept;

// The object of a handle of one kind. Null, with ERROR_INVALID_HANDLE, for every other.
template <typename Object>
std::shared_ptr<Object> handle_as(HANDLE handle) noexcept
{
    auto object = std::dynamic_pointer_cast<Object>(find_handle(handle));
    if (!object)
        SetLastError(ERROR_INVALID_HANDLE);
    return object;
}

// Removes a handle and closes what it stood for, now or when its last user is done. False, with
// the last error, for an invalid handle or a close that the system reported as failed.
BOOL close_handle(HANDLE handle) noexcept;

// How many handles are open; for tests.
size_t open_handle_count() noexcept;

} // namespace zor::platform
