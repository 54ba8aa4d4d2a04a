#include "zorutils/platform/fault_state.h"

#include "zorutils/platform/interlocked.h"
#include "zorutils/platform/winapi.h"

namespace zor::platform {

namespace {

thread_local int faults = 0; // one fault may meet another

constexpr int most_tries = 50;
constexpr DWORD rest_ms = 10;

} // namespace

bool handles_fault()
{
    return faults != 0;
}

FaultScope::FaultScope()
{
    ++faults;
}

FaultScope::~FaultScope()
{
    --faults;
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
