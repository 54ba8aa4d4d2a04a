#include "zorutils/platform/fault_state.h"

#include "zorutils/platform/interlocked.h"
#include "zorutils/platform/winapi.h"

namespace zor::platform {

namespace {

constexpr int most_tries = 50;
constexpr DWORD rest_ms = 10;

} // namespace

__thread int faults_of_this_thread = 0;

FaultScope::FaultScope()
{
    ++faults_of_this_thread;
}

FaultScope::~FaultScope()
{
    --faults_of_this_thread;
}

bool wait_in_fault(int tries, LONG& given_up)
{
    if (tries >= most_tries)
        interlocked_store(&given_up, 1);
    if (interlocked_load(&given_up) != 0)
        return false;
    Sleep(rest_ms);
    return true;
}

} // namespace zor::platform
