#include "zorutils/platform/posix/debug_stream.h"

#include "zorutils/platform/winapi.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

#include <stdlib.h>
#include <thread>
#include <vector>

namespace {

using zor::platform::set_debug_stream;

class DebugStream : public testing::Test
{
    void TearDown() override { set_debug_stream(nullptr, nullptr); }
};

void collect(const WCHAR* text, void* context)
{
    static_cast<std::vector<std::u16string>*>(context)->emplace_back(text);
}

TEST_F(DebugStream, GetsItsContext)
{
    std::vector<std::u16string> first;
    std::vector<std::u16string> second;
    set_debug_stream(collect, &first);
    OutputDebugStringW(u"1");
    set_debug_stream(collect, &second);
    OutputDebugStringW(u"2");
    set_debug_stream(nullptr, nullptr);
    OutputDebugStringW(u"3");
    EXPECT_EQ(first, std::vector<std::u16string>{u"1"});
    EXPECT_EQ(second, std::vector<std::u16string>{u"2"});
}

int g_calls = 0;

TEST_F(DebugStream, DoesntHearItself)
{
    g_calls = 0;
    const auto echo = [](const WCHAR*, void*) {
        ++g_calls;
        OutputDebugStringW(u"again");
        OutputDebugStringA("again");
    };
    set_debug_stream(echo, nullptr);
    OutputDebugStringW(u"once");
    OutputDebugStringW(u"twice");
    EXPECT_EQ(g_calls, 2);
}

TEST_F(DebugStream, RunsNoMoreOnceItIsReplaced)
{
    // The sanitizers see a call that comes after the texts are gone.
    for (int i = 0; i < 50; ++i) {
        auto texts = std::make_unique<std::vector<std::u16string>>();
        set_debug_stream(collect, texts.get());
        std::thread other([] {
            for (int j = 0; j < 20; ++j)
                OutputDebugStringW(u"text");
        });
        set_debug_stream(nullptr, nullptr);
        texts.reset();
        other.join();
    }
}

// The environment is read once, so that each case is a process of its own.
TEST(DebugStreamDeathTest, GoesToTheErrorStreamAsUtf8WhenTheEnvironmentSaysSo)
{
    ZOR_NEEDS_PAGE_1252();
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            setenv("ZOR_DEBUG_STREAM", "stderr", 1);
            OutputDebugStringW(u"wide \u017E \U0001D538;");
            OutputDebugStringA("narrow \x80;");
            OutputDebugStringW(nullptr);
            exit(0);
        },
        testing::ExitedWithCode(0), "wide \xC5\xBE \xF0\x9D\x94\xB8;narrow \xE2\x82\xAC;");
}

TEST(DebugStreamDeathTest, IsSilentOtherwise)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            setenv("ZOR_DEBUG_STREAM", "other", 1);
            OutputDebugStringW(u"text");
            exit(0);
        },
        testing::ExitedWithCode(0), "^$");
}

} // namespace
