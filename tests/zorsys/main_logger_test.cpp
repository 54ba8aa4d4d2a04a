// The log of a process, seen from outside: a host of its own, with the library beside it, in a
// folder of its own.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <list>
#include <string>

#include "tests/support/own_app.h"
#include "tests/support/text.h"
#include "zorutils/fs/platform_file.h"

using namespace zor_test;
namespace fs = std::filesystem;

namespace {

// putenv as the C runtime of Windows has it: the text is copied.
[[maybe_unused]] int put_environment(const char* assignment)
{
    static std::list<std::string> kept;
    kept.push_back(assignment);
    return putenv(kept.back().data());
}

class MainLog : public testing::Test
{
protected:
    MainLog() : app(ZOR_TEST_LOG_PROGRAM), folder(app.folder) {}

    void user(const std::string& path) { app.user(path); }
    static std::string native(const fs::path& path) { return OwnApp::native(path); }
    std::string run(const std::string& arguments)
    {
        std::string out = app.run(arguments);
        code = app.code;
        return out;
    }
    // A log as ASCII, each line without its seconds; zeroes as "~".
    std::string log(int number, const std::string& where = "user")
    {
        const std::string bytes =
            folder.read(where + "/log_program" + std::to_string(number) + ".log.txt");
        if (bytes.size() < 2)
            return "no log";
        EXPECT_EQ(bytes.substr(0, 2), "\xFF\xFE");
        std::string text, line;
        for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
            line += bytes[i + 1] != 0 ? '?' : bytes[i] == 0 ? '~' : bytes[i];
            if (line.back() == '\n') {
                EXPECT_EQ(line.substr(0, 4), "0000") << line;
                text += line.substr(10, line.size() - 12) + "\n";
                line.clear();
            }
        }
        EXPECT_EQ(line, "");
        return text;
    }
    // The log without its start record, whose form is checked.
    std::string records(int number, const std::string& where = "user")
    {
        const std::string text = log(number, where), start = "; 7 ; Program ";
        EXPECT_EQ(text.substr(0, start.size()), start) << text;
        const std::string line = text.substr(0, text.find('\n'));
        int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
        const size_t at = line.find(" started on ");
        EXPECT_NE(at, std::string::npos) << line;
        if (at == std::string::npos)
            return text;
        EXPECT_EQ(line.substr(start.size(), at - start.size()), native(app.program));
        EXPECT_EQ(sscanf(line.c_str() + at, " started on %d/%02d/%02d %02d:%02d:%02d UTC", &year,
                         &month, &day, &hour, &minute, &second),
                  6);
        EXPECT_GE(year, 2024);
        EXPECT_EQ(line.substr(line.size() - 4), " UTC");
        return text.substr(line.size() + 1);
    }

    OwnApp app;
    TempFolder& folder;
    int code = 0;
};

const std::string finished = "; 7 ; Logging finished\n";

} // namespace

TEST_F(MainLog, LiesInTheUsersFolderAndNamesItself)
{
    EXPECT_EQ(run("name"), "log=" + native(folder / "user") + "\\log_program1.log.txt\n");
    EXPECT_EQ(code, 0);
    EXPECT_EQ(records(1), finished);
    EXPECT_EQ(folder.read("user/log_program.seq.ini"), "1");
}

TEST_F(MainLog, FoldersComeFromBesideTheLibrary)
{
    folder.write("app/zor_dir.ini",
                 "[Directories]\r\nUser=" + native(folder / "user") + "\r\nDocuments=D:\\docs\r\n");
    fs::create_directory(folder / "app/components");
    folder.write("app/components/NotInstalledApp.txt", "GeoidsFolder=D:\\geoids\r\n");
    const std::string out = run("folders"), beside = native(folder / "app");
    EXPECT_NE(out.find("application=" + native(app.program) + "\n"), std::string::npos) << out;
    EXPECT_NE(out.find("exe=" + beside + "\n"), std::string::npos) << out;
    EXPECT_NE(out.find("root=" + native(folder / "user") + "\n"), std::string::npos) << out;
    EXPECT_NE(out.find("docs=D:\\docs\n"), std::string::npos) << out;
    EXPECT_NE(out.find("geo=" + beside + "\\Geo\\\n"), std::string::npos) << out;
    EXPECT_NE(out.find("geoids=D:\\geoids\\\n"), std::string::npos) << out;
}

TEST_F(MainLog, RecordsOfEveryKind)
{
    run("record wide strings levels debug binary check");
    EXPECT_EQ(records(1), "; 7 ; a record of 7\n"
                          "; 7 ; a wide record\n"
                          "; 7 ; narrow 1\n"
                          "; 7 ; wide 2\n"
                          "; 7 ; level 0\n; 7 ; wide level 0\n"
                          "; 7 ; level 1\n; 7 ; wide level 1\n"
                          "; 7 ; level 2\n; 7 ; wide level 2\n"
                          "; 7 ; level 3\n; 7 ; wide level 3\n"
                          "; 7 ; data: a~b\n"
                          "; 7 ; DBGCHK oops a @ 7\n" +
                              finished);
}

TEST_F(MainLog, TheFilterIsOpenedByTheHostOrTheEnvironment)
{
    run("debug filter debug");
    EXPECT_EQ(records(1), "; 6 ; debug 1\n; 6 ; wide debug 1\n" + finished);
    ASSERT_EQ(ZOR_TEST_PUTENV("ZOR_LOG_FILTER=0x7"), 0);
    run("debug");
    EXPECT_EQ(records(2), "; 6 ; debug 1\n; 6 ; wide debug 1\n" + finished);
    ASSERT_EQ(ZOR_TEST_PUTENV("ZOR_LOG_FILTER=0"), 0);
    run("record check");
    EXPECT_EQ(log(3), "") << "not even its start";
    ASSERT_EQ(ZOR_TEST_PUTENV("ZOR_LOG_FILTER=1"), 0);
}

TEST_F(MainLog, TenRunsAreKept)
{
    for (int i = 1; i <= 10; ++i) {
        run("record");
        EXPECT_EQ(records(i), "; 7 ; a record of 7\n" + finished);
    }
    run("wide");
    EXPECT_EQ(records(1), "; 7 ; a wide record\n" + finished) << "the oldest goes";
    EXPECT_EQ(records(2), "; 7 ; a record of 7\n" + finished);
    EXPECT_FALSE(folder.has("user/log_program11.log.txt"));
}

TEST_F(MainLog, EndsWithEveryEndOfTheProcessThatCanBeSeen)
{
    run("record");
    EXPECT_EQ(records(1), "; 7 ; a record of 7\n" + finished);
    run("record exit");
    EXPECT_EQ(records(2), "; 7 ; a record of 7\n" + finished);
}

TEST_F(MainLog, NothingBeforeACheckIsLostWithTheProcess)
{
    run("record wide check die");
    EXPECT_NE(code, 0);
    EXPECT_EQ(records(1), "; 7 ; a record of 7\n; 7 ; a wide record\n; 7 ; DBGCHK oops a @ 7\n");
    run("record flush wide die");
    EXPECT_EQ(records(2), "; 7 ; a record of 7\n") << "what came behind the flush was waiting";
}

TEST_F(MainLog, AFailedEnforcementIsOnTheDiskWhenItIsCaught)
{
    EXPECT_EQ(run("record enforce die"), "Error oops\na\n@7\n");
    EXPECT_EQ(records(1), "; 7 ; a record of 7\n; 7 ; DBGCHK oops a @ 7\n");
}

TEST_F(MainLog, RecordsOfTheHostsStaticObjectsAreKept)
{
    ASSERT_EQ(ZOR_TEST_PUTENV("LOG_PROGRAM_EARLY=1"), 0);
    run("record");
    ASSERT_EQ(ZOR_TEST_PUTENV("LOG_PROGRAM_EARLY="), 0);
    EXPECT_EQ(code, 0);
    const std::string text = records(1);
    EXPECT_EQ(text.find("; 7 ; before main\n; 7 ; a record of 7\n"), 0u) << text;
    EXPECT_NE(text.find("; 7 ; after main\n" + finished), std::string::npos) << text;
}

TEST_F(MainLog, ManyThreadsMakeOneLog)
{
    run("threads");
    const std::string text = records(1);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 801);
    EXPECT_FALSE(folder.has("user/log_program2.log.txt"));
}

TEST_F(MainLog, AMissingFolderIsMadeAndElseTheTemporaryOneServes)
{
    user(native(folder / "user/new"));
    run("record");
    EXPECT_EQ(records(1, "user/new"), "; 7 ; a record of 7\n" + finished);
    // A folder that cannot be made: its parent is missing.
    user(native(folder / "none/user"));
    const std::string out = run("name");
    EXPECT_EQ(out.find("log="), 0u);
    EXPECT_EQ(out.find("none"), std::string::npos) << out;
    EXPECT_NE(out.find(".log.txt"), std::string::npos) << out;
    std::string path = out.substr(4, out.size() - 5);
    if (!fs::exists(path))
        std::replace(path.begin(), path.end(), '\\', '/');
    EXPECT_TRUE(fs::remove(path)) << path;
}

TEST_F(MainLog, ASlotThatCannotBeOpenedLeavesTheProcessWithoutAFile)
{
    fs::create_directory(folder / "user/log_program1.log.txt");
    EXPECT_EQ(run("record name check"), "log=\n");
    EXPECT_EQ(code, 0);
    EXPECT_EQ(run("name"), "log=" + native(folder / "user") + "\\log_program2.log.txt\n");
}

TEST_F(MainLog, ASlotThatAnotherProcessHasForItselfIsLeftAlone)
{
    const Wide path = folder.write("user/log_program1.log.txt", "another's");
    const base::PlatformFile held = base::CreatePlatformFile(
        path,
        base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ | base::PLATFORM_FILE_EXCLUSIVE_READ |
            base::PLATFORM_FILE_EXCLUSIVE_WRITE,
        nullptr, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(run("record name check"), "log=\n");
    EXPECT_EQ(code, 0);
    base::ClosePlatformFile(held);
    EXPECT_EQ(folder.read("user/log_program1.log.txt"), "another's");
}

TEST_F(MainLog, ALinkInTheSlotIsNotFollowed)
{
    folder.write("precious", "content");
    std::error_code failed;
    fs::create_symlink(folder / "precious", folder / "user/log_program1.log.txt", failed);
    if (failed)
        GTEST_SKIP() << "no links can be made here";
    run("record");
    EXPECT_EQ(folder.read("precious"), "content");
    EXPECT_EQ(records(1), "; 7 ; a record of 7\n" + finished);
}

TEST_F(MainLog, TheLibraryIsLoadedAndUnloadedAHundredTimes)
{
    fs::path loader = ZOR_TEST_UNLOAD_PROGRAM;
    const fs::path copy = folder / ("app/" + loader.filename().string());
    fs::copy_file(loader, copy);
    app.program = copy;
    EXPECT_EQ(run("100"), "100 rounds\n");
    EXPECT_EQ(code, 0);
    for (int slot = 1; slot <= 10; ++slot) {
        const std::string bytes =
            folder.read("user/unload_program" + std::to_string(slot) + ".log.txt");
        const std::string round = "round " + std::to_string(90 + slot - 1) + "\r\n";
        EXPECT_NE(bytes.find(utf16(std::basic_string<WCHAR>(round.begin(), round.end()))),
                  std::string::npos)
            << slot;
        EXPECT_NE(bytes.find(utf16(ZOR_W("Logging finished\r\n"))), std::string::npos) << slot;
    }
}

TEST_F(MainLog, ABrokenFileOfFoldersIsNoReasonToHang)
{
    // The folders' own check asks for the log, which asks for the folders.
    folder.write("app/zor_dir.ini", "[Directories]\r\n-broken\r\n");
    const std::string out = run("folders record");
    EXPECT_EQ(code, 0);
    EXPECT_NE(out.find("exe=" + native(folder / "app") + "\n"), std::string::npos) << out;
}
