// zorutils/platform/windows/seh_frames.h: structured exception frames, which one of the two
// compilers does not know; seh_frames.c is compiled by clang.
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

DWORD zor_seh_call(DWORD(WINAPI* function)(void*), void* argument,
                   unsigned int (*filter)(EXCEPTION_POINTERS*, void*), DWORD (*handler)(void*),
                   void* context);

// Raises the exception that debuggers know as a thread's name, and takes it back.
void zor_seh_name_thread(DWORD thread, const char* name);

#ifdef __cplusplus
}
#endif
