// Strings that share a block, used by many threads at once. ThreadSanitizer watches this in CI.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "tests/support/text.h"
#include "zorutils/zortext/zor_string.h"

using namespace zor_test;

namespace {

constexpr int threads = 4;
constexpr int rounds = 2000;

// Starts all threads at the same moment, as far as the machine has it.
template <class Body>
void run_at_once(Body body)
{
    std::atomic<int> waiting{threads};
    std::vector<std::thread> running;
    for (int i = 0; i < threads; ++i) {
        running.emplace_back([&, i] {
            --waiting;
            while (waiting.load() > 0)
                std::this_thread::yield();
            body(i);
        });
    }
    for (auto& thread : running)
        thread.join();
}

} // namespace

TEST(StringThreads, ObjectsThatShareABlockAreCopiedAndDroppedAtOnce)
{
    const Wide source(ZOR_W("shared by all"));
    run_at_once([&](int) {
        for (int round = 0; round < rounds; ++round) {
            const Wide copy = source;
            const Wide again = copy;
            ASSERT_EQ(again.c_str(), source.c_str());
        }
    });
    EXPECT_EQ(block_of(source).nRefCount, 1);
    EXPECT_EQ(shown(source), "shared by all");
}

TEST(StringThreads, EachWriterGetsATextOfItsOwn)
{
    for (int round = 0; round < rounds / 10; ++round) {
        // No holder is left outside the threads, so the last writer may write in place.
        Wide source(ZOR_W("abc"));
        std::vector<Wide> texts(threads, source);
        source.Empty();
        run_at_once([&](int i) {
            texts[static_cast<size_t>(i)].SetAt(0, static_cast<WCHAR>('0' + i));
            texts[static_cast<size_t>(i)] += static_cast<WCHAR>('!');
        });
        for (int i = 0; i < threads; ++i) {
            EXPECT_EQ(texts[static_cast<size_t>(i)][0], static_cast<WCHAR>('0' + i));
            EXPECT_EQ(texts[static_cast<size_t>(i)].GetLength(), 4);
        }
    }
}

TEST(StringThreads, ReadersSeeTheTextWhileAnotherHolderWrites)
{
    for (int round = 0; round < rounds / 10; ++round) {
        std::vector<Wide> texts(threads, Wide(ZOR_W("before")));
        run_at_once([&](int i) {
            Wide& text = texts[static_cast<size_t>(i)];
            if (i == 0)
                text = ZOR_W("afterwards");
            else
                ASSERT_EQ(shown(text), "before");
            text.Empty();
        });
    }
}

TEST(StringThreads, TheEmptyStringIsSharedWithoutAnyWrite)
{
    run_at_once([&](int) {
        for (int round = 0; round < rounds; ++round) {
            Wide empty;
            Wide copy = empty;
            copy = empty;
            copy.Empty();
            copy.GetBuffer(0);
            copy.ReleaseBuffer(0);
            copy.LockBuffer();
            copy.UnlockBuffer();
            copy.Trim().MakeUpper();
            copy = "";
            ASSERT_EQ(copy.GetLength(), 0);
            Narrow narrow(copy.c_str());
            ASSERT_TRUE(narrow.empty());
        }
    });
}
