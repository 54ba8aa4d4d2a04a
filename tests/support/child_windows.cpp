#include <windows.h>

#include <chrono>

#include "tests/support/child.h"

namespace zor_test {

namespace {

struct Started
{
    PROCESS_INFORMATION process = {};
    bool done = false;
};

Started start(const std::string& program, const std::string& arguments, const std::string& output,
              DWORD flags)
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const HANDLE file = CreateFileA(output.empty() ? "NUL" : output.c_str(), GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = startup.hStdError = file;
    std::string command = "\"" + program + "\" " + arguments;
    Started started;
    started.done = CreateProcessA(program.c_str(), command.data(), nullptr, nullptr, TRUE, flags,
                                  nullptr, nullptr, &startup, &started.process) != 0;
    CloseHandle(file);
    return started;
}

Ended end_of(Started& started, bool in_time)
{
    Ended end;
    end.in_time = in_time;
    if (!in_time)
        TerminateProcess(started.process.hProcess, 1);
    WaitForSingleObject(started.process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(started.process.hProcess, &code);
    end.code = code;
    CloseHandle(started.process.hThread);
    CloseHandle(started.process.hProcess);
    return end;
}

} // namespace

bool Ended::with(unsigned expected) const
{
    return in_time && code == expected;
}

Ended run_child(const std::string& program, const std::string& arguments, unsigned limit_ms,
                const std::string& output)
{
    Started started = start(program, arguments, output, 0);
    if (!started.done)
        return Ended();
    return end_of(started,
                  WaitForSingleObject(started.process.hProcess, limit_ms) == WAIT_OBJECT_0);
}

Debugged debug_child(const std::string& program, const std::string& arguments, unsigned limit_ms)
{
    const auto limit = std::chrono::steady_clock::now() + std::chrono::milliseconds(limit_ms);
    Debugged seen;
    Started started = start(program, arguments, "", DEBUG_ONLY_THIS_PROCESS);
    if (!started.done)
        return seen;
    bool ended = false, began = false;
    while (!ended && std::chrono::steady_clock::now() < limit) {
        DEBUG_EVENT event;
        if (!WaitForDebugEvent(&event, 100))
            continue;
        DWORD answer = DBG_CONTINUE;
        if (event.dwDebugEventCode == EXCEPTION_DEBUG_EVENT) {
            const DWORD code = event.u.Exception.ExceptionRecord.ExceptionCode;
            if (code == EXCEPTION_ACCESS_VIOLATION)
                ++seen.faults;
            // The system has one before the program begins.
            if (code == EXCEPTION_BREAKPOINT && began)
                ++seen.breaks;
            began = began || code == EXCEPTION_BREAKPOINT;
            if (code != EXCEPTION_BREAKPOINT)
                answer = DBG_EXCEPTION_NOT_HANDLED;
        } else if (event.dwDebugEventCode == EXIT_PROCESS_DEBUG_EVENT) {
            ended = true;
        } else if (event.dwDebugEventCode == CREATE_PROCESS_DEBUG_EVENT) {
            CloseHandle(event.u.CreateProcessInfo.hFile);
        } else if (event.dwDebugEventCode == LOAD_DLL_DEBUG_EVENT) {
            CloseHandle(event.u.LoadDll.hFile);
        }
        ContinueDebugEvent(event.dwProcessId, event.dwThreadId, answer);
    }
    seen.end = end_of(started, ended);
    return seen;
}

} // namespace zor_test
