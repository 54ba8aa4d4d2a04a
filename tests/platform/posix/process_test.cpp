// Processes where the system refuses, and what is particular to POSIX.
#include "zorutils/platform/posix/process.h"

#include <errno.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include "tests/platform/posix/failing_calls.h"
#include "tests/support/modules.h"
#include "tests/support/temp_folder.h"
#include "zorutils/platform/posix/handle_table.h"
#include "zorutils/platform/posix/system_calls.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/process.h"

using namespace zor_test;
using zor::platform::open_handle_count;
using zor::platform::system_calls;

namespace {

const Wide program(std::filesystem::path(ZOR_TEST_LAUNCHED).u16string().c_str());

// What the next ends of processes read as.
int made_code = 0, made_error = 0;

int made_end(idtype_t type, id_t id, siginfo_t* end, int options)
{
    const int result = ::waitid(type, id, end, options);
    if (made_error != 0) {
        errno = made_error;
        return -1;
    }
    if (result == 0 && end->si_pid != 0 && end->si_code == CLD_EXITED)
        end->si_status = made_code;
    return result;
}

class PosixProcess : public testing::Test
{
protected:
    ~PosixProcess() override { system_calls().waitid = ::waitid; }

    void make_ends(int end_code, int error)
    {
        made_code = end_code;
        made_error = error;
        system_calls().waitid = made_end;
    }

    TempFolder folder;
    DWORD code = 1000;
};

} // namespace

// No program's code has so many bits here, but the library's answer to it is the same.
TEST_F(PosixProcess, ACodeOf259ReadsAsStillRunning)
{
    make_ends(259, 0);
    EXPECT_FALSE(LaunchExeBlocking(code, program.c_str(), ZOR_W("exit 0")));
    EXPECT_EQ(code, 259u);
    make_ends(260, 0);
    EXPECT_TRUE(LaunchExeBlocking(code, program.c_str(), ZOR_W("exit 0")));
    EXPECT_EQ(code, 260u);
}

TEST_F(PosixProcess, AFailedWaitLeavesTheHandlesOpen)
{
    const size_t before = open_handle_count();
    make_ends(0, EINVAL);
    EXPECT_FALSE(LaunchExeBlocking(code, program.c_str(), ZOR_W("exit 0")));
    EXPECT_EQ(code, 1000u);
    EXPECT_EQ(open_handle_count(), before + 2) << "on purpose";
}

TEST_F(PosixProcess, ALostCodeIsAFailure)
{
    // A host that ignores the ends of its children never hears of their codes.
    struct sigaction ignoring = {}, former;
    ignoring.sa_handler = SIG_IGN;
    sigaction(SIGCHLD, &ignoring, &former);
    EXPECT_FALSE(LaunchExeBlocking(code, program.c_str(), ZOR_W("exit 0")));
    sigaction(SIGCHLD, &former, nullptr);
}

TEST_F(PosixProcess, SignalsHaveCodesAbove128)
{
    for (const int signal : {SIGTERM, SIGSEGV}) {
        const Wide shell("/bin/sh");
        Wide arguments;
        arguments.Format(ZOR_W("-c \"kill -%d $$\""), signal);
        EXPECT_TRUE(LaunchExeBlocking(code, shell.c_str(), arguments.c_str()));
        EXPECT_EQ(code, static_cast<DWORD>(128 + signal));
    }
}

TEST_F(PosixProcess, NothingButTheStandardStreamsIsHandedDown)
{
    const int leaked = open("/dev/null", O_RDONLY); // without O_CLOEXEC
    sigset_t blocked, before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const Wide shell("/bin/sh");
    const std::string out = (folder / "out").string();
    // The listing itself holds one more while it runs.
    EXPECT_TRUE(LaunchExeBlocking(
        code, shell.c_str(),
        Wide(("-c \"ls /proc/self/fd | wc -l > " + out + "; kill -TERM $$\"").c_str()).c_str()));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    close(leaked);
    EXPECT_EQ(folder.read("out"), "4\n");
    EXPECT_EQ(code, static_cast<DWORD>(128 + SIGTERM)) << "no signal is blocked";
}

TEST_F(PosixProcess, AProgramWithoutRights)
{
    folder.write("program", "#!/bin/sh\nexit 0\n");
    EXPECT_FALSE(LaunchExe(folder.wide("program").c_str(), nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    std::filesystem::permissions(folder / "program", std::filesystem::perms::owner_all);
    EXPECT_TRUE(LaunchExeBlocking(code, folder.wide("program").c_str(), nullptr));
    EXPECT_EQ(code, 0u);
}

TEST_F(PosixProcess, WalksOfFailingCallsLeakNothing)
{
    const size_t handles = open_handle_count();
    const int descriptors = open_descriptors();
    int failures = 0;
    for (int number = 1; number < 10; ++number) {
        bool failed = false;
        std::string name;
        {
            FailingCalls failing(number, EAGAIN);
            const bool result = LaunchExeBlocking(code, program.c_str(), ZOR_W("exit 0"));
            failed = failing.failed();
            name = failing.name();
            EXPECT_EQ(result, !failed) << number << name;
        }
        failures += failed;
        // A failed wait leaves its two handles open, as above, but no descriptor.
        EXPECT_EQ(open_descriptors(), descriptors) << number;
        if (!failed)
            break;
    }
    EXPECT_GE(failures, 2);
    EXPECT_GE(open_handle_count(), handles);
}
