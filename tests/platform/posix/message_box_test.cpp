// Questions to the user where there are no windows.
#include "zorutils/platform/posix/message_box.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

namespace {

// What a box gives in a process whose terminal answers `typed`; `shown` receives what it showed.
int answer_on_terminal(const std::string& typed, std::string& shown)
{
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0)
        _exit(MessageBoxW(nullptr, ZOR_W("the \u010D text"), ZOR_W("CAPTION"), 0x52012));
    EXPECT_GT(child, 0);
    EXPECT_EQ(write(terminal, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    shown.clear();
    char block[256];
    for (ssize_t count; (count = read(terminal, block, sizeof block)) > 0;)
        shown.append(block, static_cast<size_t>(count));
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    close(terminal);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(MessageBoxes, AreAskedOnTheTerminal)
{
    std::string shown;
    EXPECT_EQ(answer_on_terminal("a\n", shown), IDABORT);
    EXPECT_EQ(answer_on_terminal("r\n", shown), IDRETRY);
    EXPECT_EQ(answer_on_terminal("i\n", shown), IDIGNORE);
    EXPECT_NE(shown.find("CAPTION\r\nthe \xC4\x8D text\r\n"), std::string::npos) << shown;
    EXPECT_EQ(answer_on_terminal("what?\n\ni\n", shown), IDIGNORE) << "asked until it is answered";
    EXPECT_EQ(answer_on_terminal("\x04", shown), IDABORT) << "the end of the input";
}

TEST(MessageBoxes, AreAnsweredWithTheFirstButtonWithoutATerminal)
{
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const int nothing = open("/dev/null", O_RDWR);
        dup2(nothing, STDIN_FILENO);
        dup2(nothing, STDERR_FILENO);
        _exit(MessageBoxW(nullptr, ZOR_W("text"), ZOR_W("CAPTION"), 0x52012));
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), IDABORT);
}

TEST(Debugger, IsNotPresentInATest)
{
    EXPECT_FALSE(IsDebuggerPresent());
}
