#include "zorutils/platform/posix/fault_codes.h"

#include <gtest/gtest.h>
#include <signal.h>

using zor::platform::exception_of;
using zor::platform::signal_of;

TEST(FaultCodes, AreThoseOfWindowsForEachSignalAndReason)
{
    const struct
    {
        int signal, reason;
        DWORD code;
    } rows[] = {
        {SIGSEGV, SEGV_MAPERR, 0xC0000005}, {SIGSEGV, SEGV_ACCERR, 0xC0000005},
        {SIGSEGV, SI_KERNEL, 0xC0000005},   {SIGSEGV, SI_USER, 0xC0000005},
        {SIGBUS, BUS_ADRALN, 0x80000002},   {SIGBUS, BUS_ADRERR, 0xC0000006},
        {SIGBUS, BUS_OBJERR, 0xC0000006},   {SIGFPE, FPE_INTDIV, 0xC0000094},
        {SIGFPE, FPE_INTOVF, 0xC0000095},   {SIGFPE, FPE_FLTDIV, 0xC000008E},
        {SIGFPE, FPE_FLTOVF, 0xC0000091},   {SIGFPE, FPE_FLTUND, 0xC0000093},
        {SIGFPE, FPE_FLTRES, 0xC000008F},   {SIGFPE, FPE_FLTSUB, 0xC000008C},
        {SIGFPE, FPE_FLTINV, 0xC0000090},   {SIGILL, ILL_ILLOPN, 0xC000001D},
        {SIGILL, ILL_ILLOPC, 0xC000001D},   {SIGILL, ILL_PRVOPC, 0xC0000096},
        {SIGILL, ILL_PRVREG, 0xC0000096},   {SIGABRT, SI_TKILL, 0xC0000409},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(exception_of(row.signal, row.reason), row.code)
            << row.signal << " " << row.reason;
        EXPECT_EQ(signal_of(row.code), static_cast<DWORD>(row.signal)) << std::hex << row.code;
    }
    EXPECT_EQ(exception_of(SIGTERM, SI_USER), 0u);
    EXPECT_EQ(exception_of(SIGSEGV, -2), 0xC0000005) << "no signal tells of an overflow";
}

TEST(FaultCodes, WithoutASignalOfTheirOwn)
{
    EXPECT_EQ(signal_of(0xC00000FD), static_cast<DWORD>(SIGSEGV));
    EXPECT_EQ(signal_of(0xC0000092), static_cast<DWORD>(SIGFPE));
    EXPECT_EQ(signal_of(0x20474343), static_cast<DWORD>(SIGABRT));
    EXPECT_EQ(signal_of(0x12345), 0x12345u);
}
