// zorutils/platform/fault_guard.h: a call whose faults are caught.
//
// A fault is what Windows knows as a structured exception: a wild read or write, a division by
// zero, an illegal instruction, the end of the stack, and a C++ exception that nobody took. On
// Windows the frames are the system's own; on POSIX platform/posix/fault_guard.cpp makes them of
// signals.
#pragma once

#include "zorutils/platform/win_types.h"

namespace zor::platform {

// What a guarded call does. Functions of `context`.
struct FaultGuard
{
    DWORD(WINAPI* function)(void*); // the guarded function, and its argument
    void* argument;
    // Asked on the faulting thread, on top of the fault: 1 ends the call by `handler`, 0 leaves the
    // fault to the guards outside and to the system.
    unsigned int (*filter)(EXCEPTION_POINTERS* fault, void* context);
    // Runs in the place of the function, after what it did was left behind; its result is the
    // call's.
    DWORD (*handler)(void* context);
    void* context;
};

DWORD guarded_call(const FaultGuard& guard);

// Gives a thread its name, for debuggers. POSIX keeps 15 bytes of it. An unknown thread and a null
// name are passed over.
void name_thread(DWORD thread, const char* name);

// Ends the process after a fault: with its clean-up, and at once. A system that keeps 8 bits of a
// code gets the lowest byte of it that is not zero, so that a failure never reads as success. On
// POSIX a clean-up that stands still for 5 seconds is broken off.
[[noreturn]] void exit_process(DWORD code);
[[noreturn]] void end_process_now(DWORD code);

} // namespace zor::platform
