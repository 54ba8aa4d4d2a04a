#include "zorutils/zorsys/zor_crash.h"

#include "zorutils/platform/fault_guard.h"
#include "zorutils/platform/fault_state.h"
#include "zorutils/platform/interlocked.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/crash_dump_internal.h"
#include "zorutils/zorsys/zor_logger.h"

namespace zor::fault_handling {

namespace {

constexpr DWORD float_stack_check = 0xC0000092, stack_overflow = 0xC00000FD;
constexpr DWORD code_of_crash = 0xBADE0000, code_of_second_crash = 0xBADEE000;

// Words of memory that is there from the start: nothing is made while a fault is handled.
LONG crashInProgress = 0; // read without the lock, as a quick guard
LONG crashLock = 0;

} // namespace

unsigned int handleCrash(_EXCEPTION_POINTERS* exception, const char* file, int line,
                         EZorCrashAction action)
{
    using namespace zor_logging;
    using namespace zor::platform;
    if (IsDebuggerPresent()) {
        DebugBreak();
        return 0;
    }
    prepare_for_faults();
    const FaultScope scope;
    const DWORD code =
        exception == nullptr ? 0 : static_cast<DWORD>(exception->ExceptionRecord->ExceptionCode);
    if (code == 0)
        return 0;
    if (code == float_stack_check || code == stack_overflow) {
        ZOR_TRACE_ALWAYS("STACKOVERFLOW at %s@%d", file, line);
        zor_flush_log();
    }
    if (interlocked_load(&crashInProgress) != 0)
        end_process_now(code_of_second_crash);
    while (interlocked_exchange_if(&crashLock, 0, 1) != 0)
        Sleep(10);
    interlocked_store(&crashInProgress, 1);
    ZOR_TRACE_ALWAYS("APPCRASH (%X in THR#%X) at %s@%d", code, GetCurrentThreadId(), file, line);
    zor_flush_log();
    static_cast<void>(write_dump_folder(exception));
    zor_flush_log();
    interlocked_store(&crashInProgress, 0);
    interlocked_store(&crashLock, 0);
    // The stack check's answer is 0 whatever the action, on purpose; the true overflow follows it.
    return code == float_stack_check || action == CRASH_ACTION_PASS_ON ? 0 : 1;
}

void handleCrashPostAction(EZorCrashAction action)
{
    if (IsDebuggerPresent()) {
        DebugBreak();
        return;
    }
    if (action != CRASH_ACTION_EXIT)
        return;
    // Left set: a fault in the clean-up ends the process at once.
    zor::platform::interlocked_store(&crashInProgress, 1);
    zor::platform::exit_process(code_of_crash);
}

} // namespace zor::fault_handling
