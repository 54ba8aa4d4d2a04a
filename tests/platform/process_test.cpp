// Other programs, as the system starts them.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/modules.h"
#include "tests/support/temp_folder.h"
#include "zorutils/platform/winapi.h"

using namespace zor_test;

namespace {

class ProcessCalls : public testing::Test
{
protected:
    bool start(const Wide& path, const char* arguments)
    {
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        Wide command("\"x\" ");
        command += Wide(arguments);
        WCHAR* const writable = command.GetBuffer(static_cast<int>(command.GetLength()));
        SetLastError(0);
        return CreateProcessW(path.c_str(), writable, nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE,
                              nullptr, nullptr, &startup, &process) != 0;
    }
    DWORD code()
    {
        DWORD code = 1000;
        EXPECT_TRUE(GetExitCodeProcess(process.hProcess, &code));
        return code;
    }
    void close()
    {
        EXPECT_TRUE(CloseHandle(process.hThread));
        EXPECT_TRUE(CloseHandle(process.hProcess));
    }

    TempFolder folder;
    const Wide program = Wide(std::filesystem::path(ZOR_TEST_LAUNCHED).string<WCHAR>().c_str());
    PROCESS_INFORMATION process = {};
};

} // namespace

TEST_F(ProcessCalls, AProcessRunsToItsEnd)
{
    ASSERT_TRUE(start(program, "exit 6"));
    EXPECT_NE(process.hProcess, process.hThread);
    EXPECT_NE(process.dwProcessId, 0u);
    EXPECT_EQ(WaitForSingleObject(process.hProcess, INFINITE), DWORD{WAIT_OBJECT_0});
    EXPECT_EQ(WaitForSingleObject(process.hProcess, INFINITE), DWORD{WAIT_OBJECT_0}) << "again";
    EXPECT_EQ(code(), 6u);
    EXPECT_EQ(code(), 6u) << "kept while the handle is open";
    close();
    EXPECT_EQ(WaitForSingleObject(process.hProcess, INFINITE), DWORD{WAIT_FAILED});
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    DWORD ignored = 0;
    EXPECT_FALSE(GetExitCodeProcess(process.hProcess, &ignored));
}

TEST_F(ProcessCalls, ARunningProcessIsStillActive)
{
    ASSERT_TRUE(start(program, ("wait \"" + (folder / "begun").string() + "\"").c_str()));
    EXPECT_EQ(code(), DWORD{STILL_ACTIVE});
    end_children();
    EXPECT_EQ(WaitForSingleObject(process.hProcess, INFINITE), DWORD{WAIT_OBJECT_0});
    EXPECT_EQ(code(), 137u);
    close();
}

TEST_F(ProcessCalls, WhatCannotBeStarted)
{
    const struct
    {
        Wide path;
        DWORD error;
    } cases[] = {
        {folder.wide("missing.exe"), ERROR_FILE_NOT_FOUND},
        {folder.wide("no/such.exe"), ERROR_PATH_NOT_FOUND},
    };
    for (const auto& row : cases) {
        EXPECT_FALSE(start(row.path, "exit 0")) << shown(row.path);
        EXPECT_EQ(GetLastError(), row.error) << shown(row.path);
    }
    EXPECT_FALSE(start(folder.wide(), "exit 0")) << "a folder: 5, or 6 under Wine";
    const Wide text = folder.write("text.exe", "no program");
    std::filesystem::permissions(folder / "text.exe", std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add);
    EXPECT_FALSE(start(text, "exit 0"));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_BAD_EXE_FORMAT});
}
