// What the log asks of the disk.
#include <errno.h>
#include <gtest/gtest.h>

#include "tests/platform/posix/failing_calls.h"
#include "tests/support/temp_folder.h"
#include "zorutils/zorsys/zor_logger.h"

using namespace zor_test;

TEST(LogFlush, ReachesTheDiskAlsoWithNothingPending)
{
    const TempFolder folder;
    zor_logging::CZorLogger log;
    ASSERT_TRUE(log.openFile(folder.wide("log").c_str()));
    log.logText(7, ZOR_W("record"));
    log.flush();
    const std::string before = folder.read("log");
    {
        const FailingCalls calls(1, EIO);
        log.flush();
        EXPECT_EQ(calls.name(), "fsync") << "and nothing is written";
    }
    EXPECT_EQ(folder.read("log"), before);
    {
        const FailingCalls calls(1, EIO);
        log.logText(7, ZOR_W("it waits"));
        EXPECT_FALSE(calls.failed()) << "a record alone asks nothing of the system";
    }
}

TEST(LogFlush, AWriteThatIsRefusedLosesItsRecordsAndGoesOn)
{
    const TempFolder folder;
    zor_logging::CZorLogger log;
    ASSERT_TRUE(log.openFile(folder.wide("log").c_str()));
    log.flush();
    log.logText(7, ZOR_W("lost"));
    {
        const FailingCalls calls(1, ENOSPC, FailingCalls::from_then_on);
        log.flush();
        EXPECT_TRUE(calls.failed());
    }
    log.logText(7, ZOR_W("kept"));
    log.flush();
    const std::string text = folder.read("log");
    EXPECT_EQ(text.find(utf16(ZOR_W("lost"))), std::string::npos);
    EXPECT_NE(text.find(utf16(ZOR_W("kept"))), std::string::npos);
}
