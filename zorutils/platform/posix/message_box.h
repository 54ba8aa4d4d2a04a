// zorutils/platform/posix/message_box.h: questions to the user, and whether a debugger is attached.
//
// A host that has windows answers them itself; without it they go to the terminal if there is one,
// and are otherwise answered with the first button.
#pragma once

#include "zorutils/core/zor_api.h"
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

HWND GetActiveWindow();
HWND GetLastActivePopup(HWND owner);

BOOL IsDebuggerPresent();

// Ends the process with its clean-up.
[[noreturn]] void ExitProcess(UINT code);

namespace zor::platform {

// Answers a box with IDABORT and its kin. The texts are the library's.
typedef int (*MessageBox)(const WCHAR* text, const WCHAR* caption, UINT style, void* context);

// Sets who answers; null goes back to the terminal. Any thread.
ZOR_API void set_message_box(MessageBox box, void* context);

} // namespace zor::platform
