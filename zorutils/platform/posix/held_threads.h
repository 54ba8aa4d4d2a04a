// zorutils/platform/posix/held_threads.h: the other threads of the process, made to stand still.
//
// No memory is taken and no lock: a real-time signal, which only this uses and only while it does,
// makes each thread note its registers and wait. A thread that blocks the signal, or does not come
// to take it in time, goes on running; of one that waits in the system its stack is known then.
#pragma once

#include <stdint.h>
#include <sys/types.h>
#include <ucontext.h>

namespace zor::platform {

struct HeldThread
{
    pid_t id;
    int state;          // of its registers, see held_threads.cpp
    bool has_registers; // all of them; otherwise the two below or nothing
    ucontext_t registers;
    _libc_fpstate float_state;
    uint64_t stack_pointer, instruction_pointer; // 0: not known
};

constexpr int most_held_threads = 4096; // those behind are left out

// Holds all threads but the calling one in `threads`, memory that stays for ever; how many there
// are. One caller at a time.
int hold_other_threads(HeldThread* threads);
void let_threads_go();

} // namespace zor::platform
