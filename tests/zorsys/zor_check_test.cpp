#include "zorutils/zorsys/zor_check.h"

#include "tests/support/debug_capture.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

std::string enforced(const char* file, int line, const char* message)
{
    try {
        zor_logging::zor_enforce(file, line, message);
    } catch (const std::exception& error) {
        return error.what();
    }
}

TEST(ZorErrLog, RecordsMessageFileAndLineAndReturns)
{
    DebugCapture capture;
    zor_logging::zor_err_log("a", 7, "oops");
    EXPECT_EQ(records(capture, u"DBGCHK oops a @ 7"), 1);
}

TEST(ZorErrLog, LeavesTwoBlanksForAnEmptyMessage)
{
    DebugCapture capture;
    zor_logging::zor_err_log("fs\\zor_ini_file", 120, "");
    EXPECT_EQ(records(capture, u"DBGCHK  fs\\zor_ini_file @ 120"), 1);
}

TEST(ZorEnforce, RaisesTheThreeLineText)
{
    EXPECT_EQ(enforced("a", 7, "oops"), "Error oops\na\n@7");
    EXPECT_EQ(enforced("a", -1, ""), "Error \na\n@-1");
}

TEST(ZorEnforce, ReportsBeforeItRaises)
{
    DebugCapture capture;
    EXPECT_THROW(zor_logging::zor_enforce("a", 8, "oops"), std::exception);
    EXPECT_EQ(records(capture, u"DBGCHK oops a @ 8"), 1);
}

TEST(ZorEnforce, KeepsItsOwnCopyOfTheText)
{
    std::string message = "first";
    try {
        zor_logging::zor_enforce("a", 1, message.c_str());
    } catch (const std::exception& error) {
        const std::exception_ptr kept = std::current_exception();
        message = "other";
        EXPECT_STREQ(error.what(), "Error first\na\n@1");
    }
}

TEST(ZorEnforce, IsNotARuntimeError)
{
    try {
        zor_logging::zor_enforce("a", 1, "");
    } catch (const std::runtime_error&) {
        FAIL() << "a failed check was taken for a failed call";
    } catch (const std::exception&) {
    }
}

} // namespace
