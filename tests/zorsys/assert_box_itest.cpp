#include "zorutils/zorsys/assert_box_internal.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "tests/support/box_answer.h"

using namespace zor_test;
using zor_logging::zor_assert_box;

namespace {

std::atomic<int> second{-1};

// Another thread's assertion while a box is open.
void assert_again()
{
    std::thread([] { second = zor_assert_box("other", 1, "while another is open"); }).join();
}

int boxed(BoxButton button, const char* file, unsigned int line, const char* message,
          std::u16string* text = nullptr)
{
    const BoxAnswer answer("ZOR ASSERT", button);
    const int result = zor_assert_box(file, line, message);
    EXPECT_EQ(answer.texts().size(), 1u);
    if (text != nullptr && !answer.texts().empty())
        *text = answer.texts()[0];
    return result;
}

} // namespace

TEST(AssertBox, RetryIsZeroAndIgnoreIsOne)
{
    EXPECT_EQ(boxed(BoxButton::Retry, "a", 1, "b"), 0);
    EXPECT_EQ(boxed(BoxButton::Ignore, "a", 1, "b"), 1);
    EXPECT_EQ(boxed(BoxButton::Retry, "a", 1, "b"), 0) << "the guard is free again";
}

TEST(AssertBox, ShowsFileLineAndMessage)
{
    std::u16string text;
    boxed(BoxButton::Ignore, "fs\\file", 4000000000u, "it is wrong", &text);
    EXPECT_EQ(text, u"fs\\file\n4000000000\n\nit is wrong");
    boxed(BoxButton::Ignore, "fs\\file", 7, nullptr, &text);
    EXPECT_EQ(text.substr(0, 9), u"fs\\file\n7");
}

TEST(AssertBox, ASecondOneIsNotShown)
{
    second = -1;
    const BoxAnswer answer("ZOR ASSERT", BoxButton::Retry, assert_again);
    EXPECT_EQ(zor_assert_box("a", 1, "b"), 0);
    EXPECT_EQ(second, 1) << "no debugger is attached";
    EXPECT_EQ(answer.texts().size(), 1u);
}

TEST(AssertBoxDeathTest, AbortEndsTheProcessWithThree)
{
    // Windows has no such tests; there a program of its own shows it.
#if GTEST_HAS_DEATH_TEST
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(boxed(BoxButton::Abort, "a", 1, "b"), testing::ExitedWithCode(3), "");
#else
    GTEST_SKIP() << "the framework has no death tests here";
#endif
}
