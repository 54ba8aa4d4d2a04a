#include "zorutils/platform/winapi.h"

#include "tests/support/debug_capture.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

#include <algorithm>
#include <thread>

namespace {

using Texts = std::vector<std::u16string>;

TEST(DebugOutput, GivesEachTextWholeAndInOrder)
{
    DebugCapture capture;
    OutputDebugStringA("first\r\n");
    OutputDebugStringW(ZOR_W("second"));
    OutputDebugStringA("third");
    EXPECT_EQ(capture.texts(), (Texts{u"first\r\n", u"second", u"third"}));
}

TEST(DebugOutput, TakesNullAsAnEmptyText)
{
    DebugCapture capture;
    OutputDebugStringA(nullptr);
    OutputDebugStringW(nullptr);
    EXPECT_EQ(capture.texts(), (Texts{u"", u""}));
}

TEST(DebugOutput, TakesNarrowTextInTheActiveCodePage)
{
    ZOR_NEEDS_PAGE_1252();
    DebugCapture capture;
    OutputDebugStringA("\xE9\x80");
    OutputDebugStringW(ZOR_W("\u00E9\u20AC"));
    EXPECT_EQ(capture.texts(), (Texts{u"\u00E9\u20AC", u"\u00E9\u20AC"}));
}

TEST(DebugOutput, LeavesTheLastErrorAsItWas)
{
    DebugCapture capture;
    SetLastError(1234);
    OutputDebugStringA("a");
    EXPECT_EQ(GetLastError(), 1234u);
    OutputDebugStringW(ZOR_W("a"));
    EXPECT_EQ(GetLastError(), 1234u);
}

TEST(DebugOutput, KeepsTextsOfSeveralThreadsWhole)
{
    constexpr int per_thread = 200;
    DebugCapture capture;
    const auto send = [](LPCWSTR text) {
        for (int i = 0; i < per_thread; ++i)
            OutputDebugStringW(text);
    };
    std::thread other(send, ZOR_W("other"));
    send(ZOR_W("own"));
    other.join();
    const Texts texts = capture.texts();
    EXPECT_EQ(texts.size(), 2u * per_thread);
    EXPECT_EQ(std::count(texts.begin(), texts.end(), u"own"), per_thread);
    EXPECT_EQ(std::count(texts.begin(), texts.end(), u"other"), per_thread);
}

} // namespace
