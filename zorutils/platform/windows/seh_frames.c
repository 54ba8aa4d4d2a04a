#include "seh_frames.h"

DWORD zor_seh_call(DWORD(WINAPI* function)(void*), void* argument,
                   unsigned int (*filter)(EXCEPTION_POINTERS*, void*), DWORD (*handler)(void*),
                   void* context)
{
    __try {
        return function(argument);
    } __except (filter(GetExceptionInformation(), context)) {
        return handler(context);
    }
}

void zor_seh_name_thread(DWORD thread, const char* name)
{
    ULONG_PTR words[4];
    words[0] = 0x1000;
    words[1] = (ULONG_PTR)name;
    words[2] = thread;
    words[3] = 0;
    __try {
        RaiseException(0x406D1388, 0, 4, words);
    } __except (EXCEPTION_EXECUTE_HANDLER) {
    }
}
