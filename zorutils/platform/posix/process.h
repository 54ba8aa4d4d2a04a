// zorutils/platform/posix/process.h: other programs.
//
// A process whose last handle is closed while it runs goes on, and a thread of the library's waits
// for its end, so that none stays behind as a zombie; from then on the library stays in the
// process's memory. Any thread may call these.
#pragma once

#include "zorutils/platform/posix/wait.h"
#include "zorutils/platform/win_types.h"

#define CREATE_NEW_CONSOLE 0x00000010

struct STARTUPINFOW
{
    DWORD cb;
    LPWSTR lpReserved;
    LPWSTR lpDesktop;
    LPWSTR lpTitle;
    DWORD dwX;
    DWORD dwY;
    DWORD dwXSize;
    DWORD dwYSize;
    DWORD dwXCountChars;
    DWORD dwYCountChars;
    DWORD dwFillAttribute;
    DWORD dwFlags;
    WORD wShowWindow;
    WORD cbReserved2;
    BYTE* lpReserved2;
    HANDLE hStdInput;
    HANDLE hStdOutput;
    HANDLE hStdError;
};

struct PROCESS_INFORMATION
{
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId; // 0
};

// Starts a program. `command` is taken apart as the Windows run-time does, its first part being the
// program's own name; arguments go as UTF-8. The console, the attributes and what `startup` asks
// for have no meaning; the program gets the standard streams and no other open file. `environment`
// and `folder` are null. False with ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND,
// ERROR_ACCESS_DENIED, ERROR_BAD_EXE_FORMAT and their kin.
BOOL CreateProcessW(LPCWSTR program, LPWSTR command, void* process_attributes,
                    void* thread_attributes, BOOL inherit, DWORD flags, void* environment,
                    LPCWSTR folder, STARTUPINFOW* startup, PROCESS_INFORMATION* process);

// STILL_ACTIVE while it runs; 128 and the signal's number for a process that a signal ended. False
// if the code went to someone else, who waited for all children.
BOOL GetExitCodeProcess(HANDLE process, LPDWORD code);
