// Faults as this target has them.
#include <stdlib.h>

#include "tests/faults/crash_fixture.h"

using namespace zor_test;

TEST_F(Crash, ByTheEndOfTheStack)
{
    EXPECT_TRUE(run("overflow").with(after_crash));
    const std::string until_then =
        begins + "STACKOVERFLOW at zorsys\\zor_thread@n\n" + crashed("C00000FD");
    EXPECT_EQ(log(), until_then + finished);
    expect_whole_slot(0, until_then);
}

TEST_F(Crash, ByGivingUp)
{
    expect_recorded(run("abort"), "C0000409");
}

TEST_F(Crash, InTheHeapItself)
{
    if (!ZOR_TEST_HEAP_LOCK)
        GTEST_SKIP() << "the checker has a heap of its own";
    expect_recorded(run("broken_heap"), "C0000409");
}

TEST_F(Crash, BehindTheEndOfAMappedFile)
{
    expect_recorded(run("behind_file " + (folder / "mapped").string()), "C0000006");
}

TEST_F(Crash, InALibraryThatIsBeingLoaded)
{
    expect_recorded(run(std::string("loading_module ") + ZOR_TEST_FAULTING_MODULE), "C0000005");
}

TEST_F(Crash, WithoutALogIsRecordedAllTheSame)
{
    // The file is gone, and its lines go nowhere.
    EXPECT_TRUE(run("lost_log").with(after_crash));
    EXPECT_NE(printed().find("APPCRASH: could not copy logfile"), std::string::npos) << printed();
    EXPECT_EQ(files_in(slot(0)), std::set<std::string>{"dump.dmp"});
}

TEST_F(Crash, WhoseDumpCannotBeWrittenEndsTheProcessAtOnce)
{
    EXPECT_TRUE(run("wild_registers").with(after_second_crash));
    EXPECT_EQ(index(), index_of(0)) << "the next one takes another slot";
}

TEST_F(Crash, ManyInOneProcessTakeNoMoreAndMoreMemory)
{
    const Ended end = run("many 1000");
    EXPECT_TRUE(end.with(0)) << end.signal << " " << end.code;
    EXPECT_EQ(index(), index_of(9));
    EXPECT_EQ(slots().size(), 10u);
    // As many as the first.
    const auto first = std::filesystem::file_size(folder / (slot(0) + "/dump.dmp"));
    const auto last = std::filesystem::file_size(folder / (slot(9) + "/dump.dmp"));
    EXPECT_NEAR(static_cast<double>(first), static_cast<double>(last), 100000.0);
}

TEST_F(Crash, ThatNobodyTakesGoesOnToTheSystem)
{
    const Ended end = run("unguarded");
    EXPECT_TRUE(end.in_time);
    if (ZOR_TEST_HEAP_LOCK) {
        EXPECT_EQ(end.signal, 11);
    } else {
        EXPECT_EQ(end.code, 1u) << "the checker's own handler";
    }
    EXPECT_FALSE(folder.has("user/SupportInfo"));
}

TEST_F(Crash, TheHostsOwnHandlerGetsWhatIsPassedOn)
{
    EXPECT_TRUE(run("host_handler").with(33)) << printed();
    EXPECT_EQ(printed(), "the host's handler\n");
}

TEST(CrashGuard, KeepsTheLibraryThatItsHandlersLieIn)
{
    OwnApp app(ZOR_TEST_UNLOAD_PROGRAM);
    EXPECT_EQ(app.run("1 guarded"), "it stays\n");
    EXPECT_EQ(app.code, 0);
}

TEST_F(Crash, LooksNoFunctionUpForTheFirstTime)
{
    if (!ZOR_TEST_HEAP_LOCK)
        GTEST_SKIP() << "the checker looks its own up";
    // All the steps: a slot to empty, an index with a link to it.
    write_index("[OstrLINK]\r\nLastDumpIndex=0\r\n\r\n" + index_of(9));
    std::filesystem::create_directories(folder / (slot(0) + "/old folder"));
    folder.write(slot(0) + "/old folder/old file", "old");
    setenv("LD_DEBUG", "bindings", 1);
    setenv("ZOR_DEBUG_STREAM", "stderr", 1);
    const Ended end = run("null_write");
    unsetenv("LD_DEBUG");
    unsetenv("ZOR_DEBUG_STREAM");
    EXPECT_TRUE(end.with(after_crash));
    const std::string text = printed();
    EXPECT_NE(text.find("binding file"), std::string::npos) << "the loader tells of them";
    const size_t start = text.find("APPCRASH"), stop = text.find("Logging finished");
    ASSERT_LT(start, stop);
    ASSERT_NE(stop, std::string::npos);
    EXPECT_EQ(text.substr(start, stop - start).find("binding file"), std::string::npos)
        << text.substr(start, stop - start);
}
