// Faults as signals. See platform/fault_guard.h.
#include "zorutils/platform/fault_guard.h"

#include "zorutils/platform/fault_state.h"
#include "zorutils/platform/posix/fault_codes.h"
#include "zorutils/platform/posix/fault_memory.h"
#include "zorutils/platform/posix/minidump_memory.h"
#include "zorutils/platform/posix/stay_loaded.h"
#include "zorutils/platform/posix/system_calls.h"

#include <cxxabi.h>
#include <errno.h>
#include <fcntl.h>
#include <pthread.h>
#include <setjmp.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/time.h>
#include <time.h>
#include <ucontext.h>
#include <unistd.h>
#include <x86intrin.h>

#include <atomic>
#include <mutex>

namespace zor::platform {

namespace {

constexpr int caught_signals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
struct sigaction former_actions[NSIG];

// --- The guards of a thread, the innermost first.

struct Frame
{
    const FaultGuard* guard;
    Frame* outer;
    sigjmp_buf return_point;
};

constexpr size_t aside_size = 256 * 1024;
thread_local Frame* innermost = nullptr;
thread_local int guards = 0; // with their handlers
// The lowest address of this thread's stack; below it lies the guard page.
thread_local char* lowest_of_stack = nullptr;

bool was_sent(const siginfo_t& information)
{
    return information.si_code <= 0;
}

bool is_stack_overflow(const siginfo_t& information)
{
    constexpr ptrdiff_t below = 1 << 20; // a large frame may step over the guard page
    constexpr ptrdiff_t above = 4 * 4096;
    const auto* const address = static_cast<const char*>(information.si_addr);
    const ptrdiff_t distance = lowest_of_stack - address;
    return lowest_of_stack != nullptr && information.si_signo == SIGSEGV &&
           !was_sent(information) && distance > -above && distance < below;
}

EXCEPTION_RECORD record_of(const siginfo_t& information, const ucontext_t& registers)
{
    EXCEPTION_RECORD record = {};
    record.ExceptionCode = is_stack_overflow(information)
                               ? fault_code::stack_overflow
                               : exception_of(information.si_signo, information.si_code);
    record.ExceptionAddress =
        reinterpret_cast<void*>(static_cast<uintptr_t>(registers.uc_mcontext.gregs[REG_RIP]));
    const bool by_address = record.ExceptionCode == fault_code::access_violation ||
                            record.ExceptionCode == fault_code::stack_overflow;
    if (by_address && !was_sent(information)) {
        constexpr greg_t by_write = 2, by_fetch = 16; // bits of the processor's page fault code
        const greg_t cause = registers.uc_mcontext.gregs[REG_ERR];
        record.NumberParameters = 2;
        record.ExceptionInformation[0] = (cause & by_fetch) != 0 ? 8 : (cause & by_write) != 0;
        record.ExceptionInformation[1] = reinterpret_cast<ULONG_PTR>(information.si_addr);
    }
    return record;
}

// The action that stood there before ours: the instruction runs again, and faults for it.
void pass_on(int signal, siginfo_t* information, void* registers)
{
    const struct sigaction& former = former_actions[signal];
    if ((former.sa_flags & SA_SIGINFO) != 0) {
        former.sa_sigaction(signal, information, registers);
        return;
    }
    if (former.sa_handler != SIG_DFL && former.sa_handler != SIG_IGN) {
        former.sa_handler(signal);
        return;
    }
    sigaction(signal, &former, nullptr);
    // One that was sent does not come again by itself.
    if (was_sent(*information))
        raise(signal);
}

void on_fault(int signal, siginfo_t* information, void* given)
{
    const int error = errno;
    // The interrupted code may have asked for aligned accesses only, and what follows has others.
    constexpr unsigned long long alignment_check = 1 << 18;
    __writeeflags(__readeflags() & ~alignment_check);
    auto* const registers = static_cast<ucontext_t*>(given);
    EXCEPTION_RECORD record = record_of(*information, *registers);
    EXCEPTION_POINTERS fault = {&record, reinterpret_cast<CONTEXT*>(registers)};
    // A fault inside the filter comes here again, and finds the same guards.
    for (Frame* frame = innermost; frame != nullptr; frame = frame->outer) {
        if (frame->guard->filter(&fault, frame->guard->context) == 0)
            continue;
        innermost = frame;
        siglongjmp(frame->return_point, 1);
    }
    errno = error;
    pass_on(signal, information, given);
}

void catch_signals()
{
    stay_loaded();
    struct sigaction action = {};
    action.sa_sigaction = on_fault;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    for (const int signal : caught_signals)
        sigaction(signal, &action, &former_actions[signal]);
}

// A thread's first guard sets a stack aside on which the overflow of its own is handled; its last
// one gives it back.
class StackAside
{
public:
    StackAside()
    {
        if (guards++ != 0)
            return;
        note_lowest();
        sigaltstack(nullptr, &m_former);
        const bool in_use = (m_former.ss_flags & SS_ONSTACK) != 0;
        const bool none = (m_former.ss_flags & SS_DISABLE) != 0;
        if (in_use || (!none && m_former.ss_size >= aside_size))
            return;
        m_place = mmap(nullptr, aside_size, PROT_READ | PROT_WRITE,
                       MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (m_place == MAP_FAILED)
            return;
        stack_t aside = {};
        aside.ss_sp = m_place;
        aside.ss_size = aside_size;
        sigaltstack(&aside, nullptr);
    }
    ~StackAside()
    {
        --guards;
        if (m_place == MAP_FAILED)
            return;
        sigaltstack(&m_former, nullptr);
        munmap(m_place, aside_size);
    }
    StackAside(const StackAside&) = delete;
    StackAside& operator=(const StackAside&) = delete;

private:
    static void note_lowest()
    {
        lowest_of_stack = nullptr;
        pthread_attr_t attributes;
        if (pthread_getattr_np(pthread_self(), &attributes) != 0)
            return;
        void* lowest = nullptr;
        size_t size = 0;
        if (pthread_attr_getstack(&attributes, &lowest, &size) == 0)
            lowest_of_stack = static_cast<char*>(lowest);
        pthread_attr_destroy(&attributes);
    }

    void* m_place = MAP_FAILED;
    stack_t m_former = {};
};

// A C++ exception that nobody took is a fault here too, as it is on Windows; its registers are not
// known any more. Returns if a filter took it.
bool filter_exception(Frame& frame)
{
    EXCEPTION_RECORD record = {};
    record.ExceptionCode = fault_code::cpp_exception;
    ucontext_t registers = {};
    getcontext(&registers);
    EXCEPTION_POINTERS fault = {&record, reinterpret_cast<CONTEXT*>(&registers)};
    return frame.guard->filter(&fault, frame.guard->context) != 0;
}

} // namespace

void prepare_for_faults()
{
    // Without memory a fault is handled by what there is.
    static_cast<void>(set_fault_memory_aside());
    static_cast<void>(set_dump_memory_aside());
}

DWORD guarded_call(const FaultGuard& guard)
{
    prepare_for_faults();
    static std::once_flag once;
    std::call_once(once, catch_signals);
    const StackAside aside;
    Frame frame;
    frame.guard = &guard;
    frame.outer = innermost;
    if (sigsetjmp(frame.return_point, 1) == 0) {
        innermost = &frame;
        try {
            const DWORD result = guard.function(guard.argument);
            innermost = frame.outer;
            return result;
        } catch (const abi::__forced_unwind&) {
            innermost = frame.outer;
            throw; // the thread is being ended
        } catch (...) {
            const bool taken = filter_exception(frame);
            innermost = frame.outer;
            if (!taken)
                throw;
        }
    } else {
        innermost = frame.outer;
    }
    return guard.handler(guard.context);
}

void name_thread(DWORD thread, const char* name)
{
    if (name == nullptr)
        return;
    constexpr size_t longest = 15; // the kernel's
    char path[64], shortened[longest + 1] = {};
    strncpy(shortened, name, longest);
    if (static_cast<pid_t>(thread) == gettid()) {
        pthread_setname_np(pthread_self(), shortened);
        return;
    }
    snprintf(path, sizeof path, "/proc/self/task/%u/comm", thread);
    const int file = system_calls().open(path, O_WRONLY | O_CLOEXEC, 0);
    if (file < 0)
        return;
    static_cast<void>(system_calls().write(file, shortened, strlen(shortened)));
    system_calls().close(file);
}

namespace {

int code_for_system(DWORD code)
{
    for (DWORD rest = code; rest != 0; rest >>= 8) {
        if ((rest & 0xFF) != 0)
            return static_cast<int>(rest & 0xFF);
    }
    return 0;
}

// The clean-up of a process that broke may wait for ever, for a lock that its own thread held when
// it faulted. A second that brings it nowhere is one of a few.
constexpr int most_idle_seconds = 5;
constexpr long headway_ns = 1000000;

struct CleanUp
{
    std::atomic<pid_t> thread{0};
    int code = 0;
    clockid_t clock = 0; // of the processor's time that the thread took
    timespec before = {};
    int idle_seconds = 0;
};
CleanUp clean_up;

void look_after_clean_up(int)
{
    timespec now = {};
    clock_gettime(clean_up.clock, &now);
    const long taken =
        (now.tv_sec - clean_up.before.tv_sec) * 1000000000 + now.tv_nsec - clean_up.before.tv_nsec;
    clean_up.before = now;
    clean_up.idle_seconds = taken < headway_ns ? clean_up.idle_seconds + 1 : 0;
    if (clean_up.idle_seconds >= most_idle_seconds)
        _exit(clean_up.code);
}

void watch_clean_up()
{
    if (pthread_getcpuclockid(pthread_self(), &clean_up.clock) != 0)
        return;
    struct sigaction action = {};
    action.sa_handler = look_after_clean_up;
    action.sa_flags = SA_RESTART | SA_ONSTACK;
    sigaction(SIGALRM, &action, nullptr);
    sigset_t alarm;
    sigemptyset(&alarm);
    sigaddset(&alarm, SIGALRM);
    pthread_sigmask(SIG_UNBLOCK, &alarm, nullptr);
    const itimerval every_second = {{1, 0}, {1, 0}};
    setitimer(ITIMER_REAL, &every_second, nullptr);
}

} // namespace

void exit_process(DWORD code)
{
    pid_t nobody = 0;
    if (!clean_up.thread.compare_exchange_strong(nobody, gettid())) {
        if (nobody == gettid())
            end_process_now(code); // the clean-up itself came here
        for (;;)
            pause(); // another thread ends the process, and two must not
    }
    clean_up.code = code_for_system(code);
    watch_clean_up();
    exit(clean_up.code);
}

void end_process_now(DWORD code)
{
    _exit(code_for_system(code));
}

} // namespace zor::platform
