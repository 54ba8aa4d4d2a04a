// The log as an object, with a clock of the test's own.
#include "zorutils/zorsys/zor_logger.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <thread>

#include "tests/support/debug_capture.h"
#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "zorutils/platform/clock.h"
#include "zorutils/platform/win_types.h"

using namespace zor_test;
using zor_logging::CZorLogger;

namespace {

std::atomic<DWORD> now{0};

DWORD test_clock()
{
    return now.load();
}

class Logger : public testing::Test
{
protected:
    Logger()
    {
        now = 1000;
        zor::platform::set_tick_count(test_clock);
        m_logger = std::make_unique<CZorLogger>();
    }
    ~Logger() override
    {
        m_logger.reset();
        zor::platform::set_tick_count(nullptr);
    }

    CZorLogger& log() { return *m_logger; }
    bool open() { return log().openFile(folder.wide("log").c_str()); }
    void close() { m_logger.reset(); }
    void write(const std::string& text, DWORD mask = 7) { log().logText(mask, Wide(text.c_str())); }

    // What is on the disk, without the mark, as ASCII; zeroes as "~".
    std::string on_disk()
    {
        const std::string bytes = folder.read("log");
        if (bytes.empty())
            return "";
        EXPECT_EQ(bytes.substr(0, 2), "\xFF\xFE");
        std::string text;
        for (size_t i = 2; i + 1 < bytes.size(); i += 2)
            text += bytes[i + 1] != 0 ? '?' : bytes[i] == 0 ? '~' : bytes[i];
        return text;
    }
    void trace(DWORD mask, const char* format, ...)
    {
        va_list arguments;
        va_start(arguments, format);
        log().logFormat(mask, format, arguments);
        va_end(arguments);
    }

    TempFolder folder;

private:
    std::unique_ptr<CZorLogger> m_logger;
};

std::string ascii(const std::u16string& text)
{
    return shown(text.c_str(), text.size());
}

} // namespace

TEST_F(Logger, WritesLinesWithTimeAndMask)
{
    ASSERT_TRUE(open());
    EXPECT_EQ(on_disk(), "") << "the mark waits too";
    now = 1000 + 12345;
    write("text of the record");
    now = 1000 + 100000 * 1000 + 7;
    write("");
    log().flush();
    EXPECT_EQ(on_disk(), "00012.345 ; 7 ; text of the record\r\n100000.007 ; 7 ; \r\n");
    close();
    EXPECT_EQ(on_disk(), "00012.345 ; 7 ; text of the record\r\n100000.007 ; 7 ; \r\n"
                         "100000.007 ; 7 ; Logging finished\r\n");
}

TEST_F(Logger, AFileBeginsWithItsMark)
{
    ASSERT_TRUE(open());
    log().flush();
    EXPECT_EQ(folder.read("log"), "\xFF\xFE");
}

TEST_F(Logger, MoreThan1024BytesAreWritten)
{
    // The mark, and a line of 16 units in front and 2 behind: 2 + 2 * (18 + n) bytes.
    ASSERT_TRUE(open());
    write(std::string(493, 'x'));
    EXPECT_EQ(folder.read("log").size(), 0u) << "1024 bytes wait";
    write("");
    EXPECT_EQ(folder.read("log").size(), 1024u + 36u);
    write(std::string(495, 'y'));
    EXPECT_EQ(folder.read("log").size(), 1060u + 1026u) << "one unit more does not wait";
}

TEST_F(Logger, ASilenceOfMoreThan5000MillisecondsIsWrittenAtItsEnd)
{
    ASSERT_TRUE(open());
    now = now + 5000;
    write("a");
    EXPECT_EQ(folder.read("log").size(), 0u);
    now = now + 5001;
    write("b");
    EXPECT_EQ(on_disk(), "00005.000 ; 7 ; a\r\n00010.001 ; 7 ; b\r\n");
    write("c");
    EXPECT_EQ(on_disk(), "00005.000 ; 7 ; a\r\n00010.001 ; 7 ; b\r\n");
}

TEST_F(Logger, TimeIsAnUnsignedDifference)
{
    now = 0xFFFFFF00;
    ASSERT_TRUE(open());
    now = 0x100; // the counter has wrapped
    write("a");
    now = 0xFFFFFEFF;
    write("b");
    log().flush();
    EXPECT_EQ(on_disk(), "00000.512 ; 7 ; a\r\n4294967.295 ; 7 ; b\r\n");
}

TEST_F(Logger, TheFilterChoosesMasks)
{
    ASSERT_TRUE(open());
    const DebugCapture stream;
    write("debug", 6);
    EXPECT_TRUE(stream.texts().empty());
    write("always", 7);
    write("one", 1);
    EXPECT_EQ(stream.texts().size(), 1u) << "a mask without 4 has no copy on the stream";
    log().setFilter(2);
    EXPECT_EQ(log().filter(), 2u);
    write("debug", 6);
    write("one", 1);
    log().setFilter(0);
    write("always", 7);
    log().flush();
    EXPECT_EQ(on_disk(), "00000.000 ; 7 ; always\r\n00000.000 ; 1 ; one\r\n"
                         "00000.000 ; 6 ; debug\r\n");
    close();
    EXPECT_EQ(on_disk().find("finished"), std::string::npos) << "the filter lets nothing through";
}

TEST_F(Logger, ADebuggingFilterStillEndsTheLog)
{
    ASSERT_TRUE(open());
    log().setFilter(4);
    close();
    EXPECT_EQ(on_disk(), "00000.000 ; 7 ; Logging finished\r\n");
}

TEST_F(Logger, RecordsBehindTheEndAreAddedOneByOne)
{
    ASSERT_TRUE(open());
    write("before");
    log().finish();
    EXPECT_TRUE(log().getFileName().empty());
    write("behind it");
    EXPECT_EQ(on_disk(), "00000.000 ; 7 ; before\r\n00000.000 ; 7 ; Logging finished\r\n"
                         "00000.000 ; 7 ; behind it\r\n")
        << "at once, since nobody would write them later";
    write("and once more");
    EXPECT_NE(on_disk().find("behind it\r\n00000.000 ; 7 ; and once more\r\n"), std::string::npos);
}

TEST_F(Logger, FormatsAreTheStrings)
{
    ASSERT_TRUE(open());
    trace(7, "%s %d %S", "narrow", 5, ZOR_W("wide"));
    trace(6, "%s", static_cast<const char*>(nullptr)); // filtered before it is formatted
    log().logText(7, Narrow("string"));
    log().logText(7, ZOR_W("pointer"));
    log().flush();
    EXPECT_EQ(on_disk(), "00000.000 ; 7 ; narrow 5 wide\r\n00000.000 ; 7 ; string\r\n"
                         "00000.000 ; 7 ; pointer\r\n");
}

TEST_F(Logger, ZeroesStayInTheFileAndArePointsOnTheStream)
{
    ASSERT_TRUE(open());
    const DebugCapture stream;
    const WCHAR text[] = {'a', 0, 'b', 0};
    log().writeEntry(7, 4, text);
    log().flush();
    EXPECT_EQ(on_disk(), "00000.000 ; 7 ; a~b~\r\n");
    ASSERT_EQ(stream.texts().size(), 1u);
    EXPECT_EQ(ascii(stream.texts()[0]), "00000.000 ; 7 ; a.b.\\u000D\\u000A");
}

TEST_F(Logger, TheStreamTakesPiecesOf250Units)
{
    ASSERT_TRUE(open());
    for (const size_t units : {250u, 251u, 500u, 501u, 18u}) {
        const DebugCapture stream;
        write(std::string(units - 18, 'x'));
        const auto pieces = stream.texts();
        ASSERT_EQ(pieces.size(), (units + 249) / 250) << units;
        for (size_t i = 0; i + 1 < pieces.size(); ++i)
            EXPECT_EQ(pieces[i].size(), 250u);
        EXPECT_EQ(pieces.back().size(), (units - 1) % 250 + 1);
    }
}

TEST_F(Logger, WithoutAFileRecordsGoToTheStreamAlone)
{
    EXPECT_FALSE(log().openFile(folder.wide("none/log").c_str()));
    EXPECT_EQ(shown(log().getFileName()), "");
    {
        const DebugCapture stream;
        write("a record");
        ASSERT_EQ(stream.texts().size(), 1u);
        EXPECT_NE(stream.texts()[0].find(u" ; 7 ; a record\r\n"), std::u16string::npos);
    }
    log().flush();
    CZorLogger second;
    EXPECT_FALSE(second.openFile(folder.wide("a..b").c_str())) << "two dots are refused";
}

TEST_F(Logger, TheOpenFileIsNamedAndCanBeRead)
{
    EXPECT_EQ(shown(log().getFileName()), "");
    folder.write("log", "an older run");
    ASSERT_TRUE(open());
    EXPECT_EQ(shown(log().getFileName()), shown(folder.wide("log")));
    EXPECT_EQ(folder.read("log"), "") << "the older run is gone";
}

TEST_F(Logger, RecordsOfManyThreadsAreWholeAndInTheirThreadsOrder)
{
    constexpr int threads = 8, records = ZOR_TEST_LOG_RECORDS;
    ASSERT_TRUE(open());
    std::atomic<int> flushes{0};
    {
        std::vector<std::thread> all;
        for (int t = 0; t < threads; ++t)
            all.emplace_back([t, this, &flushes] {
                for (int i = 0; i < records; ++i) {
                    write("thread " + std::to_string(t) + " record " + std::to_string(i));
                    if (i % 1000 == 0 && flushes++ >= 0)
                        log().flush();
                }
            });
        for (std::thread& thread : all)
            thread.join();
    }
    close();
    const std::string text = on_disk();
    std::map<int, int> next;
    int count = 0;
    for (size_t at = 0; at < text.size();) {
        const size_t end = text.find("\r\n", at);
        ASSERT_NE(end, std::string::npos);
        int t = -1, i = -1;
        const std::string line = text.substr(at, end - at);
        if (sscanf(line.c_str(), "00000.000 ; 7 ; thread %d record %d", &t, &i) == 2) {
            ASSERT_EQ(next[t]++, i);
            ++count;
        }
        at = end + 2;
    }
    EXPECT_EQ(count, threads * records);
}

TEST_F(Logger, TheStreamHasTheRecordsInTheOrderOfTheFile)
{
    ASSERT_TRUE(open());
    const DebugCapture stream;
    std::vector<std::thread> all;
    for (int t = 0; t < 8; ++t)
        all.emplace_back([t, this] {
            for (int i = 0; i < 50; ++i)
                write("thread " + std::to_string(t) + " record " + std::to_string(i));
        });
    for (std::thread& thread : all)
        thread.join();
    log().flush();
    std::string shown_lines;
    for (const std::u16string& text : stream.texts()) {
        // Other programs may write to the stream too.
        if (text.find(u" ; 7 ; thread ") != std::u16string::npos)
            for (const char16_t unit : text)
                shown_lines += static_cast<char>(unit);
    }
    EXPECT_EQ(shown_lines, on_disk());
    EXPECT_EQ(std::count(shown_lines.begin(), shown_lines.end(), '\n'), 400);
}
