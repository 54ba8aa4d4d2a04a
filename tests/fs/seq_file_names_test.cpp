#include "zorutils/fs/seq_file_names.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>
#include <vector>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"

using namespace zor_test;

namespace {

class SeqNames : public testing::Test
{
protected:
    // The number of the next name, behind the folder and the prefix.
    std::string next(DWORD most)
    {
        const SeqFileNames names = {folder.wide(), ZOR_W("job"), ZOR_W(".txt"), most};
        const Wide path = names.getNext();
        EXPECT_EQ(shown(path.Left(folder.wide().GetLength())), shown(folder.wide()));
        return shown(path.Mid(folder.wide().GetLength()));
    }

    TempFolder folder;
};

} // namespace

TEST_F(SeqNames, CountAndBeginAgain)
{
    EXPECT_EQ(next(3), "\\job1.txt");
    EXPECT_EQ(folder.read("job.seq.ini"), "1") << "the number alone";
    EXPECT_EQ(next(3), "\\job2.txt");
    EXPECT_EQ(next(3), "\\job3.txt");
    EXPECT_EQ(folder.read("job.seq.ini"), "3");
    EXPECT_EQ(next(3), "\\job1.txt");
}

TEST_F(SeqNames, WhatTheCounterHolds)
{
    struct Row
    {
        const char* counter;
        DWORD most;
        const char* name;
    };
    const Row rows[] = {
        {"", 10, "\\job1.txt"},
        {"text", 10, "\\job1.txt"},
        {"9", 10, "\\job10.txt"},
        {"10", 10, "\\job1.txt"},
        {"11", 10, "\\job1.txt"},
        {"4294967295", 10, "\\job1.txt"},
        {" 5\r\n", 10, "\\job6.txt"},
        {"5x", 10, "\\job6.txt"},
        {"0", 10, "\\job1.txt"},
        {"7", 0, "\\job1.txt"},
        {"0", 0, "\\job1.txt"},
        {"x5", 10, "\\job1.txt"},
        {"4294967293", 0xFFFFFFFF, "\\job4294967294.txt"},
    };
    for (const Row& row : rows) {
        folder.write("job.seq.ini", row.counter);
        EXPECT_EQ(next(row.most), row.name) << row.counter;
    }
}

TEST_F(SeqNames, AFolderThatCannotBeWrittenGivesTheFirstAlways)
{
    const SeqFileNames names = {folder.wide("none"), ZOR_W("job"), ZOR_W(".txt"), 10};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(shown(names.getNext()), shown(folder.wide("none")) + "\\job1.txt");
    // A folder in the counter's place.
    std::filesystem::create_directory(folder / "job.seq.ini");
    EXPECT_EQ(next(10), "\\job1.txt");
    EXPECT_EQ(next(10), "\\job1.txt");
}

TEST_F(SeqNames, CallersAtOnceGetNumbersInRange)
{
    std::vector<std::thread> threads;
    std::vector<std::set<std::string>> names(4);
    for (auto& own : names)
        threads.emplace_back([&own, this] {
            for (int i = 0; i < 50; ++i) {
                const SeqFileNames source = {folder.wide(), ZOR_W("j"), ZOR_W(""), 7};
                own.insert(shown(source.getNext().Mid(folder.wide().GetLength())));
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    const std::set<std::string> all = {"\\j1", "\\j2", "\\j3", "\\j4", "\\j5", "\\j6", "\\j7"};
    for (const auto& own : names)
        for (const std::string& name : own)
            EXPECT_EQ(all.count(name), 1u) << name;
}
