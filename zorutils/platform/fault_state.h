// zorutils/platform/fault_state.h: whether this thread handles a fault at this moment.
//
// A thread that faulted may have held any lock, and the memory that the C library gives out may be
// broken. What runs while a fault is handled waits for no lock for long, and on POSIX takes its
// memory from a place set aside (posix/fault_memory.h).
#pragma once

#include "zorutils/platform/target.h"

namespace zor::platform {

// Sets aside what cannot be had any more while a fault is handled. Later calls do nothing.
void prepare_for_faults();

// The language's own word would put a call around each use, and each request for memory asks.
extern __thread int faults_of_this_thread; // one may meet another

inline bool handles_fault()
{
    return faults_of_this_thread != 0;
}

// From its beginning to its end this thread handles a fault.
class FaultScope
{
public:
    FaultScope();
    ~FaultScope();
    FaultScope(const FaultScope&) = delete;
    FaultScope& operator=(const FaultScope&) = delete;
};

// Waits a moment before a lock is tried again, for a thread that handles a fault and has tried
// `tries` times; false if it should go on without the lock: the thread itself may hold it, or one
// that never gives it back. `given_up` remembers that, so that nobody waits for it twice.
bool wait_in_fault(int tries, LONG& given_up);

} // namespace zor::platform
