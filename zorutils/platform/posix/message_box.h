// zorutils/platform/posix/message_box.h: questions to the user, and whether a debugger is attached.
//
// A window system of the host's answers them; without one they go to the terminal if there is one,
// and are otherwise answered with the first button.
#pragma once

#include "zorutils/platform/win_types.h"

#define MB_ABORTRETRYIGNORE 0x00000002u
#define MB_ICONERROR 0x00000010u
#define MB_TASKMODAL 0x00002000u
#define MB_SETFOREGROUND 0x00010000u
#define MB_TOPMOST 0x00040000u
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5

// Only MB_ABORTRETRYIGNORE is understood.
int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT style);

// Takes no lock and no memory.
BOOL IsDebuggerPresent();

// Stops in the debugger; without one the process ends.
void DebugBreak();

// Ends the process with its clean-up.
[[noreturn]] void ExitProcess(UINT code);

namespace zor::platform {

// The answer of the terminal, or of nobody.
int message_box_on_terminal(LPCWSTR text, LPCWSTR caption, UINT style);

} // namespace zor::platform
