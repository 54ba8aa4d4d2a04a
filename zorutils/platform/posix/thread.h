// zorutils/platform/posix/thread.h: threads.
//
// A thread's number is the system's own. Any thread may call these; hosts find here and in wait.h
// what to do with a handle of startThread.
#pragma once

#include "zorutils/platform/posix/wait.h"

struct SECURITY_ATTRIBUTES;

#define CREATE_SUSPENDED 0x00000004

typedef DWORD(WINAPI* LPTHREAD_START_ROUTINE)(void* argument);

// Starts a thread; with CREATE_SUSPENDED in `flags` it waits for ResumeThread. `security`, `stack`
// and `id` are null or 0. Null, with the last error, if the system refuses.
HANDLE CreateThread(SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE start,
                    void* argument, DWORD flags, LPDWORD id);

// Lets a suspended thread go. How often it was suspended before: 1 or 0; all ones for a handle of
// no thread.
ZOR_API DWORD ResumeThread(HANDLE thread);

// STILL_ACTIVE while it runs.
ZOR_API BOOL GetExitCodeThread(HANDLE thread, LPDWORD code);

DWORD GetCurrentThreadId();
DWORD GetCurrentProcessId();
void Sleep(DWORD milliseconds);
