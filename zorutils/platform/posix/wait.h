// zorutils/platform/posix/wait.h: waiting for programs and threads, and closing handles. Any
// thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"

#define INFINITE 0xFFFFFFFFu
#define WAIT_OBJECT_0 0u
#define WAIT_FAILED 0xFFFFFFFFu
#define STILL_ACTIVE 259u

// Waits for the end of a process or a thread; `milliseconds` is INFINITE.
ZOR_API DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);

// Closes a handle of any kind.
ZOR_API BOOL CloseHandle(HANDLE handle);
