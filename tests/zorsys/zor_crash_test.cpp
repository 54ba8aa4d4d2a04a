// Faults, seen from outside: a program of its own for each, with the library beside it.
#include <random>

#include "tests/faults/crash_fixture.h"
#include "tests/fs/other_process.h"

using namespace zor_test;
namespace fs = std::filesystem;

namespace {

class CrashOfKind : public Crash, public testing::WithParamInterface<CrashKind>
{
};

TEST_P(CrashOfKind, IsRecordedAndEndsTheProcess)
{
    const CrashKind kind = GetParam();
    if (std::string(kind.mode) == "heap_lock" && !ZOR_TEST_HEAP_LOCK)
        GTEST_SKIP() << "the checker has a heap of its own";
    expect_recorded(run(kind.mode), kind.code);
    EXPECT_EQ(slots(), std::set<std::string>{"0"});
}

INSTANTIATE_TEST_SUITE_P(
    OnBothTargets, CrashOfKind,
    testing::Values(CrashKind{"null_write", "C0000005"}, CrashKind{"wild_jump", "C0000005"},
                    CrashKind{"misaligned", ZOR_TEST_MISALIGNED}, CrashKind{"divide", "C0000094"},
                    CrashKind{"illegal", "C000001D"}, CrashKind{"throw", "20474343"},
                    CrashKind{"heap_lock", "C0000005"}, CrashKind{"loader_lock", "C0000005"},
                    CrashKind{"own_log_lock", "C0000005"},
                    CrashKind{"static_destructor", "C0000005"}),
    [](const testing::TestParamInfo<CrashKind>& kind) { return std::string(kind.param.mode); });

// Writes a file until the disk is full, and gives back as much as is to be left.
void fill(const fs::path& path, unsigned left)
{
    std::ofstream file(path, std::ios::binary);
    while (file << std::string(1000, 'x') << std::flush) {
    }
    file.close();
    const auto size = fs::file_size(path);
    if (left != 0)
        fs::resize_file(path, size > left ? size - left : 0);
}

// Many dumps take Wine minutes: seconds for each.
constexpr int cycles = ZOR_TEST_CRASH_CYCLES;
constexpr int kills = ZOR_TEST_CRASH_KILLS;
constexpr int busy_runs = cycles < 1000 ? 2 : 30;

} // namespace

TEST_F(Crash, WhileAnotherThreadHoldsTheLogsLock)
{
    const Ended end = run("log_lock");
    EXPECT_TRUE(end.with(after_crash)) << end.code;
    EXPECT_EQ(log(), begins + crashed("C0000005")) << "the log's end finds the lock taken";
    expect_whole_slot(0, begins + crashed("C0000005"));
}

TEST_F(Crash, InTheCleanUpEndsTheProcessAtOnce)
{
    const Ended end = run("in_clean_up");
    EXPECT_TRUE(end.with(after_second_crash)) << end.signal << " " << end.code;
    EXPECT_EQ(log(), begins + crashed("C0000005"));
    EXPECT_EQ(slots(), std::set<std::string>{"0"}) << "no second dump";
    expect_whole_slot(0, begins + crashed("C0000005"));
}

TEST_F(Crash, InTheRecordingEndsTheProcessAtOnce)
{
    const Ended end = run("in_dump");
    EXPECT_TRUE(end.with(after_second_crash)) << end.signal << " " << end.code;
    EXPECT_EQ(slots(), std::set<std::string>{});
    EXPECT_TRUE(run("answer_exit C0000005").with(0)) << "and the next one is recorded";
    EXPECT_EQ(slots().size(), 1u);
}

TEST_F(Crash, OfTwoThreadsAtOnceLeavesWholeSlotsOrEndsAtOnce)
{
    const Ended end = run("two");
    EXPECT_TRUE(end.with(after_crash) || end.with(after_second_crash)) << end.code;
    EXPECT_LE(slots().size(), 2u);
    if (end.with(after_crash)) {
        EXPECT_GE(slots().size(), 1u);
    }
    if (!slots().empty()) {
        EXPECT_EQ(index(), index_of(static_cast<int>(slots().size()) - 1));
    }
}

TEST_F(Crash, AmongBusyThreadsIsRecordedEachTime)
{
    for (int i = 0; i < busy_runs; ++i) {
        const Ended end = run("busy");
        EXPECT_TRUE(end.with(after_crash)) << i << ": " << end.signal << " " << end.code;
        EXPECT_EQ(index(), index_of(i % 10));
        EXPECT_EQ(files_in(slot(i % 10)).count("dump.dmp"), 1u);
        EXPECT_NE(log(i % 10 + 1).find(crashed("C0000005")), std::string::npos);
    }
}

TEST_F(Crash, OnlyTheFaultingThreadMissesItsLastLine)
{
    EXPECT_TRUE(run("return7").with(7));
    EXPECT_EQ(log(), begins + "THR_F #n surveyor's worker\n" + finished);
    EXPECT_FALSE(folder.has("user/SupportInfo")) << "nothing is made ahead";
}

TEST_F(Crash, AThreadStartedSuspendedLogsWhenItGoes)
{
    EXPECT_TRUE(run("suspended").with(7));
    EXPECT_EQ(log(), "before it goes\nTHR_S #n waiting\nTHR_F #n waiting\n" + finished);
}

// --- With a debugger.

TEST_F(Crash, UnderADebuggerBreaksAndRecordsNothing)
{
    const Debugged seen = debug_child(app.program.string(), "null_write", limit_ms);
    EXPECT_GE(seen.faults, 1);
    EXPECT_GE(seen.breaks, 1);
    EXPECT_TRUE(seen.end.in_time);
    EXPECT_FALSE(seen.end.with(after_crash)) << "the handler must not end the process";
    EXPECT_FALSE(folder.has("user/SupportInfo"));
    EXPECT_EQ(log().find("APPCRASH"), std::string::npos);
}

TEST_F(Crash, WhatComesAfterwardsBreaksIntoADebuggerToo)
{
    const Debugged seen = debug_child(app.program.string(), "post_exit", limit_ms);
    EXPECT_EQ(seen.breaks, 1);
    EXPECT_TRUE(seen.end.with(5)) << "and the process goes on: " << seen.end.code;
}

// --- The answers of handleCrash.

TEST_F(Crash, NullAndTheCodeZeroAreNoFaults)
{
    EXPECT_TRUE(run("null").with(0));
    EXPECT_EQ(printed(), "0\n");
    EXPECT_TRUE(run("answer_exit 0").with(0));
    EXPECT_EQ(printed(), "0\n");
    EXPECT_FALSE(folder.has("user/SupportInfo"));
    EXPECT_EQ(log(1).find("APPCRASH"), std::string::npos);
}

TEST_F(Crash, TheAnswerFollowsTheAction)
{
    const struct
    {
        const char* question;
        const char* answer;
        std::string lines;
    } rows[] = {
        {"answer_exit C0000005", "1\n", crashed("C0000005", "made up@1")},
        {"answer_pass_on C0000005", "0\n", crashed("C0000005", "made up@1")},
        {"answer_other C0000005", "1\n", crashed("C0000005", "made up@1")},
        {"answer_exit C0000092", "0\n",
         "STACKOVERFLOW at made up@1\n" + crashed("C0000092", "made up@1")},
        {"answer_exit C00000FD", "1\n",
         "STACKOVERFLOW at made up@1\n" + crashed("C00000FD", "made up@1")},
        {"answer_pass_on C00000FD", "0\n",
         "STACKOVERFLOW at made up@1\n" + crashed("C00000FD", "made up@1")},
        {"answer_exit 12345", "1\n", crashed("12345", "made up@1")},
    };
    int number = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.question);
        EXPECT_TRUE(run(row.question).with(0)) << "the process goes on";
        EXPECT_EQ(printed(), row.answer);
        EXPECT_EQ(log(number + 1), row.lines + finished);
        EXPECT_EQ(index(), index_of(number));
        EXPECT_TRUE(folder.has(slot(number) + "/dump.dmp"));
        ++number;
    }
}

TEST_F(Crash, WhatComesAfterwardsFollowsTheActionToo)
{
    EXPECT_TRUE(run("post_other").with(5));
    EXPECT_TRUE(run("post_exit").with(after_crash));
    EXPECT_EQ(log(), "before the end\n" + finished) << "with the process's clean-up";
    EXPECT_FALSE(folder.has("user/SupportInfo"));
}

// --- The slots and their index.

TEST_F(Crash, TheTenthSlotIsFollowedByTheFirst)
{
    write_index(index_of(9));
    fs::create_directories(folder / (slot(0) + "/old folder"));
    folder.write(slot(0) + "/old folder/old file", "old");
    folder.write(slot(0) + "/dump.dmp", "old");
    folder.write(slot(0) + "/crash_program7.log.txt", "old");
    fs::permissions(folder / (slot(0) + "/crash_program7.log.txt"), fs::perms::owner_read);
    fs::create_directories(folder / slot(1));
    folder.write(slot(1) + "/dump.dmp", "of an earlier fault");
    expect_recorded(run(ZOR_TEST_HEAP_LOCK ? "heap_lock" : "null_write"), "C0000005");
    EXPECT_EQ(folder.read(slot(1) + "/dump.dmp"), "of an earlier fault");
}

TEST_F(Crash, AnIndexThatIsNoneBeginsAnew)
{
    for (const char* const value : {"abc", "", "99999999999", "9", "10", "2147483647"}) {
        SCOPED_TRACE(value);
        write_index("[Settings]\r\nLastDumpIndex=" + std::string(value) + "\r\n");
        EXPECT_TRUE(run("answer_exit C0000005").with(0));
        EXPECT_EQ(index(), index_of(0));
    }
}

TEST_F(Crash, AnIndexBelowMinusOneIsTakenAsItIs)
{
    write_index("[Settings]\r\nLastDumpIndex=-5\r\n");
    EXPECT_TRUE(run("answer_exit C0000005").with(0));
    EXPECT_EQ(index(), index_of(-4));
    EXPECT_TRUE(folder.has(slot(-4) + "/dump.dmp"));
}

TEST_F(Crash, AnIndexThatCannotBeReadIsWrittenAnew)
{
    for (const std::string& bytes :
         {std::string("no settings at all\n"), std::string("[Settings\r\n"), std::string(),
          std::string("[Settings]\r\nLastDumpIndex=3\r\n?\r\n")}) {
        SCOPED_TRACE(bytes);
        write_index(bytes);
        EXPECT_TRUE(run("answer_exit C0000005").with(0));
        EXPECT_EQ(index(), index_of(0));
    }
}

TEST_F(Crash, TheIndexKeepsItsOtherEntriesAndItsEncoding)
{
    write_index("[Other]\r\nKey=kept\r\n\r\n[Settings]\r\nLastDumpIndex=3\r\nMore=1\r\n\r\n");
    EXPECT_TRUE(run("answer_exit C0000005").with(0));
    EXPECT_EQ(index(), "[Other]\r\nKey=kept\r\n\r\n"
                       "[Settings]\r\nLastDumpIndex=4\r\nMore=1\r\n\r\n");
    std::string wide;
    for (const char c : std::string("[Settings]\r\nLastDumpIndex=5\r\n\r\n"))
        wide += std::string(1, c) + '\0';
    write_index("\xFF\xFE" + wide);
    EXPECT_TRUE(run("answer_exit C0000005").with(0));
    EXPECT_TRUE(folder.has(slot(6) + "/dump.dmp"));
    EXPECT_EQ(index().find("LastDumpIndex"), std::string::npos) << "still of wide characters";
    EXPECT_TRUE(run("answer_exit C0000005").with(0));
    EXPECT_TRUE(folder.has(slot(7) + "/dump.dmp"));
}

TEST_F(Crash, ALinkToTheSlotIsTakenBack)
{
    const std::string other = "[OstrLINK]\r\nLastDumpIndex=";
    write_index(other + "4\r\n\r\n" + index_of(3));
    EXPECT_TRUE(run("answer_exit C0000005").with(0));
    EXPECT_EQ(index(), other + "-1\r\n\r\n" + index_of(4));
    write_index(other + "7\r\n\r\n" + index_of(3));
    EXPECT_TRUE(run("answer_exit C0000005").with(0));
    EXPECT_EQ(index(), other + "7\r\n\r\n" + index_of(4)) << "another slot's stays";
    write_index(other + "none\r\n\r\n" + index_of(3));
    EXPECT_TRUE(run("answer_exit C0000005").with(0));
    EXPECT_EQ(index(), other + "none\r\n\r\n" + index_of(4)) << "no slot at all";
}

TEST_F(Crash, AnIndexThatCannotBeWrittenLeavesTheSlots)
{
    fs::create_directories(folder / slot(0));
    folder.write(slot(0) + "/dump.dmp", "of an earlier fault");
    fs::create_directory(folder / index_file);
    EXPECT_TRUE(run("null_write").with(after_crash));
    EXPECT_EQ(log(),
              begins + crashed("C0000005") + "APPCRASH: could not write dumps.ini\n" + finished);
    EXPECT_EQ(slots(), (std::set<std::string>{"0", "dumps.ini"}));
    EXPECT_EQ(folder.read(slot(0) + "/dump.dmp"), "of an earlier fault");
}

TEST_F(Crash, AFolderThatCannotBeMadeIsTold)
{
    folder.write("user/SupportInfo", "a file in the folder's place");
    EXPECT_TRUE(run("null_write").with(after_crash));
    EXPECT_EQ(log(),
              begins + crashed("C0000005") + "APPCRASH: could not write dumps.ini\n" + finished);
    EXPECT_EQ(folder.read("user/SupportInfo"), "a file in the folder's place");
}

TEST_F(Crash, ALogThatCannotBeCopiedIsTold)
{
    fs::create_directories(folder / slot(0));
    folder.write(slot(0) + "/crash_program1.log.txt", "held");
    const OtherProcess holder(folder, slot(0) + "/crash_program1.log.txt");
    ASSERT_TRUE(holder.locked());
    EXPECT_TRUE(run("null_write").with(after_crash));
    EXPECT_EQ(log(),
              begins + crashed("C0000005") + "APPCRASH: could not copy logfile\n" + finished);
    EXPECT_EQ(folder.read(slot(0) + "/dump.dmp").substr(0, 4), "MDMP") << "written all the same";
}

TEST_F(Crash, OfAProcessThatHasNoLogIsRecorded)
{
    for (int i = 1; i <= 10; ++i)
        fs::create_directory(folder / ("user/crash_program" + std::to_string(i) + ".log.txt"));
    EXPECT_TRUE(run("null_write").with(after_crash));
    EXPECT_EQ(index(), index_of(0));
    EXPECT_EQ(files_in(slot(0)), std::set<std::string>{"dump.dmp"});
    EXPECT_EQ(folder.read(slot(0) + "/dump.dmp").substr(0, 4), "MDMP");
}

TEST_F(Crash, ManyInARowLeaveTenSlots)
{
    for (int i = 0; i < cycles; ++i)
        ASSERT_TRUE(run("null_write").with(after_crash)) << i;
    std::set<std::string> ten;
    for (int i = 0; i < 10; ++i)
        ten.insert(std::to_string(i));
    EXPECT_EQ(slots(), ten);
    EXPECT_EQ(index(), index_of((cycles - 1) % 10));
    EXPECT_EQ(files_in("user/SupportInfo/Dumps").size(), 11u) << "nothing but them and the index";
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(files_in(slot(i)).size(), 2u) << i;
}

TEST_F(Crash, AProcessKilledInTheRecordingStopsNoneAfterIt)
{
    std::mt19937 random(20261121);
    for (int i = 0; i < kills; ++i) {
        const unsigned moment =
            ZOR_TEST_CRASH_BEGINS_MS + static_cast<unsigned>(random() % ZOR_TEST_CRASH_TAKES_MS);
        EXPECT_FALSE(run("many 100000", moment).in_time);
        // The one after it takes a slot, whole.
        ASSERT_TRUE(run("answer_exit C0000005").with(0)) << i << " killed after " << moment;
        const std::string now = index();
        int last = -1;
        ASSERT_EQ(sscanf(now.c_str(), "[Settings]\r\nLastDumpIndex=%d", &last), 1) << now;
        ASSERT_TRUE(last >= 0 && last <= 9) << now;
        EXPECT_EQ(files_in(slot(last)).count("dump.dmp"), 1u);
        EXPECT_EQ(folder.read(slot(last) + "/dump.dmp").substr(0, 4), "MDMP");
    }
}

TEST_F(Crash, OnAFullDiskEndsTheProcessAllTheSame)
{
    const char* const disk = std::getenv("ZOR_TEST_SMALL_DISK");
    if (disk == nullptr || *disk == 0)
        GTEST_SKIP() << "no small disk is there";
    const fs::path user = fs::path(disk) / "user";
    fs::remove_all(user);
    fs::create_directories(user);
    app.user(OwnApp::native(user));
    // What is left is less than a dump, then nothing.
    for (const unsigned left : {20000u, 0u}) {
        SCOPED_TRACE(left);
        fill(user / ("filler" + std::to_string(left)), left);
        EXPECT_TRUE(run("null_write").with(after_crash));
    }
    fs::remove_all(user);
    // With room again all is as before.
    fs::create_directories(user);
    EXPECT_TRUE(run("null_write").with(after_crash));
    EXPECT_TRUE(fs::exists(user / "SupportInfo/Dumps/0/dump.dmp"));
    fs::remove_all(user);
}
