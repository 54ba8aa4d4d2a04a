// zorutils/platform/posix/fault_mutex.h: a lock that a thread which handles a fault goes without,
// if it cannot have it soon (fault_state.h).
#pragma once

#include <mutex>

#include "zorutils/platform/fault_state.h"

namespace zor::platform {

struct FaultMutex
{
    std::mutex mutex;
    LONG given_up = 0;
};

class FaultLock
{
public:
    explicit FaultLock(FaultMutex& mutex) : m_lock(mutex.mutex, std::defer_lock)
    {
        if (!handles_fault()) {
            m_lock.lock();
            return;
        }
        for (int tries = 0; !m_lock.try_lock() && wait_in_fault(tries, mutex.given_up); ++tries) {
        }
    }
    FaultLock(const FaultLock&) = delete;
    FaultLock& operator=(const FaultLock&) = delete;

private:
    std::unique_lock<std::mutex> m_lock;
};

} // namespace zor::platform
