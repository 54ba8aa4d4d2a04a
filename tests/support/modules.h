// tests/support/modules.h: libraries and programs that tests load and start.
#pragma once

#include <string>

#include "zorutils/platform/win_types.h"

namespace zor_test {

// The handle of a library that the process has loaded from this file; null if it has not. Does not
// count it.
HINSTANCE find_module(const std::string& path);

// Ends the programs that the process started by force, with the code 137.
void end_children();

// How many files and other things of the system the process holds open.
unsigned long open_handles();

// How many programs that the process started are left, running or not yet waited for.
unsigned long child_count();

} // namespace zor_test
