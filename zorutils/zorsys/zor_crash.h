// zorutils/zorsys/zor_crash.h: what a fault leaves behind.
//
// The two calls are the filter's and the handler's of a structured exception frame:
//
//     __try { work(); }
//     __except (zor::fault_handling::handleCrash(GetExceptionInformation(), "road\\work", __LINE__,
//                                                zor::fault_handling::CRASH_ACTION_EXIT))
//     { zor::fault_handling::handleCrashPostAction(zor::fault_handling::CRASH_ACTION_EXIT); }
//
// Threads that startThread starts (zor_thread.h) are guarded so. A fault is logged, and leaves the
// next of ten folders 0 to 9 in SupportInfo/Dumps of the user's data (GetRootDir), with a minidump,
// dump.dmp, and a copy of the log. dumps.ini beside them holds the number last used.
//
// With a debugger attached it gets the fault, and nothing is written. Any thread may call; dumps
// are written one after the other, and a fault inside the writing ends the process with 0xBADEE000.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"

namespace zor::fault_handling {

// What follows a fault. Any other value takes the fault for handled, and goes on.
enum EZorCrashAction : int
{
    CRASH_ACTION_EXIT = 0,    // the process exits with 0xBADE0000
    CRASH_ACTION_PASS_ON = 1, // the fault goes on to the frames outside
};

// Records the fault; `file` and `line` say where it was caught. The filter's answer: 1 runs the
// handler, 0 goes on. 0 also with a debugger attached, for null and for the code 0, which leave
// nothing, and for the floating-point stack check (0xC0000092), on purpose.
ZOR_API unsigned int handleCrash(_EXCEPTION_POINTERS* exception, const char* file, int line,
                                 EZorCrashAction action);

ZOR_API void handleCrashPostAction(EZorCrashAction action);

} // namespace zor::fault_handling
