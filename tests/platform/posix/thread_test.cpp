// Threads that the system refuses, and handles that are none.
#include "zorutils/platform/posix/thread.h"

#include <errno.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include "tests/platform/posix/failing_calls.h"
#include "zorutils/platform/posix/handle_table.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/zor_thread.h"

using namespace zor_test;

namespace {

DWORD WINAPI seven(void*)
{
    return 7;
}

} // namespace

TEST(PosixThread, ThatIsRefusedIsNull)
{
    const size_t open = zor::platform::open_handle_count();
    {
        const FailingCalls failing(1, EAGAIN);
        EXPECT_EQ(CreateThread(nullptr, 0, seven, nullptr, 0, nullptr), nullptr);
        EXPECT_TRUE(failing.failed());
        EXPECT_NE(GetLastError(), DWORD(ERROR_SUCCESS));
    }
    EXPECT_EQ(zor::platform::open_handle_count(), open);
}

TEST(PosixThread, OfAFunctionThatIsRefusedIsNullToo)
{
    const FailingCalls failing(1, EAGAIN);
    EXPECT_EQ(zor::thread::startThread("file", 1, "refused", seven, nullptr, 0), nullptr);
    EXPECT_TRUE(failing.failed());
}

TEST(PosixThread, StillRunsUntilItEnds)
{
    const HANDLE thread = CreateThread(nullptr, 0, seven, nullptr, CREATE_SUSPENDED, nullptr);
    ASSERT_NE(thread, nullptr);
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeThread(thread, &code));
    EXPECT_EQ(code, STILL_ACTIVE);
    EXPECT_EQ(ResumeThread(thread), 1u);
    EXPECT_EQ(ResumeThread(thread), 0u) << "it was not suspended any more";
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(GetExitCodeThread(thread, &code));
    EXPECT_EQ(code, 7u);
    EXPECT_TRUE(CloseHandle(thread));
}

TEST(PosixThread, HandlesOfOtherThingsAreRefused)
{
    DWORD code = 0;
    EXPECT_EQ(ResumeThread(nullptr), ~DWORD{0});
    EXPECT_FALSE(GetExitCodeThread(nullptr, &code));
    EXPECT_EQ(WaitForSingleObject(nullptr, INFINITE), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_HANDLE));
}

TEST(PosixThread, OfTheClassThatIsRefusedRaises)
{
    // A stack that no system has room for.
    pthread_attr_t usual, huge;
    ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
    pthread_attr_init(&huge);
    ASSERT_EQ(pthread_attr_setstacksize(&huge, size_t{1} << 46), 0);
    ASSERT_EQ(pthread_setattr_default_np(&huge), 0);
    try {
        zor::thread::thread thread("refused", [] {});
        ADD_FAILURE() << "it started";
        thread.join();
    } catch (const boost::thread_resource_error& error) {
        EXPECT_EQ(error.code().value(), 11);
        EXPECT_EQ(std::string(error.what()).find("boost::thread_resource_error"), 0u)
            << error.what();
    }
    pthread_setattr_default_np(&usual);
    pthread_attr_destroy(&usual);
    pthread_attr_destroy(&huge);
}
