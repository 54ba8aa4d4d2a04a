// Signals that the guards leave to the host, each in a process of its own.
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <unistd.h>

#include "zorutils/platform/fault_guard.h"
#include "zorutils/platform/winapi.h"

using namespace zor::platform;

namespace {

int* volatile nowhere = nullptr;

__attribute__((no_sanitize("undefined"))) DWORD WINAPI write_to_nowhere(void*)
{
    *nowhere = 1;
    return 0;
}

DWORD WINAPI give_up(void*)
{
    abort();
}

DWORD WINAPI send_to_itself(void*)
{
    raise(SIGSEGV);
    return 0;
}

unsigned int leave_it(EXCEPTION_POINTERS*, void* asked)
{
    ++*static_cast<int*>(asked);
    return 0;
}

DWORD never(void*)
{
    return 1;
}

int asked = 0;

void guarded(DWORD(WINAPI* function)(void*))
{
    const rlimit no_core = {0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    guarded_call({function, nullptr, leave_it, never, &asked});
}

void end_simply(int)
{
    _exit(asked == 1 ? 33 : 34);
}

void end_with_information(int, siginfo_t* information, void* registers)
{
    _exit(asked == 1 && information->si_addr == nullptr && registers != nullptr ? 35 : 36);
}

class FaultSignals : public testing::Test
{
protected:
    void SetUp() override
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        GTEST_SKIP() << "the checker has handlers of its own";
#endif
        // Each begins as a program of its own, so that its guard is the first.
        testing::FLAGS_gtest_death_test_style = "threadsafe";
    }
};

} // namespace

TEST_F(FaultSignals, GoToTheHostsHandler)
{
    EXPECT_EXIT(
        {
            signal(SIGSEGV, end_simply);
            guarded(write_to_nowhere);
        },
        testing::ExitedWithCode(33), "");
}

TEST_F(FaultSignals, GoToTheHostsHandlerWithAllThatIsKnown)
{
    EXPECT_EXIT(
        {
            struct sigaction action = {};
            action.sa_sigaction = end_with_information;
            action.sa_flags = SA_SIGINFO;
            sigaction(SIGSEGV, &action, nullptr);
            guarded(write_to_nowhere);
        },
        testing::ExitedWithCode(35), "");
}

TEST_F(FaultSignals, GoToTheSystemWithoutOne)
{
    EXPECT_EXIT(guarded(write_to_nowhere), testing::KilledBySignal(SIGSEGV), "");
    EXPECT_EXIT(guarded(give_up), testing::KilledBySignal(SIGABRT), "");
}

TEST_F(FaultSignals, ThatWereSentGoOnAsWell)
{
    EXPECT_EXIT(guarded(send_to_itself), testing::KilledBySignal(SIGSEGV), "");
}

TEST_F(FaultSignals, OfThreadsWithoutAGuardGoToTheSystem)
{
    EXPECT_EXIT(
        {
            guarded([](void*) -> DWORD { return 0; });
            write_to_nowhere(nullptr);
        },
        testing::KilledBySignal(SIGSEGV), "");
}
