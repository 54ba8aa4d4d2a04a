#include "zorutils/platform/removable.h"

#include <string>

#include "zorutils/platform/winapi.h"

namespace zor::platform {

bool is_on_removable_volume(const WCHAR* folder)
{
    constexpr DWORD volume_info = 0x71C24;
    constexpr DWORD reply_bytes = 500;
    const std::wstring volume = std::wstring(folder) + L"\\vol:";
    const HANDLE handle =
        CreateFileW(volume.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    DWORD reply[reply_bytes / sizeof(DWORD)] = {reply_bytes};
    DWORD returned = 0;
    const BOOL worked =
        DeviceIoControl(handle, volume_info, nullptr, 0, reply, reply_bytes, &returned, nullptr);
    CloseHandle(handle);
    // The fourth word tells the kind of the store's block device.
    return worked && reply[3] >= 16;
}

} // namespace zor::platform
