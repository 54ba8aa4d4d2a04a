#include "zorutils/zorsys/process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "tests/support/modules.h"
#include "tests/support/temp_folder.h"

using namespace zor_test;

namespace {

class Launching : public testing::Test
{
protected:
    // Runs the program with these arguments.
    bool run(const std::string& arguments, DWORD& code)
    {
        return run_wide(Wide(arguments.c_str()), code);
    }
    bool run_wide(const Wide& arguments, DWORD& code)
    {
        return again([&] { return LaunchExeBlocking(code, program.c_str(), arguments.c_str()); });
    }
    bool start(const std::string& arguments)
    {
        return again([&] { return LaunchExe(program.c_str(), Wide(arguments.c_str()).c_str()); });
    }
    // Wine now and then fails to start a program, once in some hundred: the second try counts.
    template <class Launch>
    static bool again(Launch launch)
    {
        bool result = launch();
        for (int i = 1; i < ZOR_TEST_LAUNCH_TRIES && !result; ++i)
            result = launch();
        return result;
    }
    // Waits for a file that another process writes.
    void wait_for(const std::string& name)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!folder.has(name) && std::chrono::steady_clock::now() < end)
            std::this_thread::yield();
        EXPECT_TRUE(folder.has(name)) << name;
    }
    static void wait_for_children()
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (child_count() > 0 && std::chrono::steady_clock::now() < end)
            std::this_thread::yield();
        EXPECT_EQ(child_count(), 0u);
    }

    TempFolder folder;
    const Wide program = Wide(std::filesystem::path(ZOR_TEST_LAUNCHED).string<WCHAR>().c_str());
};

} // namespace

TEST_F(Launching, ExitCodesAreTold)
{
    for (const DWORD expected : {0u, 3u, 1u, 77u}) {
        DWORD code = 1000;
        EXPECT_TRUE(run("exit " + std::to_string(expected), code)) << expected;
        EXPECT_EQ(code, expected);
    }
}

TEST_F(Launching, WithoutArguments)
{
    DWORD code = 0;
    EXPECT_TRUE(again([&] { return LaunchExeBlocking(code, program.c_str(), nullptr); }));
    EXPECT_EQ(code, 99u);
    EXPECT_TRUE(run("", code));
    EXPECT_EQ(code, 99u);
}

// 259 is how the system tells that a program still runs. A program on POSIX has 8 bits.
TEST_F(Launching, ACodeOf259ReadsAsStillRunning)
{
    DWORD code = 0;
    const bool result = run("exit 259", code);
    if (code == 3)
        GTEST_SKIP() << "codes have 8 bits here";
    EXPECT_FALSE(result);
    EXPECT_EQ(code, 259u);
}

TEST_F(Launching, ArgumentsWithBlanksAndQuotes)
{
    const struct
    {
        const char *arguments, *parts;
    } cases[] = {
        {"a b", "a\nb\n"},
        {"\"a b\" c", "a b\nc\n"},
        {"  a \t b  ", "a\nb\n"},
        {"\"\"", "\n"},
        {"a\"b c\"d", "ab cd\n"},
        {"\\\"a\\\"", "\"a\"\n"},
        {"\"a\\\\\" b", "a\\\nb\n"},
        {"a\\b c\\", "a\\b\nc\\\n"},
        {"\"a \\\" b\"", "a \" b\n"},
        {"C:\\dir\\ \"D:\\a b\\\\\"", "C:\\dir\\\nD:\\a b\\\n"},
        {"\"open", "open\n"},
        {"'a b'", "'a\nb'\n"},
        {"$HOME %PATH% `x` ;&|<>", "$HOME\n%PATH%\n`x`\n;&|<>\n"},
    };
    for (const auto& row : cases) {
        DWORD code = 1;
        folder.write("out", "");
        std::filesystem::remove(folder / "out");
        const std::string out = (folder / "out").string();
        EXPECT_TRUE(run("args \"" + out + "\" " + row.arguments, code)) << row.arguments;
        EXPECT_EQ(code, 0u);
        EXPECT_EQ(folder.read("out"), row.parts) << row.arguments;
    }
}

TEST_F(Launching, LettersBeyondAscii)
{
    DWORD code = 1;
    Wide arguments(("args \"" + (folder / "out").string() + "\" ").c_str());
    arguments += ZOR_W("\u010D\u00E9 \U0001F4CD");
    EXPECT_TRUE(run_wide(arguments, code));
    EXPECT_EQ(folder.read("out"), "\xC4\x8D\xC3\xA9\n\xF0\x9F\x93\x8D\n");
}

TEST_F(Launching, APathWithBlanks)
{
    namespace fs = std::filesystem;
    fs::create_directory(folder / "a folder");
    const fs::path copy = folder / "a folder" / fs::path(ZOR_TEST_LAUNCHED).filename();
    fs::copy_file(ZOR_TEST_LAUNCHED, copy);
    for (const auto& entry : fs::directory_iterator(fs::path(ZOR_TEST_LAUNCHED).parent_path())) {
        if (entry.path().filename().string().find("lib") == 0 && entry.path().extension() == ".dll")
            fs::copy_file(entry.path(), folder / "a folder" / entry.path().filename());
    }
    DWORD code = 1;
    EXPECT_TRUE(again([&] {
        return LaunchExeBlocking(code, Wide(copy.string<WCHAR>().c_str()).c_str(), ZOR_W("exit 5"));
    }));
    EXPECT_EQ(code, 5u);
}

TEST_F(Launching, NoProgramAndQuotedPathsAreRefused)
{
    DWORD code = 1000;
    EXPECT_FALSE(LaunchExe(nullptr, nullptr));
    EXPECT_FALSE(LaunchExeBlocking(code, nullptr, ZOR_W("exit 0")));
    Wide quoted(ZOR_W("\""));
    quoted += program;
    quoted += ZOR_W("\"");
    EXPECT_FALSE(LaunchExe(quoted.c_str(), ZOR_W("exit 0")));
    EXPECT_FALSE(LaunchExeBlocking(code, quoted.c_str(), ZOR_W("exit 0")));
    EXPECT_EQ(code, 1000u) << "nothing was started";
}

TEST_F(Launching, ProgramsThatCannotBeStarted)
{
    DWORD code = 1000;
    const Wide text = folder.write("text.exe", "no program");
    for (const Wide& path :
         {folder.wide("missing.exe"), folder.wide("no/such.exe"), folder.wide(), text, Wide("")}) {
        EXPECT_FALSE(LaunchExe(path.c_str(), ZOR_W("exit 0"))) << shown(path);
        EXPECT_FALSE(LaunchExeBlocking(code, path.c_str(), ZOR_W("exit 0"))) << shown(path);
    }
    EXPECT_EQ(code, 1000u);
    EXPECT_EQ(child_count(), 0u);
}

TEST_F(Launching, DoesNotWait)
{
    EXPECT_TRUE(start("wait \"" + (folder / "begun").string() + "\""));
    wait_for("begun");
    EXPECT_EQ(child_count(), 1u) << "it runs on";
    end_children();
    wait_for_children();
}

TEST_F(Launching, ABlockedWaitEndsWhenTheProgramIsKilled)
{
    DWORD code = 0;
    bool result = false;
    std::thread waiting(
        [&] { result = run("wait \"" + (folder / "begun").string() + "\"", code); });
    wait_for("begun");
    end_children();
    waiting.join();
    EXPECT_TRUE(result) << "it ran to its end";
    EXPECT_EQ(code, 137u) << "a kill's code: 128 and the signal's number on POSIX";
}

TEST_F(Launching, ManyLaunchesLeaveNothingBehind)
{
    DWORD code = 0;
    run("exit 0", code);
    start("exit 0");
    wait_for_children();
    const unsigned long before = open_handles();
    int started = 0, ended = 0;
    for (int i = 0; i < ZOR_TEST_LAUNCHES; ++i) {
        if (i % 2 == 0)
            started += start("exit 0");
        else
            ended += run("exit 4", code) && code == 4;
    }
    EXPECT_EQ(started + ended, ZOR_TEST_LAUNCHES);
    wait_for_children();
    EXPECT_LE(open_handles(), before + 2);
}
