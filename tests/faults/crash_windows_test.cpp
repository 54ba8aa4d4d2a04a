// Faults as this target has them.
#include "tests/faults/crash_fixture.h"

using namespace zor_test;

TEST_F(Crash, OfTheFloatingPointStackGoesOnToTheSystem)
{
    const Ended end = run("stack_check");
    EXPECT_TRUE(end.in_time);
    EXPECT_FALSE(end.with(after_crash)) << "the handler must not run";
    EXPECT_EQ(log().find(begins + "STACKOVERFLOW at zorsys\\zor_thread@n\n" + crashed("C0000092")),
              0u)
        << log();
    EXPECT_TRUE(folder.has(slot(0) + "/dump.dmp"));
}

TEST_F(Crash, ByTheStacksEndWithStackLeft)
{
    EXPECT_TRUE(run("overflow_code").with(after_crash));
    const std::string until_then =
        begins + "STACKOVERFLOW at zorsys\\zor_thread@n\n" + crashed("C00000FD");
    EXPECT_EQ(log(), until_then + finished);
    expect_whole_slot(0, until_then);
}

TEST_F(Crash, WithoutStackLeftEndsWithoutWaiting)
{
    // No stack is set aside for it: what is left does not suffice for the record.
    const Ended end = run("overflow");
    EXPECT_TRUE(end.in_time);
    EXPECT_EQ(log().find("THR_F"), std::string::npos);
    EXPECT_TRUE(run("answer_exit C0000005").with(0)) << "and the next one is recorded";
    EXPECT_EQ(slots().size(), 1u);
}

TEST_F(Crash, GivingUpIsNone)
{
    EXPECT_TRUE(run("abort").with(3));
    EXPECT_FALSE(folder.has("user/SupportInfo"));
}
