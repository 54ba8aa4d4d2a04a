#include "zorutils/platform/posix/fault_codes.h"

#include <signal.h>

namespace zor::platform {

namespace {

struct Row
{
    int signal, reason;
    DWORD exception;
};

constexpr int any_reason = -1;
constexpr int no_reason = -2; // not told by a signal, but known by it in dumps

constexpr Row rows[] = {
    {SIGSEGV, any_reason, fault_code::access_violation},
    {SIGSEGV, no_reason, fault_code::stack_overflow},
    {SIGBUS, BUS_ADRALN, 0x80000002}, // EXCEPTION_DATATYPE_MISALIGNMENT
    {SIGBUS, any_reason, 0xC0000006}, // EXCEPTION_IN_PAGE_ERROR
    {SIGFPE, FPE_INTDIV, 0xC0000094},
    {SIGFPE, FPE_INTOVF, 0xC0000095},
    {SIGFPE, FPE_FLTDIV, 0xC000008E},
    {SIGFPE, FPE_FLTOVF, 0xC0000091},
    {SIGFPE, FPE_FLTUND, 0xC0000093},
    {SIGFPE, FPE_FLTRES, 0xC000008F},
    {SIGFPE, FPE_FLTSUB, 0xC000008C},
    {SIGFPE, any_reason, 0xC0000090}, // invalid operation
    {SIGFPE, no_reason, 0xC0000092},  // the floating-point stack
    {SIGILL, ILL_PRVOPC, 0xC0000096},
    {SIGILL, ILL_PRVREG, 0xC0000096},
    {SIGILL, any_reason, 0xC000001D}, // EXCEPTION_ILLEGAL_INSTRUCTION
    // A program that gives itself up: what newer run-times on Windows make of it.
    {SIGABRT, any_reason, 0xC0000409}, // STATUS_STACK_BUFFER_OVERRUN
    {SIGABRT, no_reason, fault_code::cpp_exception},
};

} // namespace

DWORD exception_of(int signal, int reason)
{
    for (const Row& row : rows) {
        if (row.signal == signal &&
            (row.reason == any_reason || (row.reason == reason && reason != no_reason)))
            return row.exception;
    }
    return 0;
}

DWORD signal_of(DWORD exception)
{
    for (const Row& row : rows) {
        if (row.exception == exception)
            return static_cast<DWORD>(row.signal);
    }
    return exception;
}

} // namespace zor::platform
