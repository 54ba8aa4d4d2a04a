// zorutils/platform/posix/debug_output.h: the debugger stream: OutputDebugStringA and W, with a settable sink.
#pragma once

#include "zorutils/platform/win_types.h"
