// zorutils/platform/clock.h: the millisecond counter that the log reads.
#pragma once

#include "zorutils/platform/win_types.h"

namespace zor::platform {

// Milliseconds since the machine's start, 32 bits that wrap around. Any thread.
DWORD tick_count();

// Puts another counter in its place, for tests; null goes back. Any thread.
void set_tick_count(DWORD (*counter)());

} // namespace zor::platform
