// zorutils/platform/posix/fault_codes.h: signals, and the codes that Windows has for such faults.
#pragma once

#include "zorutils/platform/win_types.h"

namespace zor::platform {

namespace fault_code {

constexpr DWORD access_violation = 0xC0000005;
constexpr DWORD stack_overflow = 0xC00000FD;
constexpr DWORD cpp_exception = 0x20474343; // what GCC's exceptions are on Windows

} // namespace fault_code

// The code of a signal with its reason (si_code); 0 for a signal that is no fault.
DWORD exception_of(int signal, int reason);

// The signal of a code; the code itself where no signal has it.
DWORD signal_of(DWORD exception);

} // namespace zor::platform
