#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <sstream>
#include <vector>

#include "tests/support/child.h"

namespace zor_test {

namespace {

typedef std::chrono::steady_clock Clock;

pid_t start(const std::string& program, const std::string& arguments, const std::string& output,
            bool traced)
{
    std::vector<std::string> words = {program};
    std::istringstream list(arguments);
    for (std::string word; list >> word;)
        words.push_back(word);
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child != 0)
        return child;
    const int file =
        open(output.empty() ? "/dev/null" : output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(file, 1);
    dup2(file, 2);
    if (traced)
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    execv(program.c_str(), pointers.data());
    _exit(127);
}

Ended ended(int status)
{
    Ended end;
    end.in_time = true;
    if (WIFSIGNALED(status))
        end.signal = WTERMSIG(status);
    else
        end.code = static_cast<unsigned>(WEXITSTATUS(status));
    return end;
}

void rest()
{
    const timespec moment = {0, 1000000};
    nanosleep(&moment, nullptr);
}

} // namespace

bool Ended::with(unsigned expected) const
{
    // The lowest byte of the code that is not zero.
    unsigned kept = expected;
    while (kept != 0 && (kept & 0xFF) == 0)
        kept >>= 8;
    return in_time && signal == 0 && code == (kept & 0xFF);
}

Ended run_child(const std::string& program, const std::string& arguments, unsigned limit_ms,
                const std::string& output)
{
    const auto limit = Clock::now() + std::chrono::milliseconds(limit_ms);
    const pid_t child = start(program, arguments, output, false);
    int status = 0;
    while (Clock::now() < limit) {
        if (waitpid(child, &status, WNOHANG) == child)
            return ended(status);
        rest();
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return Ended();
}

Debugged debug_child(const std::string& program, const std::string& arguments, unsigned limit_ms)
{
    const auto limit = Clock::now() + std::chrono::milliseconds(limit_ms);
    const pid_t child = start(program, arguments, "", true);
    Debugged seen;
    bool first = true;
    while (Clock::now() < limit) {
        int status = 0;
        const pid_t thread = waitpid(-1, &status, WNOHANG | __WALL);
        if (thread <= 0) {
            rest();
            continue;
        }
        if (!WIFSTOPPED(status)) {
            if (thread != child)
                continue;
            seen.end = ended(status);
            return seen;
        }
        int signal = WSTOPSIG(status);
        if (first) {
            // The program begins; its threads are to be watched too.
            ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACECLONE | PTRACE_O_EXITKILL);
            first = false;
            signal = 0;
        } else if (signal == SIGSEGV) {
            ++seen.faults;
        } else if (signal == SIGTRAP && status >> 16 == 0) {
            ++seen.breaks;
            signal = 0; // the debugger goes on
        } else if (signal == SIGTRAP || signal == SIGSTOP) {
            signal = 0; // a thread begins
        }
        ptrace(PTRACE_CONT, thread, nullptr, signal);
    }
    kill(child, SIGKILL);
    int status = 0;
    while (waitpid(child, &status, __WALL) == child && WIFSTOPPED(status)) {
    }
    return seen;
}

} // namespace zor_test
