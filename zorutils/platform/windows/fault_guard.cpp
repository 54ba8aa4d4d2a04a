#include "zorutils/platform/fault_guard.h"

#include <stdlib.h>

#include "zorutils/platform/fault_state.h"
#include "zorutils/platform/windows/seh_frames.h"

namespace zor::platform {

// The system's heap and the frames' own stack serve a fault as well.
void prepare_for_faults() {}

DWORD guarded_call(const FaultGuard& guard)
{
    return zor_seh_call(guard.function, guard.argument, guard.filter, guard.handler, guard.context);
}

void name_thread(DWORD thread, const char* name)
{
    zor_seh_name_thread(thread, name);
}

void exit_process(DWORD code)
{
    exit(static_cast<int>(code));
}

void end_process_now(DWORD code)
{
    TerminateProcess(GetCurrentProcess(), code);
    abort(); // the call above does not come back
}

} // namespace zor::platform
