#include "zorutils/zorsys/zor_thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <boost/thread/tss.hpp>
#include <string>
#include <vector>

#include "tests/support/debug_capture.h"
#include "tests/support/threads.h"

using namespace zor_test;
using zor::thread::setThreadName;
using zor::thread::startThread;

namespace {

std::u16string wide(const std::string& text)
{
    return std::u16string(text.begin(), text.end());
}

// What a body saw, for the test that started it.
struct Seen
{
    DWORD id = 0;
    std::string name;
    std::atomic<int> calls{0};
};

DWORD WINAPI look_around(void* given)
{
    auto& seen = *static_cast<Seen*>(given);
    seen.id = current_thread();
    seen.name = name_of_this_thread();
    ++seen.calls;
    return 7;
}

struct Waiting
{
    std::atomic<DWORD> id{0};
    std::atomic<bool> named{false};
    std::string name;
};

DWORD WINAPI wait_for_name(void* given)
{
    auto& self = *static_cast<Waiting*>(given);
    self.id = current_thread();
    while (!self.named)
        boost::this_thread::yield();
    self.name = name_of_this_thread();
    return 0;
}

class Thread : public testing::Test
{
protected:
    Thread() { watch_names(); }
};

} // namespace

TEST_F(Thread, OfAFunctionEndsWithItsResult)
{
    Seen seen;
    void* const thread = startThread("file", 1, "levels", look_around, &seen, 0);
    ASSERT_NE(thread, nullptr);
    EXPECT_EQ(wait_for(thread), 7u);
    EXPECT_EQ(seen.calls, 1);
    EXPECT_NE(seen.id, current_thread());
    EXPECT_EQ(seen.name, "levels");
}

TEST_F(Thread, OfAFunctionLogsItsStartAndItsEnd)
{
    const DebugCapture capture;
    Seen seen;
    wait_for(startThread("file", 1, "levels", look_around, &seen, 0));
    const std::string id = std::to_string(seen.id);
    EXPECT_EQ(records(capture, u"THR_S #" + wide(id) + u" levels"), 1);
    EXPECT_EQ(records(capture, u"THR_F #" + wide(id) + u" levels"), 1);
    const auto texts = capture.texts();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_NE(texts[0].find(u"THR_S"), std::u16string::npos) << "the start comes first";
}

TEST_F(Thread, HasCopiesOfItsTexts)
{
    const DebugCapture capture;
    Seen seen;
    std::string name = "a name of its own", file = "file";
    void* const thread =
        startThread(file.c_str(), 1, name.c_str(), look_around, &seen, 4 /* suspended */);
    name.assign(name.size(), 'x');
    file.assign(file.size(), 'x');
    EXPECT_EQ(seen.calls, 0);
    EXPECT_TRUE(capture.texts().empty()) << "the thread itself logs and names";
    EXPECT_EQ(resume(thread), 1u);
    EXPECT_EQ(wait_for(thread), 7u);
    EXPECT_EQ(seen.name, kept_of("a name of its own"));
    EXPECT_EQ(records(capture, u"THR_S #" + wide(std::to_string(seen.id)) + u" a name of its own"),
              1)
        << "whole in the log";
}

TEST_F(Thread, TakesPercentSignsInItsNameAsTheyAre)
{
    const DebugCapture capture;
    Seen seen;
    wait_for(startThread("file", 1, "100%s %n", look_around, &seen, 0));
    EXPECT_EQ(seen.name, "100%s %n");
    EXPECT_EQ(records(capture, u"THR_S #" + wide(std::to_string(seen.id)) + u" 100%s %n"), 1);
}

TEST_F(Thread, ManyRunSideBySide)
{
    Seen seen[50];
    std::vector<void*> threads;
    for (Seen& one : seen)
        threads.push_back(startThread("file", 1, "one of many", look_around, &one, 0));
    for (void* const thread : threads)
        EXPECT_EQ(wait_for(thread), 7u);
    for (const Seen& one : seen)
        EXPECT_EQ(one.calls, 1);
}

TEST_F(Thread, IsNamedForDebuggers)
{
    // Without one too, and for threads and names that are none.
    setThreadName(current_thread(), "a test of names");
    EXPECT_EQ(name_of_this_thread(), "a test of names");
    setThreadName(current_thread(), "a name of more than fifteen bytes");
    EXPECT_EQ(name_of_this_thread(), kept_of("a name of more than fifteen bytes"));
    setThreadName(0, "nobody");
    setThreadName(0xFFFFFFFF, "nobody");
    EXPECT_EQ(name_of_this_thread(), kept_of("a name of more than fifteen bytes"));
    setThreadName(current_thread(), "");
    EXPECT_EQ(name_of_this_thread(), "");
    setThreadName(current_thread(), nullptr);
    EXPECT_EQ(name_of_this_thread(), "");
}

TEST_F(Thread, IsNamedByAnotherThread)
{
    Waiting waiting;
    void* const thread = startThread("file", 1, "before", wait_for_name, &waiting, 0);
    while (waiting.id == 0)
        boost::this_thread::yield();
    setThreadName(waiting.id, "afterwards");
    waiting.named = true;
    wait_for(thread);
    EXPECT_EQ(waiting.name, "afterwards");
}

// --- The class.

TEST_F(Thread, ObjectRunsItsBodyUnderItsName)
{
    const DebugCapture capture;
    std::string name;
    zor::thread::thread thread("reader of points", [&] { name = name_of_this_thread(); });
    ASSERT_TRUE(thread.joinable());
    ASSERT_NE(thread.get_thread_info(), nullptr);
    EXPECT_STREQ(thread.get_thread_info()->name.c_str(), "reader of points");
    thread.join();
    EXPECT_FALSE(thread.joinable());
    EXPECT_EQ(name, kept_of("reader of points"));
    EXPECT_TRUE(capture.texts().empty()) << "no lines in the log";
}

TEST_F(Thread, ObjectWithoutAThread)
{
    zor::thread::thread none;
    EXPECT_FALSE(none.joinable());
    EXPECT_EQ(none.get_thread_info(), nullptr);
}

TEST_F(Thread, ObjectEndsQuietlyWhenItIsInterrupted)
{
    std::atomic<bool> waits{false}, behind{false}, called{false};
    zor::thread::thread thread("waits", [&] {
        boost::this_thread::at_thread_exit([&] { called = true; });
        waits = true;
        for (;;)
            boost::this_thread::sleep_for(boost::chrono::hours(1));
        behind = true;
    });
    while (!waits)
        boost::this_thread::yield();
    thread.interrupt();
    thread.join();
    EXPECT_FALSE(behind);
    EXPECT_TRUE(called) << "its exit callbacks run";
    zor::thread::thread thrower("throws", [] { throw boost::thread_interrupted(); });
    thrower.join();
}

TEST_F(Thread, ObjectReleasesWhatIsSpecificToIt)
{
    static std::atomic<int> released{0};
    released = 0;
    struct Value
    {
        ~Value() { ++released; }
    };
    static boost::thread_specific_ptr<Value> value;
    std::atomic<int> order{0}, at_exit{0};
    zor::thread::thread thread("specific", [&] {
        value.reset(new Value);
        boost::this_thread::at_thread_exit([&] { at_exit = ++order; });
        EXPECT_EQ(released, 0);
    });
    thread.join();
    EXPECT_EQ(released, 1);
    EXPECT_EQ(at_exit, 1);
}

TEST_F(Thread, ObjectMayGoBeforeItsThread)
{
    auto done = std::make_shared<std::atomic<bool>>(false);
    auto go = std::make_shared<std::atomic<bool>>(false);
    {
        zor::thread::thread thread("left alone", [done, go] {
            while (!*go)
                boost::this_thread::yield();
            *done = true;
        });
        thread.detach();
        EXPECT_FALSE(thread.joinable());
    }
    *go = true;
    while (!*done)
        boost::this_thread::yield();
}

TEST_F(Thread, ObjectsStartAndJoinByTheHundreds)
{
    std::atomic<int> runs{0};
    for (int round = 0; round < 20; ++round) {
        std::vector<std::unique_ptr<zor::thread::thread>> threads;
        for (int i = 0; i < 20; ++i)
            threads.push_back(
                std::make_unique<zor::thread::thread>("one of many", [&runs] { ++runs; }));
        for (const auto& thread : threads) {
            EXPECT_STREQ(thread->get_thread_info()->name.c_str(), "one of many");
            thread->join();
        }
    }
    EXPECT_EQ(runs, 400);
}

TEST_F(Thread, ObjectsAreToldApart)
{
    zor::thread::thread one("one", [] {}), other("other", [] {});
    EXPECT_NE(one.get_thread_info(), other.get_thread_info());
    EXPECT_NE(one.get_id(), other.get_id());
    one.join();
    other.join();
}
