#include "zorutils/zorsys/process.h"

#include "zorutils/platform/winapi.h"
#include "zorutils/zortext/zor_string.h"

namespace {

typedef zor_text::CZorStringT<WCHAR> String;

void close(const PROCESS_INFORMATION& process)
{
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

// Starts a program, and waits for its end if there is somewhere to put its exit code.
bool launch(DWORD* exit_code, const WCHAR* program, const WCHAR* arguments)
{
    if (program == nullptr || program[0] == '"')
        return false;
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    String command(ZOR_W("\""));
    command += program;
    command += ZOR_W("\"");
    if (arguments != nullptr) {
        command += ZOR_W(" ");
        command += arguments;
    }
    // The system writes into the command line.
    WCHAR* const writable = command.GetBuffer(static_cast<int>(command.GetLength()));
    const BOOL started = CreateProcessW(program, writable, nullptr, nullptr, FALSE,
                                        CREATE_NEW_CONSOLE, nullptr, nullptr, &startup, &process);
    if (!started)
        return false;
    if (exit_code == nullptr) {
        close(process);
        return true;
    }
    // The handles stay open where the end or its code cannot be had.
    if (WaitForSingleObject(process.hProcess, INFINITE) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(process.hProcess, exit_code))
        return false;
    close(process);
    return *exit_code != STILL_ACTIVE;
}

} // namespace

bool LaunchExe(const WCHAR* program, const WCHAR* arguments)
{
    return launch(nullptr, program, arguments);
}

bool LaunchExeBlocking(DWORD& exitCode, const WCHAR* program, const WCHAR* arguments)
{
    return launch(&exitCode, program, arguments);
}
