#include <string.h>

#include "zorutils/platform/posix/minidump_format.h"

namespace zor::platform::minidump {

Context context_of(const ucontext_t& from)
{
    const auto value = [&](int name) {
        return static_cast<uint64_t>(from.uc_mcontext.gregs[name]);
    };
    Context to = {};
    to.flags = context_flags;
    to.rax = value(REG_RAX);
    to.rbx = value(REG_RBX);
    to.rcx = value(REG_RCX);
    to.rdx = value(REG_RDX);
    to.rsi = value(REG_RSI);
    to.rdi = value(REG_RDI);
    to.rbp = value(REG_RBP);
    to.rsp = value(REG_RSP);
    to.r8 = value(REG_R8);
    to.r9 = value(REG_R9);
    to.r10 = value(REG_R10);
    to.r11 = value(REG_R11);
    to.r12 = value(REG_R12);
    to.r13 = value(REG_R13);
    to.r14 = value(REG_R14);
    to.r15 = value(REG_R15);
    to.rip = value(REG_RIP);
    to.eflags = static_cast<uint32_t>(value(REG_EFL));
    const uint64_t segments = value(REG_CSGSFS); // 16 bits each
    to.cs = static_cast<uint16_t>(segments);
    to.gs = static_cast<uint16_t>(segments >> 16);
    to.fs = static_cast<uint16_t>(segments >> 32);
    if (const _libc_fpstate* const floats = from.uc_mcontext.fpregs) {
        static_assert(sizeof *floats == sizeof to.float_save);
        memcpy(to.float_save, floats, sizeof to.float_save);
        to.mxcsr = floats->mxcsr;
    }
    return to;
}

} // namespace zor::platform::minidump
