#include "zorutils/platform/posix/wait.h"

#include "zorutils/platform/posix/waitable.h"

using namespace zor::platform;

DWORD WaitForSingleObject(HANDLE handle, DWORD)
{
    const auto object = handle_as<Waitable>(handle);
    if (!object)
        return WAIT_FAILED;
    return object->wait() ? WAIT_OBJECT_0 : fail_with_errno(WAIT_FAILED);
}
