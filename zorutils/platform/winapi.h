// zorutils/platform/winapi.h: the one header through which the library speaks to the system.
//
// On Windows it includes the system's headers and adds nothing. On POSIX it declares, with the same
// names, types, results and last-error values, the subset of Win32 that the library uses; each
// topic has its header and source in platform/posix/. tests/platform/ states what each call does.
#pragma once

#include "zorutils/platform/win_types.h"

#ifdef _WIN32

#include <dbghelp.h>
#include <oleauto.h>
#include <shlobj.h>

#else

#include "zorutils/platform/posix/codepage.h"
#include "zorutils/platform/posix/debug_output.h"
#include "zorutils/platform/posix/files.h"
#include "zorutils/platform/posix/find.h"
#include "zorutils/platform/posix/folders.h"
#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/locale.h"
#include "zorutils/platform/posix/mapping.h"
#include "zorutils/platform/posix/memory.h"
#include "zorutils/platform/posix/message.h"
#include "zorutils/platform/posix/message_box.h"
#include "zorutils/platform/posix/minidump.h"
#include "zorutils/platform/posix/module.h"
#include "zorutils/platform/posix/process.h"
#include "zorutils/platform/posix/registry.h"
#include "zorutils/platform/posix/resource.h"
#include "zorutils/platform/posix/sys_string.h"
#include "zorutils/platform/posix/thread.h"
#include "zorutils/platform/posix/time.h"
#include "zorutils/platform/posix/window.h"

#endif
